// The lightmap builders: the baking rules seen through pages and coordinates
// (lights behind the plane, clamping, shadows and the flags that switch them
// off, the shared black rectangle, walls and floors, a full page set), each
// checked with the plain loop and the fast builder alike, and the two compared
// byte for byte over a shipped level.
#include "resources/lightmap_builder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>
#include <vector>

#include "resources/location.h"
#include "resources/mesh.h"
#include "resources/model_shapes.h"
#include "resources/resource_manager.h"

namespace {

typedef float Corner[3];

const char* const kShippedLevel = "levels\\02.vlc";

Model& AddPiece(Location& location) {
    LocationPiece* piece = new LocationPiece;
    memset(piece->name, 0, sizeof(piece->name));
    memset(piece->textureName, 0, sizeof(piece->textureName));
    snprintf(piece->name, sizeof(piece->name), "piece%d", location.pieceCount);
    location.pieces[location.pieceCount++] = piece;
    return piece->model;
}

// A model of free triangles (memory convention, corners in drawing order).
void MakeTriangles(Model& model, const Corner* corners, int triangles) {
    model.Clear();
    Mesh* mesh = new Mesh;
    unsigned short n = static_cast<unsigned short>(triangles);
    mesh->Allocate(static_cast<unsigned short>(n * 3), n, static_cast<unsigned short>(n * 3), n);
    for (int i = 0; i < triangles * 3; i++) {
        memcpy(mesh->vertices + i * 3, corners[i], sizeof(Corner));
        mesh->faces[i] = mesh->texFaces[i] = static_cast<unsigned short>(i);
    }
    mesh->ComputeBounds();
    model.frames[0] = mesh;
    model.frameCount = 1;
    model.BuildFrame(0, 0, 0.0f);
}

// One upward-facing right triangle in the plane y = height, legs of length size along +z and +x.
void AddFloorTriangle(Location& location, float x, float height, float z, float size) {
    Corner c[3] = {{x, height, z}, {x, height, z + size}, {x + size, height, z}};
    MakeTriangles(AddPiece(location), c, 1);
}

typedef void (*Builder)(Location&);
void Reference(Location& location) {
    BuildLightmapsReference(location);
}
void FastOneThread(Location& location) {
    BuildLightmaps(location, 1, nullptr, nullptr);
}
void FastThreeThreads(Location& location) {
    BuildLightmaps(location, 3, nullptr, nullptr);
}

// The texels of the rectangle a triangle's coordinates span (the corners sit one texel in).
struct Rect {
    unsigned page;
    int x, y, w, h;
};
Rect RectOf(const LightmapVertex* c) {
    float uMin = fminf(c[0].u, fminf(c[1].u, c[2].u)), uMax = fmaxf(c[0].u, fmaxf(c[1].u, c[2].u));
    float vMin = fminf(c[0].v, fminf(c[1].v, c[2].v)), vMax = fmaxf(c[0].v, fmaxf(c[1].v, c[2].v));
    Rect r;
    r.page = c[0].page;
    r.x = static_cast<int>(lroundf(uMin * 256)) - 1;
    r.y = static_cast<int>(lroundf(vMin * 256)) - 1;
    r.w = static_cast<int>(lroundf(uMax * 256)) + 1 - r.x;
    r.h = static_cast<int>(lroundf(vMax * 256)) + 1 - r.y;
    return r;
}
const unsigned char* Texel(const LightmapSet& set, unsigned page, int x, int y) {
    return set.pages[page] + (y * 256 + x) * 3;
}
std::vector<unsigned char> RectTexels(const LightmapSet& set, const LightmapVertex* c) {
    Rect r = RectOf(c);
    std::vector<unsigned char> out;
    for (int j = 0; j < r.h; j++) {
        const unsigned char* row = Texel(set, r.page, r.x, r.y + j);
        out.insert(out.end(), row, row + r.w * 3);
    }
    return out;
}
int CountZeroTexels(const std::vector<unsigned char>& texels) {
    int zero = 0;
    for (size_t i = 0; i + 2 < texels.size(); i += 3) {
        zero += texels[i] == 0 && texels[i + 1] == 0 && texels[i + 2] == 0;
    }
    return zero;
}
std::vector<unsigned char> Block(const LightmapSet& set) {
    std::vector<unsigned char> bytes(set.Size());
    set.Serialise(bytes.data());
    return bytes;
}

class LightmapBuilder : public ::testing::TestWithParam<Builder> {};

TEST_P(LightmapBuilder, LightBehindThePlaneGivesNothingHoweverClose) {
    Location location;
    AddFloorTriangle(location, 0, 0, 0, 10);
    location.lightmaps.quality = 1.0f;
    location.lightmaps.AddLight(2, -0.01f, 2, 1, 1, 1, 100, 0);
    GetParam()(location);
    const LightmapSet& set = location.lightmaps;
    ASSERT_EQ(set.pageCount, 1u);
    EXPECT_EQ(set.areaCount, 1u);  // the first black triangle keeps its rectangle
    EXPECT_EQ(set.sharedBlackSet, 1);
    EXPECT_EQ(CountZeroTexels(RectTexels(set, set.coords[0])), 8 * 8);

    // The same light on the other side lights it.
    Location front;
    AddFloorTriangle(front, 0, 0, 0, 10);
    front.lightmaps.quality = 1.0f;
    front.lightmaps.AddLight(2, 0.01f, 2, 1, 1, 1, 100, 0);
    GetParam()(front);
    EXPECT_EQ(CountZeroTexels(RectTexels(front.lightmaps, front.lightmaps.coords[0])), 0);
    EXPECT_EQ(front.lightmaps.sharedBlackSet, 0);
}

TEST_P(LightmapBuilder, OverlappingLightsClampAndFallOffLinearly) {
    Location location;
    AddFloorTriangle(location, 0, 0, 0, 16);
    location.lightmaps.quality = 0.5f;  // 8 lumels per side
    location.lightmaps.AddLight(0, 0, 0, 0.8f, 0, 0, 32, 0);
    location.lightmaps.AddLight(0, 0, 0, 0.8f, 0, 0, 32, 0);
    GetParam()(location);
    const LightmapSet& set = location.lightmaps;
    Rect r = RectOf(set.coords[0]);
    ASSERT_EQ(r.w, 8);
    ASSERT_EQ(r.h, 8);
    const unsigned char* corner = Texel(set, r.page, r.x, r.y);
    EXPECT_EQ(corner[0], 255);
    EXPECT_EQ(corner[1], 0);
    EXPECT_EQ(corner[2], 0);
    // The far corner lumel is 16 x sqrt(2) away: 1.6 x (1 - 0.7071...) = 0.4686 -> 119.
    EXPECT_EQ(Texel(set, r.page, r.x + 7, r.y + 7)[0], 119);
}

// A floor grid at y = 0 and a crate hovering between it and a shadow-casting light.
std::unique_ptr<Location> ShadowScene(unsigned char floorFlag, unsigned char crateFlag, int lightShadows,
                                      float crateX) {
    std::unique_ptr<Location> location(new Location);
    MakeGridModel(AddPiece(*location), -40, 0, -40, 20, 4, 0.1f);
    float lo[3] = {crateX - 5, 10, -5}, hi[3] = {crateX + 5, 20, 5};
    MakeBoxModel(AddPiece(*location), lo, hi, 0.1f);
    // The shapes start from a cleared model, so the flags go on afterwards.
    location->pieces[0]->model.modelFlag = floorFlag;
    location->pieces[1]->model.modelFlag = crateFlag;
    location->lightmaps.quality = 0.8f;
    location->lightmaps.AddLight(0, 40, 0, 1, 1, 1, 200, lightShadows);
    return location;
}

std::vector<unsigned char> FloorTexels(const Location& location) {
    const LightmapSet& set = location.lightmaps;
    std::vector<unsigned char> all;
    for (unsigned t = 0; t < set.coordCounts[0]; t += 3) {
        std::vector<unsigned char> rect = RectTexels(set, set.coords[0] + t);
        all.insert(all.end(), rect.begin(), rect.end());
    }
    return all;
}

TEST_P(LightmapBuilder, CratesCastShadowsUnlessAFlagSaysOtherwise) {
    // The crate far to the side is in no ray's way: the floor as if there were no crate.
    std::unique_ptr<Location> open = ShadowScene(0, 0, 1, 1000);
    GetParam()(*open);
    ASSERT_EQ(CountZeroTexels(FloorTexels(*open)), 0);

    std::unique_ptr<Location> shadowed = ShadowScene(0, 0, 1, 0);
    GetParam()(*shadowed);
    // The crate's shadow is 20 x 20 on the floor, about 16 x 16 lumels at 0.8 per unit, and
    // counted twice: both triangles of a grid cell have lumels over the whole cell.
    int dark = CountZeroTexels(FloorTexels(*shadowed));
    EXPECT_GT(dark, 2 * 13 * 13);
    EXPECT_LT(dark, 2 * 18 * 18);

    struct Case {
        unsigned char floorFlag, crateFlag;
        int shadows;
    } cases[] = {{0, 0x02, 1}, {0x01, 0, 1}, {0, 0, 0}};
    for (const Case& c : cases) {
        std::unique_ptr<Location> location = ShadowScene(c.floorFlag, c.crateFlag, c.shadows, 0);
        GetParam()(*location);
        EXPECT_EQ(FloorTexels(*location), FloorTexels(*open))
            << "floor flag " << int(c.floorFlag) << ", crate flag " << int(c.crateFlag) << ", shadows "
            << c.shadows;
    }
    // A piece that is neither drawn nor lightmapped still blocks light.
    std::unique_ptr<Location> hidden = ShadowScene(0, 0x10, 1, 0);
    GetParam()(*hidden);
    EXPECT_EQ(hidden->lightmaps.coords[1], nullptr);
    EXPECT_EQ(FloorTexels(*hidden), FloorTexels(*shadowed));
}

// A right triangle on each kind of plane: legs of 16 and 32 along the two axes the largest
// normal component leaves (in their order: y, z for walls facing x; x, z for floors; x, y for
// walls facing z), the plane 5 from the origin, a light 1 in front of the corner.
TEST_P(LightmapBuilder, WallsAndFloorsMapTheirLegsToColumnsAndRows) {
    struct Case {
        const char* what;
        Corner corners[3];
        float light[3];
    } cases[] = {
        {"wall facing -x", {{5, 0, 0}, {5, 0, 32}, {5, 16, 0}}, {4, 0, 0}},
        {"floor facing +y", {{0, 5, 0}, {0, 5, 32}, {16, 5, 0}}, {0, 6, 0}},
        {"wall facing -z", {{0, 0, 5}, {0, 32, 5}, {16, 0, 5}}, {0, 0, 4}},
    };
    for (const Case& c : cases) {
        Location location;
        MakeTriangles(AddPiece(location), c.corners, 1);
        location.lightmaps.quality = 1.0f;  // 16 x 32 lumels
        location.lightmaps.AddLight(c.light[0], c.light[1], c.light[2], 1, 1, 1, 64, 0);
        GetParam()(location);
        const LightmapSet& set = location.lightmaps;
        const LightmapVertex* out = set.coords[0];
        // Corners (0, 0), (0, 32) and (16, 0) of the projection, one texel in from the edges.
        const float expected[3][2] = {{1, 1}, {1, 31}, {15, 1}};
        for (int k = 0; k < 3; k++) {
            EXPECT_EQ(out[k].page, 0u) << c.what;
            EXPECT_EQ(out[k].u * 256, expected[k][0]) << c.what << ", corner " << k;
            EXPECT_EQ(out[k].v * 256, expected[k][1]) << c.what << ", corner " << k;
        }
        // Linear fall-off over 64 from the light: distances 1, about 16.03, 32.02 and 35.79.
        const int texels[4][3] = {{0, 0, 251}, {15, 0, 191}, {0, 31, 127}, {15, 31, 112}};
        for (const auto& t : texels) {
            const unsigned char* texel = Texel(set, 0, t[0], t[1]);
            EXPECT_EQ(texel[0], t[2]) << c.what << ", lumel " << t[0] << ", " << t[1];
            EXPECT_EQ(texel[2], t[2]) << c.what << ", lumel " << t[0] << ", " << t[1];
        }
    }
}

TEST_P(LightmapBuilder, AFullPageSetLeavesTheRestUntouched) {
    // 129 pieces of four triangles that each need a 32 x 32-cell rectangle: four per page.
    Location location;
    for (int p = 0; p < 129; p++) {
        Corner c[12];
        for (int t = 0; t < 4; t++) {
            float x = p * 200.0f, z = t * 200.0f;
            float corners[3][3] = {{x, 0, z}, {x, 0, z + 100}, {x + 100, 0, z}};
            memcpy(c[t * 3], corners, sizeof(corners));
        }
        MakeTriangles(AddPiece(location), c, 4);
    }
    location.lightmaps.quality = 1.4f;  // 140 lumels a side, held to 128
    location.lightmaps.AddLight(0, 1e6f, 0, 1, 1, 1, 1e7f, 0);
    GetParam()(location);
    const LightmapSet& set = location.lightmaps;
    EXPECT_EQ(set.pageCount, 128u);
    EXPECT_EQ(set.areaCount, 512u);
    EXPECT_EQ(set.coords[127][3].page, 127u);
    Rect last = RectOf(set.coords[127] + 9);
    EXPECT_EQ(last.x, 128);
    EXPECT_EQ(last.y, 128);
    EXPECT_EQ(last.w, 128);
    for (int k = 0; k < 12; k++) {
        EXPECT_EQ(set.coords[128][k].page, LightmapSet::kNoPage);
    }
}

INSTANTIATE_TEST_SUITE_P(Builders, LightmapBuilder,
                         ::testing::Values(&Reference, &FastOneThread, &FastThreeThreads));

// A shipped level, at the preview quality so that the plain loop stays quick.
TEST(LightmapBuilders, FastBuilderMatchesThePlainLoopOnAShippedLevel) {
    ResourceManager resources;
    snprintf(resources.dataDirectory, sizeof(resources.dataDirectory), "%s/data", VANTLE_RUN_DIR);
    std::unique_ptr<Location> reference(new Location), fast(new Location);
    for (Location* location : {reference.get(), fast.get()}) {
        if (!location->Load(&resources, kShippedLevel)) {
            GTEST_SKIP() << "no " << kShippedLevel << " in " << VANTLE_RUN_DIR << "/data (content not built)";
        }
        location->lightmaps.Clear();  // as a rebuild starts
        location->lightmaps.quality = 0.0f;
        location->SetupLighting(1);
    }
    ASSERT_GT(reference->lightmaps.lightCount, 0u);
    BuildLightmapsReference(*reference);
    BuildLightmaps(*fast, 2, nullptr, nullptr);
    EXPECT_TRUE(Block(reference->lightmaps) == Block(fast->lightmaps));
}

}  // namespace
