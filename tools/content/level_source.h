// Level sources: the text a designer edits, one file per location, compiled
// by the content build into a .vlc location (docs/levels.md is the manual).
//
//   # a comment runs to the end of the line
//   location The Garden Gate               the location's title
//   piece floor textures\01\grass.tga scale 64 solid
//       box -200 -20 -200  200 0 200       shapes of the piece, indented
//   entity player 0 0 150 turn 180         name, position, optional rotation
//   entity light01 0 220 0
//       color = 1, 0.9, 0.7                parameter lines, indented
//       dist = 600
//
// Shapes (all in world units, y up): box x0 y0 z0 x1 y1 z1; ramp x0 y0 z0 x1 y1 z1
// rise +x|-x|+z|-z; cylinder x y z radius R height H [top R2] [sides N] [inside]; blob x y z
// rx ry rz; sheet x0 y z0 x1 z1 [cells N]; card x y z width W height H (two crossed
// upright quads). Any shape may end in "turn DEGREES" (about the vertical axis
// through its centre). Piece flags: solid, castsnoshadow, receivesnoshadow, gllit,
// nocull, hidden. Every error names the file and the line.
#pragma once

#include <string>
#include <vector>

#include "resources/location.h"

enum LevelShapeKind { kShapeBox, kShapeRamp, kShapeCylinder, kShapeBlob, kShapeSheet, kShapeCard };

struct LevelShape {
    int kind;
    float v[8];  // the shape's numbers in the order of its line
    int sides;   // cylinder sides, sheet cells
    int rise;    // ramp: 0 +x, 1 -x, 2 +z, 3 -z
    int inside;  // cylinder: seen from within (sides facing the axis, no caps)
    float turn;  // degrees about the vertical axis through the shape's centre
    int line;
};

struct LevelPiece {
    std::string name;
    std::string texture;
    float scale;  // world units per texture repeat
    unsigned char flags;
    std::vector<LevelShape> shapes;
    int line;
};

struct LevelEntity {
    std::string name;
    float position[3];
    float rotation[3];
    std::string params;  // key = value lines joined by "\r\n"
    int line;
};

struct LevelSource {
    std::string file;
    std::string name;
    std::vector<LevelPiece> pieces;
    std::vector<LevelEntity> entities;
};

// Parses a level source; false with "file:line: message" in error.
bool ParseLevelSource(const std::string& text, const std::string& fileName, LevelSource* out,
                      std::string* error);
