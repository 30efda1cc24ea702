// Box collision: overlap on closed intervals, the side rules with their ties,
// push vectors, and the world's slot bookkeeping and result copying.
#include "game/collision_world.h"

#include <gtest/gtest.h>

namespace {

const float kZero[3] = {0, 0, 0};

CollisionShape BoxShape(float x0, float y0, float z0, float x1, float y1, float z1) {
    CollisionShape shape;
    float min[3] = {x0, y0, z0};
    float max[3] = {x1, y1, z1};
    shape.SetBox(0, min, max, kZero);
    return shape;
}

int HitBox(CollisionShape& shape, float x0, float y0, float z0, float x1, float y1, float z1) {
    float min[3] = {x0, y0, z0};
    float max[3] = {x1, y1, z1};
    return shape.TestBox(min, max, nullptr);
}

}  // namespace

TEST(CollisionShape, RestingOnAFloorIsSide5WithAnUpwardPush) {
    CollisionShape a = BoxShape(0, 0, 0, 10, 10, 10);
    ASSERT_EQ(HitBox(a, -50, -20, -50, 50, 1, 50), 1);
    EXPECT_EQ(a.side, 5);
    EXPECT_FLOAT_EQ(a.push[0], 0);
    EXPECT_FLOAT_EQ(a.push[1], 1);
    EXPECT_FLOAT_EQ(a.push[2], 0);
    EXPECT_EQ(a.hitBox, 0);
}

TEST(CollisionShape, EachNearestFacePairGivesItsSideAndPush) {
    struct Case {
        float b[6];
        int side;
        float push[3];
    } cases[] = {
        {{-20, -50, -50, 2, 50, 50}, 1, {2, 0, 0}},  // B's max x just inside A's min x
        {{8, -50, -50, 30, 50, 50}, 2, {-2, 0, 0}},  // B's min x just inside A's max x
        {{-50, -50, -20, 50, 50, 3}, 3, {0, 0, 3}}, {{-50, -50, 9, 50, 50, 30}, 4, {0, 0, -1}},
        {{-50, -20, -50, 50, 4, 50}, 5, {0, 4, 0}}, {{-50, 7, -50, 50, 30, 50}, 6, {0, -3, 0}},  // A below B
    };
    for (const Case& c : cases) {
        CollisionShape a = BoxShape(0, 0, 0, 10, 10, 10);
        ASSERT_EQ(HitBox(a, c.b[0], c.b[1], c.b[2], c.b[3], c.b[4], c.b[5]), 1) << c.side;
        EXPECT_EQ(a.side, c.side);
        for (int k = 0; k < 3; k++) {
            EXPECT_FLOAT_EQ(a.push[k], c.push[k]) << "side " << c.side << " axis " << k;
        }
    }
}

TEST(CollisionShape, TiesForTheNearestFaceGiveSide6) {
    // Centred in a larger box: d1 == d2 are the smallest.
    CollisionShape a = BoxShape(-5, -50, -50, 5, 50, 50);
    ASSERT_EQ(HitBox(a, -10, -100, -100, 10, 100, 100), 1);
    EXPECT_EQ(a.side, 6);
    EXPECT_FLOAT_EQ(a.push[1], -100 - 50);
    // A tie between a floor gap and a wall gap also ends in 6.
    CollisionShape b = BoxShape(0, 0, 0, 10, 10, 10);
    ASSERT_EQ(HitBox(b, -20, -20, -50, 1, 1, 50), 1);
    EXPECT_EQ(b.side, 6);
}

TEST(CollisionShape, TouchingFacesOverlapAndGapsDoNot) {
    CollisionShape a = BoxShape(0, 0, 0, 10, 10, 10);
    EXPECT_EQ(HitBox(a, 10, 0, 0, 20, 10, 10), 1);
    EXPECT_EQ(HitBox(a, 10.001f, 0, 0, 20, 10, 10), 0);
    EXPECT_EQ(HitBox(a, 0, -5, 0, 10, -0.001f, 10), 0);
}

