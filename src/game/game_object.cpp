#include "game/game_object.h"

#include <cstdio>
#include <cstring>

#include "app/scene_camera.h"
#include "game/collision_world.h"
#include "resources/location.h"
#include "resources/mesh.h"
#include "resources/model.h"
#include "resources/resource_manager.h"

GameObject* objects[kMaxObjects];

GameObject::GameObject() : model(nullptr) {
    Clear();
}

GameObject::~GameObject() {
    Clear();
}

void GameObject::Clear() {
    delete model;
    model = nullptr;
    memset(name, 0, sizeof(name));
    memset(type, 0, sizeof(type));
    memset(texture, 0, sizeof(texture));
    memset(position, 0, sizeof(position));
    memset(rotation, 0, sizeof(rotation));
    memset(velocity, 0, sizeof(velocity));
    previousFrame = 0;
    currentFrame = 0;
    animTime = 0;
    state = 0;
    onRoute = 0;
    counter = 0;
    link = 0;
}

void GameObject::ShowAnimFrame() {
    int f = static_cast<int>(animTime);
    if (f != currentFrame) {
        previousFrame = currentFrame;
        currentFrame = f;
    }
    if (model) {
        model->BuildFrame(previousFrame, currentFrame, animTime - currentFrame);
    }
}

void CopyName(char* out, const char* in, int size) {
    int i = 0;
    for (; i < size - 1 && in[i]; i++) {
        out[i] = in[i];
    }
    out[i] = 0;
}

int EntityKindMatches(const EntityKind& kind, const char* entityName) {
    if (!kind.prefix) {
        return strcmp(entityName, kind.match) == 0;
    }
    return strncmp(entityName, kind.match, strlen(kind.match)) == 0;
}

static int LowestFreeSlot() {
    for (int i = 0; i < kMaxObjects; i++) {
        if (!objects[i]) {
            return i;
        }
    }
    return -1;
}

// Frame 0's bounds are the collision box; narrowing changes them in the model itself, so the
// drawn bounds and the box agree.
static void NarrowBounds(Mesh* frame) {
    frame->boundsMin[0] *= 0.7f;
    frame->boundsMin[2] *= 0.7f;
    frame->boundsMax[0] *= 0.7f;
    frame->boundsMax[2] *= 0.7f;
}

static void PlaceCameraAhead(const GameObject& object) {
    Vec3 at = {object.position[0], object.position[1], object.position[2]};
    MovePoint(at, g_camera.position, object.rotation[1], 0.0f, 10.0f);
}

int CreateEntityObject(const LocationEntity& entity, const EntityKind& kind) {
    int slot = LowestFreeSlot();
    if (slot < 0) {
        return -1;
    }
    char modelName[64];
    char textureName[64];
    if (kind.model) {
        CopyName(modelName, kind.model, sizeof(modelName));
    } else {
        snprintf(modelName, sizeof(modelName), "%s.vmd", entity.name);
    }
    if (kind.texture) {
        CopyName(textureName, kind.texture, sizeof(textureName));
    } else {
        snprintf(textureName, sizeof(textureName), "%s.tga", entity.name);
    }
    GameObject* object = new GameObject;
    objects[slot] = object;
    object->model = new Model;
    if (!object->model->Load(&g_resources, modelName) || !object->model->frames[0]) {
        if (!kind.model) {
            DestroyObject(slot);
            return -1;
        }
        // The empty object stays: with no type no rule ever matches it.
        delete object->model;
        object->model = nullptr;
        return slot;
    }
    CopyName(object->name, entity.name, sizeof(object->name));
    CopyName(object->type, kind.type, sizeof(object->type));
    CopyName(object->texture, textureName, sizeof(object->texture));
    object->model->BuildFrame(0, 0, 1.0f);
    Mesh* frame = object->model->frames[0];
    if (kind.narrowed) {
        NarrowBounds(frame);
    }
    memcpy(object->position, entity.position, sizeof(object->position));
    memcpy(object->rotation, entity.rotation, sizeof(object->rotation));
    if (strcmp(kind.type, "foot") == 0) {
        object->position[1] += 400.0f;
        object->counter = 66;
    }
    if (kind.camera) {
        PlaceCameraAhead(*object);
    }
    if (slot < CollisionWorld::kSlotCount) {
        g_collision.CreateShape(slot);
        g_collision.slots[slot]->SetBox(0, frame->boundsMin, frame->boundsMax, object->position);
    }
    return slot;
}

void DestroyObject(int slot) {
    if (slot < 0 || slot >= kMaxObjects) {
        return;
    }
    delete objects[slot];
    objects[slot] = nullptr;
}

void DeleteAllObjects() {
    for (int i = 0; i < kMaxObjects; i++) {
        DestroyObject(i);
    }
}

int CountObjectsOfType(const char* type) {
    int count = 0;
    for (int i = 0; i < kMaxObjects; i++) {
        if (objects[i] && strcmp(objects[i]->type, type) == 0) {
            count++;
        }
    }
    return count;
}

int FindRoutePoint(const char* name, int number, int32_t* entityIndex) {
    char wanted[96];
    snprintf(wanted, sizeof(wanted), "%s_route%02i", name, number);
    for (int i = 0; i < g_location.entityCount; i++) {
        const LocationEntity* entity = g_location.entities[i];
        if (entity && strcmp(entity->name, wanted) == 0) {
            *entityIndex = i;
            return 1;
        }
    }
    return 0;
}
