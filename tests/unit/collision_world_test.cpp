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

TEST(CollisionShape, EachNearestFacePairGivesItsSideAndPushAndTiesGiveSide6) {
    struct Case {
        float a[6], b[6];
        int side;
        float push[3];
    } cases[] = {
        {{0, 0, 0, 10, 10, 10}, {-20, -50, -50, 2, 50, 50}, 1, {2, 0, 0}},  // B's max x just inside A's min x
        {{0, 0, 0, 10, 10, 10}, {8, -50, -50, 30, 50, 50}, 2, {-2, 0, 0}},  // B's min x just inside A's max x
        {{0, 0, 0, 10, 10, 10}, {-50, -50, -20, 50, 50, 3}, 3, {0, 0, 3}},
        {{0, 0, 0, 10, 10, 10}, {-50, -50, 9, 50, 50, 30}, 4, {0, 0, -1}},
        {{0, 0, 0, 10, 10, 10}, {-50, -20, -50, 50, 4, 50}, 5, {0, 4, 0}},
        {{0, 0, 0, 10, 10, 10}, {-50, 7, -50, 50, 30, 50}, 6, {0, -3, 0}},  // A below B
        // Centred in a larger box the x gaps tie for the smallest: side 6.
        {{-5, -50, -50, 5, 50, 50}, {-10, -100, -100, 10, 100, 100}, 6, {0, -150, 0}},
        // A tie between a floor gap and a wall gap also ends in 6.
        {{0, 0, 0, 10, 10, 10}, {-20, -20, -50, 1, 1, 50}, 6, {0, -30, 0}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.side);
        CollisionShape a = BoxShape(c.a[0], c.a[1], c.a[2], c.a[3], c.a[4], c.a[5]);
        ASSERT_EQ(HitBox(a, c.b[0], c.b[1], c.b[2], c.b[3], c.b[4], c.b[5]), 1);
        EXPECT_EQ(a.side, c.side);
        for (int k = 0; k < 3; k++) {
            EXPECT_FLOAT_EQ(a.push[k], c.push[k]) << "axis " << k;
        }
    }
}

TEST(CollisionShape, TouchingFacesOverlapAndGapsDoNot) {
    CollisionShape a = BoxShape(0, 0, 0, 10, 10, 10);
    EXPECT_EQ(HitBox(a, 10, 0, 0, 20, 10, 10), 1);
    EXPECT_EQ(HitBox(a, 10.001f, 0, 0, 20, 10, 10), 0);
    EXPECT_EQ(HitBox(a, 0, -5, 0, 10, -0.001f, 10), 0);
}