TEST(CollisionShape, OffsetsMoveBothTheShapeAndTheTestedBox) {
    CollisionShape a;
    float min[3] = {-1, 0, -1}, max[3] = {1, 2, 1}, offset[3] = {100, 0, 0};
    a.SetBox(0, min, max, offset);
    float fmin[3] = {-5, -5, -5}, fmax[3] = {5, 0.5f, 5};
    EXPECT_EQ(a.TestBox(fmin, fmax, nullptr), 0);
    float shift[3] = {100, 0, 0};
    ASSERT_EQ(a.TestBox(fmin, fmax, shift), 1);
    EXPECT_EQ(a.side, 5);
    EXPECT_FLOAT_EQ(a.push[1], 0.5f);
}

TEST(CollisionShape, FirstOverlappingBoxPairWinsAndInactiveBoxesAreSkipped) {
    CollisionShape a;
    float min[3] = {0, 0, 0}, max[3] = {1, 1, 1};
    float far[3] = {500, 0, 0};
    a.SetBox(3, min, max, nullptr);
    a.SetBox(5, min, max, far);
    a.SetBox(9, min, max, nullptr);  // out of range: ignored
    CollisionShape b;
    b.SetBox(2, min, max, far);
    b.SetBox(6, min, max, nullptr);
    ASSERT_EQ(a.TestShape(b), 1);
    EXPECT_EQ(a.hitBox, 6);  // box 3 of a meets box 6 of b first
    float farMin[3] = {499, 0, 0}, farMax[3] = {502, 1, 1};
    ASSERT_EQ(a.TestBox(farMin, farMax, nullptr), 1);
    EXPECT_EQ(a.hitBox, 5);
    CollisionShape empty;
    EXPECT_EQ(empty.TestBox(min, max, nullptr), 0);
}

TEST(CollisionWorld, EmptySlotsAndMissesLeaveTheLastResult) {
    CollisionWorld world;
    ASSERT_EQ(world.CreateShape(4), 1);
    EXPECT_EQ(world.CreateShape(128), 0);
    EXPECT_EQ(world.CreateShape(-1), 0);
    float min[3] = {0, 0, 0}, max[3] = {10, 10, 10};
    world.slots[4]->SetBox(0, min, max, nullptr);
    float fmin[3] = {-50, -20, -50}, fmax[3] = {50, 1, 50};
    ASSERT_EQ(world.TestShapeAgainstBox(4, fmin, fmax, nullptr), 1);
    EXPECT_EQ(world.side, 5);
    EXPECT_FLOAT_EQ(world.push[1], 1);
    float missMin[3] = {100, 100, 100}, missMax[3] = {101, 101, 101};
    EXPECT_EQ(world.TestShapeAgainstBox(4, missMin, missMax, nullptr), 0);
    EXPECT_EQ(world.TestShapeAgainstBox(5, fmin, fmax, nullptr), 0);
    EXPECT_EQ(world.TestShapes(4, 5), 0);
    EXPECT_EQ(world.side, 5);
    EXPECT_FLOAT_EQ(world.push[1], 1);
}

TEST(CollisionWorld, ShapeTestsCopyTheFirstShapesResult) {
    CollisionWorld world;
    world.CreateShape(0);
    world.CreateShape(127);
    float pmin[3] = {-3, 0, -3}, pmax[3] = {3, 10, 3}, at[3] = {0, 9, 0};
    world.slots[0]->SetBox(0, pmin, pmax, at);
    float kmin[3] = {-5, -1, -5}, kmax[3] = {5, 0, 5};
    world.slots[127]->SetBox(0, kmin, kmax, at);
    ASSERT_EQ(world.TestShapes(0, 127), 1);
    EXPECT_EQ(world.side, 5);
    EXPECT_FLOAT_EQ(world.push[1], 0);  // resting exactly on the top face
    ASSERT_EQ(world.TestShapes(127, 0), 1);
    EXPECT_EQ(world.side, 6);
    world.DeleteShape(127);
    EXPECT_EQ(world.Shape(127), nullptr);
    EXPECT_EQ(world.TestShapes(0, 127), 0);
    world.Clear();
    EXPECT_EQ(world.Shape(0), nullptr);
    EXPECT_EQ(world.side, 0);
}
