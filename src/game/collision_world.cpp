#include "game/collision_world.h"

#include <cmath>
#include <cstring>

static void WorldCorners(const CollisionBox& box, float* outMin, float* outMax) {
    for (int k = 0; k < 3; k++) {
        outMin[k] = box.offset[k] + box.min[k];
        outMax[k] = box.offset[k] + box.max[k];
    }
}

// Closed intervals on every axis: boxes that only share a face still overlap.
static int Overlap(const float* aMin, const float* aMax, const float* bMin, const float* bMax) {
    for (int k = 0; k < 3; k++) {
        if (aMin[k] > bMax[k] || bMin[k] > aMax[k]) {
            return 0;
        }
    }
    return 1;
}

CollisionShape::CollisionShape() {
    memset(boxes, 0, sizeof(boxes));
    memset(push, 0, sizeof(push));
    hitBox = 0;
    side = 0;
}

void CollisionShape::SetBox(int number, const float* min, const float* max, const float* offset) {
    if (number < 0 || number >= kBoxCount) {
        return;
    }
    CollisionBox& box = boxes[number];
    box.active = 1;
    memset(box.min, 0, sizeof(box.min));
    memset(box.max, 0, sizeof(box.max));
    memset(box.offset, 0, sizeof(box.offset));
    if (offset) {
        memcpy(box.offset, offset, sizeof(box.offset));
    }
    if (max) {
        memcpy(box.max, max, sizeof(box.max));
    }
    if (min) {
        memcpy(box.min, min, sizeof(box.min));
    }
}

// The face pair with the strictly smallest gap decides the side; any tie for the
// smallest falls through to 6, which is why a box centred in another pushes on y.
void CollisionShape::Resolve(const float* aMin, const float* aMax, const float* bMin, const float* bMax) {
    float d[6];
    d[0] = fabsf(aMin[0] - bMax[0]);
    d[1] = fabsf(aMax[0] - bMin[0]);
    d[2] = fabsf(aMin[2] - bMax[2]);
    d[3] = fabsf(aMax[2] - bMin[2]);
    d[4] = fabsf(aMin[1] - bMax[1]);
    d[5] = fabsf(aMax[1] - bMin[1]);
    side = 6;
    for (int k = 0; k < 5; k++) {
        int smallest = 1;
        for (int j = 0; j < 6; j++) {
            if (j != k && !(d[k] < d[j])) {
                smallest = 0;
                break;
            }
        }
        if (smallest) {
            side = static_cast<unsigned char>(k + 1);
        }
    }
    memset(push, 0, sizeof(push));
    switch (side) {
        case 1:
            push[0] = bMax[0] - aMin[0];
            break;
        case 2:
            push[0] = bMin[0] - aMax[0];
            break;
        case 3:
            push[2] = bMax[2] - aMin[2];
            break;
        case 4:
            push[2] = bMin[2] - aMax[2];
            break;
        case 5:
            push[1] = bMax[1] - aMin[1];
            break;
        default:
            push[1] = bMin[1] - aMax[1];
            break;
    }
}

int CollisionShape::TestBox(const float* min, const float* max, const float* offset) {
    float bMin[3], bMax[3];
    for (int k = 0; k < 3; k++) {
        bMin[k] = min[k] + (offset ? offset[k] : 0.0f);
        bMax[k] = max[k] + (offset ? offset[k] : 0.0f);
    }
    for (int i = 0; i < kBoxCount; i++) {
        if (!boxes[i].active) {
            continue;
        }
        float aMin[3], aMax[3];
        WorldCorners(boxes[i], aMin, aMax);
        if (Overlap(aMin, aMax, bMin, bMax)) {
            Resolve(aMin, aMax, bMin, bMax);
            hitBox = static_cast<unsigned char>(i);
            return 1;
        }
    }
    return 0;
}

int CollisionShape::TestShape(const CollisionShape& other) {
    for (int i = 0; i < kBoxCount; i++) {
        if (!boxes[i].active) {
            continue;
        }
        float aMin[3], aMax[3];
        WorldCorners(boxes[i], aMin, aMax);
        for (int j = 0; j < kBoxCount; j++) {
            if (!other.boxes[j].active) {
                continue;
            }
            float bMin[3], bMax[3];
            WorldCorners(other.boxes[j], bMin, bMax);
            if (Overlap(aMin, aMax, bMin, bMax)) {
                Resolve(aMin, aMax, bMin, bMax);
                hitBox = static_cast<unsigned char>(j);
                return 1;
            }
        }
    }
    return 0;
}

CollisionWorld::CollisionWorld() {
    memset(slots, 0, sizeof(slots));
    memset(push, 0, sizeof(push));
    hitBox = 0;
    side = 0;
}

CollisionWorld::~CollisionWorld() {
    Clear();
}

int CollisionWorld::CreateShape(int slot) {
    if (slot < 0 || slot >= kSlotCount) {
        return 0;
    }
    delete slots[slot];
    slots[slot] = new CollisionShape();
    return 1;
}

void CollisionWorld::DeleteShape(int slot) {
    if (slot < 0 || slot >= kSlotCount) {
        return;
    }
    delete slots[slot];
    slots[slot] = nullptr;
}

void CollisionWorld::Clear() {
    for (int i = 0; i < kSlotCount; i++) {
        delete slots[i];
        slots[i] = nullptr;
    }
    memset(push, 0, sizeof(push));
    hitBox = 0;
    side = 0;
}

CollisionShape* CollisionWorld::Shape(int slot) const {
    if (slot < 0 || slot >= kSlotCount) {
        return nullptr;
    }
    return slots[slot];
}

void CollisionWorld::CopyResult(const CollisionShape& shape) {
    memcpy(push, shape.push, sizeof(push));
    hitBox = shape.hitBox;
    side = shape.side;
}

int CollisionWorld::TestShapeAgainstBox(int slot, const float* min, const float* max, const float* offset) {
    CollisionShape* shape = Shape(slot);
    if (!shape || !min || !max) {
        return 0;
    }
    int hit = shape->TestBox(min, max, offset);
    if (hit) {
        CopyResult(*shape);
    }
    return hit;
}

int CollisionWorld::TestShapes(int a, int b) {
    CollisionShape* shapeA = Shape(a);
    CollisionShape* shapeB = Shape(b);
    if (!shapeA || !shapeB) {
        return 0;
    }
    int hit = shapeA->TestShape(*shapeB);
    if (hit) {
        CopyResult(*shapeA);
    }
    return hit;
}
