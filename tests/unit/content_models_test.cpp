// The generated models, read back through the engine's model loader: frame
// counts and shared topology, sizes in game units, and geometry that faces
// outwards.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>

#include "character_models.h"
#include "content_build.h"
#include "model_export.h"
#include "prop_models.h"
#include "resources/mesh.h"
#include "resources/model.h"
#include "title_models.h"

// Parses a generated model the way the game loads it.
static bool LoadBytes(const std::vector<uint8_t>& bytes, Model* model) {
    return !bytes.empty() &&
           model->Parse(bytes.data(), static_cast<unsigned int>(bytes.size())) == bytes.size();
}

static bool LoadMesh(const ShapeMesh& mesh, Model* model) {
    return LoadBytes(ShapeMeshFile(mesh, 0), model);
}

static float MaxDistance(const Mesh* a, const Mesh* b) {
    float d = 0.0f;
    for (int i = 0; i < a->vertexCount * 3; i++) {
        d = std::max(d, std::fabs(a->vertices[i] - b->vertices[i]));
    }
    return d;
}

TEST(ContentModels, AnimatedModelsHaveTheirFramesOverOneTopology) {
    struct Case {
        const char* name;
        ShapeMesh mesh;
        int minFrames;
        int maxFrames;
    } cases[] = {{"delver", MakeDelverMesh(), 33, 33},  {"light", MakeLampGlowMesh(), 33, 33},
                 {"dance", MakeDanceMesh(), 10, 512},   {"enemy01", MakeEnemyMesh(1), 4, 512},
                 {"enemy02", MakeEnemyMesh(2), 4, 512}, {"collapse", MakeCollapseMesh(), 9, 512}};
    for (Case& c : cases) {
        Model model;
        ASSERT_TRUE(LoadMesh(c.mesh, &model)) << c.name;
        EXPECT_GE(model.frameCount, c.minFrames) << c.name;
        EXPECT_LE(model.frameCount, c.maxFrames) << c.name;
        const Mesh* first = model.frames[0];
        ASSERT_GT(first->faceCount, 0) << c.name;
        for (int f = 1; f < model.frameCount; f++) {
            ASSERT_EQ(model.frames[f]->vertexCount, first->vertexCount) << c.name << " frame " << f;
            ASSERT_EQ(model.frames[f]->faceCount, first->faceCount) << c.name << " frame " << f;
        }
        // Something moves: the middle frame is not frame 0.
        EXPECT_GT(MaxDistance(first, model.frames[model.frameCount / 2]), 0.5f) << c.name;
    }
}

TEST(ContentModels, DelverIsAboutFortyUnitsTallAndTucksInTheAir) {
    Model model;
    ASSERT_TRUE(LoadMesh(MakeDelverMesh(), &model));
    const Mesh* stand = model.frames[0];
    EXPECT_NEAR(stand->boundsMin[1], 0.0f, 1.0f);
    EXPECT_GT(stand->boundsMax[1], 36.0f);
    EXPECT_LT(stand->boundsMax[1], 48.0f);
    // The tuck in the air (frame 28) is shorter than standing.
    EXPECT_LT(model.frames[28]->boundsMax[1] - model.frames[28]->boundsMin[1],
              stand->boundsMax[1] - stand->boundsMin[1] - 2.0f);
}

TEST(ContentModels, LampGlowFollowsTheLampInEveryFrame) {
    Model delver, glow;
    ASSERT_TRUE(LoadMesh(MakeDelverMesh(), &delver));
    ASSERT_TRUE(LoadMesh(MakeLampGlowMesh(), &glow));
    for (int f = 0; f < 33; f++) {
        const Mesh* g = glow.frames[f];
        float centre[3] = {g->centre[0], g->centre[1], g->centre[2]};
        // The lamp is the part of the delver nearest the glow centre: some vertex within 4.
        const Mesh* d = delver.frames[f];
        float best = 1e9f;
        for (int v = 0; v < d->vertexCount; v++) {
            float dx = d->vertices[v * 3] - centre[0], dy = d->vertices[v * 3 + 1] - centre[1],
                  dz = d->vertices[v * 3 + 2] - centre[2];
            best = std::min(best, std::sqrt(dx * dx + dy * dy + dz * dz));
        }
        EXPECT_LT(best, 2.5f) << "frame " << f;
    }
    EXPECT_GT(MaxDistance(glow.frames[0], glow.frames[17]), 2.0f);
}

