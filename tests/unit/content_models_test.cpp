// The generated models, read back through the engine's model loader: frame
// counts and shared topology, the keyboard's vertex layout under the menu's
// key highlights, sizes in game units, and geometry that faces outwards.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>

#include "asset_list.h"
#include "character_models.h"
#include "content_build.h"
#include "interface_textures.h"
#include "keyboard_layout.h"
#include "model_export.h"
#include "prop_models.h"
#include "resources/flare_list.h"
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
    // The two enemy kinds are different creatures, not one model twice.
    EXPECT_NE(MakeEnemyMesh(1).positions.size(), MakeEnemyMesh(2).positions.size());
}

TEST(ContentModels, DelverIsAboutFortyUnitsTallAndItsMotionReads) {
    Model model;
    ASSERT_TRUE(LoadMesh(MakeDelverMesh(), &model));
    const Mesh* stand = model.frames[0];
    EXPECT_NEAR(stand->boundsMin[1], 0.0f, 1.0f);
    EXPECT_GT(stand->boundsMax[1], 36.0f);
    EXPECT_LT(stand->boundsMax[1], 48.0f);
    // Standing frames barely move; running frames move the legs a lot; the tuck in
    // the air (frame 28) is shorter than standing.
    EXPECT_LT(MaxDistance(model.frames[0], model.frames[3]), 4.0f);
    EXPECT_GT(MaxDistance(model.frames[12], model.frames[17]), 6.0f);
    EXPECT_LT(model.frames[28]->boundsMax[1] - model.frames[28]->boundsMin[1],
              stand->boundsMax[1] - stand->boundsMin[1] - 2.0f);
    // The run loop closes: its last frame leads back toward its first.
    EXPECT_LT(MaxDistance(model.frames[22], model.frames[12]),
              MaxDistance(model.frames[17], model.frames[12]));
}

TEST(ContentModels, LampGlowFollowsTheLampInEveryFrame) {
    Model delver, glow;
    ASSERT_TRUE(LoadMesh(MakeDelverMesh(), &delver));
    ASSERT_TRUE(LoadMesh(MakeLampGlowMesh(), &glow));
    for (int f = 0; f < 33; f++) {
        // The glow's centre stays within a few units of the character's lowest hand-held
        // point's neighbourhood: compare with the delver frame's right-hand side.
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

// Canvas position (800 x 600) of a keyboard model point, drawn at (-0.1, -1.6, -19)
// with a 60 degree, 4:3 perspective.
static void Project(const float* p, float* cx, float* cy) {
    float ex = p[0] - 0.1f, ey = p[1] - 1.6f, ez = p[2] - 19.0f;
    float t = std::tan(30.0f * 3.14159265f / 180.0f);
    *cx = 400.0f + 400.0f * ex / (-ez * t * 4.0f / 3.0f);
    *cy = 300.0f - 300.0f * ey / (-ez * t);
}

TEST(ContentModels, KeyboardHasTheMenusVertexLayoutAndRestHeights) {
    Model model;
    ASSERT_TRUE(LoadMesh(MakeKeyboardMesh(), &model));
    model.BuildFrame(0, 0, 0.0f);
    ASSERT_EQ(model.frameTriangles * 3, 117u + 24u * 32u);
    for (int k = 0; k < 32; k++) {
        const PianoKey* key = PianoKeyForNumber(k);
        ASSERT_NE(key, nullptr);
        float sx = 0, sy = 0;
        for (int v = 0; v < 24; v++) {
            const FrameVertex& fv = model.frameVertices[117 + 24 * k + v];
            ASSERT_FLOAT_EQ(fv.position[2], key->restZ) << "key " << k;
            // Flat plates face the viewer.
            EXPECT_GT(fv.normal[2], 0.9f);
            float cx, cy;
            Project(fv.position, &cx, &cy);
            sx += cx;
            sy += cy;
        }
        sx /= 24;
        sy /= 24;
        if (!key->black) {
            // A white key lies under the highlight the menu draws for its state index.
            int i = key->stateIndex;
            EXPECT_GT(sx, 164.0f + 32 * i) << "white key " << i;
            EXPECT_LT(sx, 192.0f + 32 * i) << "white key " << i;
            EXPECT_GT(sy, 395.0f);
            EXPECT_LT(sy, 460.0f);
        } else {
            // A black key sits on the gap right of its white neighbour, in the upper half.
            EXPECT_NEAR(sx, 194.0f + 32 * key->whitePosition, 2.0f) << "black key " << key->stateIndex;
            EXPECT_LT(sy, 430.0f);
        }
    }
    // The body stays behind a pressed key wherever keys are.
    for (int v = 0; v < 117; v++) {
        const FrameVertex& fv = model.frameVertices[v];
        float cx, cy;
        Project(fv.position, &cx, &cy);
        if (cx > 166 && cx < 770 && cy > 397 && cy < 458) {
            EXPECT_LT(fv.position[2], 0.297f) << "body vertex " << v;
        }
    }
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

TEST(ContentModels, FlareListNamesPicturesTheBuildMakes) {
    AssetList list;
    GenerateEffectTextures(&list);
    GenerateFlareList(&list);
    const Asset* vfl = list.Find("test.vfl");
    ASSERT_NE(vfl, nullptr);
    FlareList flares;
    ASSERT_EQ(flares.Parse(vfl->bytes.data(), static_cast<unsigned int>(vfl->bytes.size())), 1);
    EXPECT_GE(flares.count, 4u);
    for (unsigned int i = 0; i < flares.count; i++) {
        EXPECT_NE(list.Find(flares.elements[i]->name), nullptr) << flares.elements[i]->name;
        EXPECT_GT(flares.elements[i]->halfSize, 0.0f);
    }
}
