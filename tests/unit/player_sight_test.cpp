// The sight line test under the "player never hidden" check: a wall hides what is behind it from
// the side it faces, hides nothing from behind unless drawn two-sided, and nothing beside it or
// short of it. The shipped solutions alone cannot tell a blind check from a level that hides
// nothing, so the blocking answers are pinned here.
#include "game/player_sight.h"

#include <gtest/gtest.h>

namespace {

// The same answers for the wall turned a quarter about y and flipped upright ((x, y, z) becomes
// (z, -y, x)): a wall facing +x, whose hit point's z is what decides.
Vec3 Turned(const Vec3& v, int turned) {
    return turned ? Vec3{v.z, -v.y, v.x} : v;
}

TEST(PlayerSight, AWallHidesFromTheSideItFacesOnlyUnlessTwoSided) {
    for (int turned = 0; turned < 2; turned++) {
        // A 20 x 20 wall in the plane z = 0, its front facing +z. The lines miss its diagonal: a line
        // through an edge shared by two triangles meets neither.
        FrameVertex wall[6] = {};
        const Vec3 corners[6] = {{-10, -10, 0}, {10, -10, 0}, {10, 10, 0},
                                 {-10, -10, 0}, {10, 10, 0},  {-10, 10, 0}};
        for (int i = 0; i < 6; i++) {
            const Vec3 c = Turned(corners[i], turned);
            wall[i].position[0] = c.x;
            wall[i].position[1] = c.y;
            wall[i].position[2] = c.z;
        }
        const FrameVertex far[3] = {
            {{500, 500, 500}, {}, {}}, {{501, 500, 500}, {}, {}}, {{500, 501, 500}, {}, {}}};
        struct Row {
            Vec3 eye, point;
            int twoSided, blocked;
        } rows[] = {
            {{2, -4, 100}, {2, -4, -50}, 0, 1},     // in front, looking through
            {{50, 5, 100}, {-40, -9, -100}, 0, 1},  // slanting through it
            {{2, -4, -100}, {2, -4, 50}, 0, 0},     // from behind: culled
            {{2, -4, -100}, {2, -4, 50}, 1, 1},     // from behind, two-sided
            {{2, -4, 100}, {30, 0, -50}, 1, 0},     // passing beside it
            {{2, -4, 100}, {2, -4, 10}, 1, 0},      // stopping short of it
        };
        for (const Row& row : rows) {
            SightBlockers blockers;
            blockers.AddPiece(far, 1, 0);
            blockers.AddPiece(wall, 2, row.twoSided);
            blockers.PlaceObjects();  // no objects: the pieces stay
            EXPECT_EQ(blockers.Blocks(Turned(row.eye, turned), Turned(row.point, turned)), row.blocked)
                << row.eye.x << " " << row.eye.y << " " << row.eye.z << " to " << row.point.x << " "
                << row.point.y << " " << row.point.z << (row.twoSided ? ", two-sided" : "")
                << (turned ? ", turned" : "");
        }
    }
}

}  // namespace
