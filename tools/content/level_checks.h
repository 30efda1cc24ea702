// Checks that keep a playable level honest. A level is data and data can be
// wrong in ways the compiler would happily bake: no player to steer, no finish
// to reach, or things put where the game camera never looks. The camera
// stands kCameraDistance units out from the vertical axis on the player's
// bearing and looks back at it, so a level lives inside that circle: an entity
// outside it, or a shape lying wholly outside it, is a mistake. Whether every
// key and the finish can be reached is what a level's solution replay proves.
#pragma once

#include <string>

#include "level_source.h"

// How far from the vertical axis the game camera stands.
const float kCameraDistance = 505.0f;

// True for the file names of levels the game plays in turn ("01.lvl", "12.lvl").
bool IsNumberedLevel(const std::string& fileName);
// False with "file:line: message" for a level without a player, without a solid
// piece named finish, or with anything built where the camera cannot see it.
bool CheckPlayableLevel(const LevelSource& source, std::string* error);