TEST(ContentModels, PropsSuitTheGamesUnits) {
    Model door, platform, key, spikes, foot, title;
    ASSERT_TRUE(LoadMesh(MakeDoorMesh(), &door));
    ASSERT_TRUE(LoadMesh(MakePlatformMesh(), &platform));
    ASSERT_TRUE(LoadMesh(MakeKeyMesh(), &key));
    ASSERT_TRUE(LoadMesh(MakeNettleMesh(), &spikes));
    ASSERT_TRUE(LoadMesh(MakeFootMesh(), &foot));
    // The door is taller than the player but clears the way when it rises 80.
    float doorHeight = door.frames[0]->boundsMax[1] - door.frames[0]->boundsMin[1];
    EXPECT_GT(doorHeight, 45.0f);
    EXPECT_LE(doorHeight, 80.0f);
    // The platform's top is its origin, so a platform entity marks the standing height.
    EXPECT_NEAR(platform.frames[0]->boundsMax[1], 0.0f, 1e-4f);
    EXPECT_GT(platform.frames[0]->boundsMax[0] - platform.frames[0]->boundsMin[0], 40.0f);
    EXPECT_GT(key.frames[0]->boundsMax[1], 10.0f);
    EXPECT_LT(key.frames[0]->boundsMax[1], 30.0f);
    EXPECT_NEAR(spikes.frames[0]->boundsMin[1], 0.0f, 1e-3f);
    // The foot is big enough to flatten the player and reaches far up out of view.
    EXPECT_GT(foot.frames[0]->boundsMax[2] - foot.frames[0]->boundsMin[2], 100.0f);
    EXPECT_GT(foot.frames[0]->boundsMax[1], 300.0f);
    // The collapsing platform's tiles have fallen away by its last frame.
    Model collapse;
    ASSERT_TRUE(LoadMesh(MakeCollapseMesh(), &collapse));
    EXPECT_LT(collapse.frames[collapse.frameCount - 1]->boundsMax[1], -10.0f);
    EXPECT_NEAR(collapse.frames[0]->boundsMax[1], 0.0f, 1e-4f);

    ShapeMesh letters;
    std::string error;
    ASSERT_TRUE(MakeTitleTextMesh(CONTENT_DEFAULT_FONT_DIRECTORY, &letters, &error)) << error;
    ASSERT_TRUE(LoadMesh(letters, &title));
    // Centred on the axis it spins about, wider than tall.
    EXPECT_LT(std::fabs(title.frames[0]->centre[0]), 0.3f);
    EXPECT_GT(title.frames[0]->boundsMax[0] - title.frames[0]->boundsMin[0],
              3.0f * (title.frames[0]->boundsMax[1] - title.frames[0]->boundsMin[1]));
    EXPECT_FALSE(MakeTitleTextMesh("/nonexistent-font-dir", &letters, &error));
}

TEST(ContentModels, ShapesFaceOutwardsAndExportRoundTripsByteForByte) {
    ShapeMesh mesh;
    mesh.AddEllipsoid(V3(1, 2, 3), V3(4, 5, 6), 10, 6);
    mesh.AddBox(V3(20, 0, 0), V3(22, 3, 4), 0.25f);
    mesh.AddCylinder(V3(-20, 0, 0), 3, 2, 5, 8, true, 0.25f);
    std::vector<Vec3> normals;
    mesh.CornerNormals(&normals);
    Vec3 centres[3] = {V3(1, 2, 3), V3(21, 1.5f, 2), V3(-20, 2.5f, 0)};
    for (size_t t = 0; t < mesh.triangles.size(); t++) {
        const ShapeTriangle& tri = mesh.triangles[t];
        Vec3 p = mesh.positions[tri.v[0]];
        Vec3 centre = p.x > 10 ? centres[1] : (p.x < -10 ? centres[2] : centres[0]);
        Vec3 mid = Scale(Add(Add(p, mesh.positions[tri.v[1]]), mesh.positions[tri.v[2]]), 1.0f / 3.0f);
        Vec3 face = Cross(Sub(mesh.positions[tri.v[1]], p), Sub(mesh.positions[tri.v[2]], p));
        EXPECT_GT(Dot(face, Sub(mid, centre)), 0.0f) << "triangle " << t << " faces inwards";
        for (int k = 0; k < 3; k++) {
            EXPECT_NEAR(Length(normals[t * 3 + k]), 1.0f, 1e-4f);
            EXPECT_GT(Dot(normals[t * 3 + k], Sub(mesh.positions[tri.v[k]], centre)), 0.0f);
        }
    }
    // A box keeps crisp edges: its corner normals are the face normals.
    size_t boxFirst = 0;
    while (mesh.positions[mesh.triangles[boxFirst].v[0]].x < 19.0f) {
        boxFirst++;
    }
    Vec3 n = normals[boxFirst * 3];
    EXPECT_NEAR(std::fabs(n.x) + std::fabs(n.y) + std::fabs(n.z), 1.0f, 1e-5f);

    mesh.frames.push_back(mesh.positions);
    mesh.frames.back()[0].x += 1.0f;
    std::vector<uint8_t> bytes = ShapeMeshFile(mesh, 0x40);
    Model model;
    ASSERT_TRUE(LoadBytes(bytes, &model));
    EXPECT_EQ(model.modelFlag, 0x40);
    EXPECT_EQ(ModelFileBytes(model), bytes);
    // Corner normals come back with |x| + |y| + |z| = 1, as the loader keeps them.
    const float* cn = model.frames[0]->faceNormals + 3;
    EXPECT_NEAR(std::fabs(cn[0]) + std::fabs(cn[1]) + std::fabs(cn[2]), 1.0f, 1e-5f);
    // A frame of another vertex count cannot be exported.
    mesh.frames.back().pop_back();
    EXPECT_TRUE(ShapeMeshFile(mesh, 0).empty());
}
