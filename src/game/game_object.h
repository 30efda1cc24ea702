// Game objects: one per thing in a level that moves, animates or can be
// touched. The object table has 256 slots and a new object always takes the
// lowest free one; the slot number is also the object's slot in the collision
// world, which has only 128, so objects beyond slot 127 are drawn and updated
// but never touched.
//
// Objects are made from a location's entities by a table of kinds: a row
// matches an entity by its whole name or by a leading word, names the model,
// the texture and the kind word the rules look at, and says whether the
// collision box is narrowed (x and z of frame 0's bounds times 0.7, so
// characters do not catch on walls by their outstretched parts).
#pragma once

#include <cstdint>

class Model;
struct LocationEntity;

class GameObject {
public:
    char name[20];  // the entity's name, cut to 19 characters
    char type[20];  // kind word: "player", "foot", "spikes", "key", "exit", "platform", "enemy", "collapse"
    char texture[50];  // bound by the game view when it draws the object
    float position[3];
    float rotation[3];  // degrees; element 1 is the yaw
    float velocity[3];  // the player's motion per tick; y counts downward
    Model* model;       // owned
    int32_t previousFrame;
    int32_t currentFrame;
    float animTime;    // its integer part is the current frame
    uint8_t state;     // player: 0 standing, 1 running, 2 jumping
    uint8_t onRoute;   // enemy: route point 0 was found
    uint32_t counter;  // enemy: current route point; foot: descent steps left
    int32_t link;      // enemy: entity index of the current route point; exit: opening steps left

    GameObject();
    ~GameObject();
    GameObject(const GameObject&) = delete;
    GameObject& operator=(const GameObject&) = delete;

    // Zeroes every field and frees the model.
    void Clear();
    // Moves the frame pair on to animTime's frame and builds the blend between them.
    void ShowAnimFrame();
};

// One row of an entity-kind table.
struct EntityKind {
    const char* match;    // the entity name, or its leading word
    uint8_t prefix;       // 1: match names that begin with the word
    const char* type;     // kind word of the object
    const char* model;    // model file; null: the entity's name + ".vmd"
    const char* texture;  // texture name; null: the entity's name + ".tga"
    uint8_t narrowed;     // 1: narrow the box to 0.7 in x and z
    uint8_t camera;       // 1: the camera starts 10 units ahead of the object
};

const int kMaxObjects = 256;

extern GameObject* objects[kMaxObjects];

// 1 when the entity name matches the row.
int EntityKindMatches(const EntityKind& kind, const char* entityName);
// Makes the row's object from the entity in the lowest free slot; the slot, or -1 (table full,
// or an enemy without its model). Other rows whose model is missing leave an empty object.
int CreateEntityObject(const LocationEntity& entity, const EntityKind& kind);
// Destroys the object of a slot and frees the slot; its collision shape is left alone.
void DestroyObject(int slot);
// Destroys every object and nulls all 256 slots.
void DeleteAllObjects();
// Number of objects whose type is exactly the word.
int CountObjectsOfType(const char* type);
// Looks up the entity "<name>_route<NN>" in the level location; 1 and its index, or 0.
int FindRoutePoint(const char* name, int number, int32_t* entityIndex);
// Copies at most size - 1 bytes and always terminates.
void CopyName(char* out, const char* in, int size);
