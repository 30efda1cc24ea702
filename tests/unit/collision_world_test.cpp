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
