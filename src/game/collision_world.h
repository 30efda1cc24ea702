// Collision for the rules of play: axis-aligned boxes only. Every game object
// that can be touched owns one shape (up to eight boxes, the game uses box 0)
// in the slot of the collision world that matches its slot in the object table.
// A test answers whether two boxes overlap and, when they do, on which of six
// faces they meet and the vector that moves "this" shape out of the other.
// Nothing here moves anything: callers set the offsets and apply the push.
//
// Side codes for this shape A meeting B: 1 A's min x near B's max x, 2 A's max x
// near B's min x, 3 and 4 the same on z, 5 A rests on top of B, 6 anything else
// (A below B, and every tie for the nearest face pair).
#pragma once

struct CollisionBox {
    unsigned char active;  // 1 when the box takes part in tests
    float min[3];          // smallest corner, relative to offset
    float max[3];          // largest corner, relative to offset
    float offset[3];       // where the box is in the world
};

class CollisionShape {
public:
    static const int kBoxCount = 8;

    CollisionBox boxes[kBoxCount];
    float push[3];         // result of the last hit: moves this shape out of the other
    unsigned char hitBox;  // result: box index of this shape (box test) or of the other (shape test)
    unsigned char side;    // result: 1 to 6

    CollisionShape();

    // Activates box number (0-7) with the given corners and offset; a null vector leaves zero.
    void SetBox(int number, const float* min, const float* max, const float* offset);
    // Tests against one box given by world corners, shifted by offset when not null; 1 on a hit.
    int TestBox(const float* min, const float* max, const float* offset);
    // Tests against every box pair of another shape (this shape's boxes outer); 1 on a hit.
    int TestShape(const CollisionShape& other);

private:
    void Resolve(const float* aMin, const float* aMax, const float* bMin, const float* bMax);
};

class CollisionWorld {
public:
    static const int kSlotCount = 128;

    CollisionShape* slots[kSlotCount];
    float push[3];  // copy of the result of the last successful world test
    unsigned char hitBox;
    unsigned char side;

    CollisionWorld();
    ~CollisionWorld();

    // Puts a new cleared shape into slot, replacing any there; 1, or 0 for a slot out of range.
    int CreateShape(int slot);
    // Destroys the slot's shape, if any.
    void DeleteShape(int slot);
    // Destroys every shape and zeroes the world's result.
    void Clear();
    // The shape of a slot, or null when empty or out of range.
    CollisionShape* Shape(int slot) const;
    // Tests slot's shape against one box (world corners, shifted by offset when given); 1 on a hit.
    int TestShapeAgainstBox(int slot, const float* min, const float* max, const float* offset);
    // Tests slot a's shape against slot b's; 1 on a hit, the result is a's.
    int TestShapes(int a, int b);

private:
    void CopyResult(const CollisionShape& shape);
};

extern CollisionWorld g_collision;
