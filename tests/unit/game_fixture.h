// A small world for testing the rules of play headless: a scratch data
// directory with box models for every kind of object, a level location built
// in code (solid box pieces and named entities), and the game state reset as
// a new game at level 1 would leave it. Tests build their level, call
// StartLevel and then tick UpdateGame, asserting state tick by tick.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

class Location;
struct LocationEntity;
struct LocationPiece;
class GameObject;
class TextBatch;
struct SysJoystickState;

namespace test {

class GameFixture : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // A solid piece (modelFlag 0x40) whose box runs from min to max.
    LocationPiece* AddPiece(const char* name, const char* texture, float x0, float y0, float z0, float x1,
                            float y1, float z1);
    // A wide solid floor whose top is at height 0.
    void Floor(const char* name = "floor");
    // A named entity at a position, facing yaw.
    LocationEntity* AddEntity(const char* name, float x, float y, float z, float yaw = 0);
    // A box model file under the scratch data directory.
    void WriteBoxModel(const char* name, float x0, float y0, float z0, float x1, float y1, float z1);
    // Saves the level being built as data/levels/NN.vlc (or another name).
    void SaveLocation(const Location& location, const char* name);
    // Saves a closing scene, levels/end.vlc, holding the named entities.
    void SaveEndScene(std::initializer_list<const char*> names);
    // A level with a player whose last life is lost: the game-over scene starts.
    void EnterGameOver();
    // Builds the level's objects as a restart of the loaded level does.
    void StartLevel();
    // Runs UpdateGame n times.
    void Tick(int n = 1);
    // The first object whose name is given, or null.
    GameObject* Find(const char* name);
    // The slot of an object, or -1.
    int SlotOf(const GameObject* object);
    // Presses or releases a key in the key table.
    void Key(int key, int down);
    // The text of a batch entry, read back from its glyphs (1 when it equals text).
    static bool EntryReads(const TextBatch& batch, int entry, const char* text);

    std::string dataDir;
    int (*savedJoystick)(SysJoystickState*) = nullptr;
};

}  // namespace test
