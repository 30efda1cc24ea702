// The generated models, read back through the engine's model loader: frame
// counts and shared topology, the lamp's glow, and geometry that faces
// outwards.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "character_models.h"
#include "model_export.h"
#include "prop_models.h"
#include "resources/mesh.h"
#include "resources/model.h"

// Parses a generated model the way the game loads it.
static bool LoadMesh(const ShapeMesh& mesh, Model* model) {
    std::vector<uint8_t> bytes = ShapeMeshFile(mesh, 0);
    return !bytes.empty() &&
           model->Parse(bytes.data(), static_cast<unsigned int>(bytes.size())) == bytes.size();
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
                 {"enemy02", MakeEnemyMesh(2), 4, 512}, {"enemy05", MakeEnemyMesh(5), 4, 512},
                 {"enemy06", MakeEnemyMesh(6), 4, 512}, {"collapse", MakeCollapseMesh(), 9, 512}};
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

// The glow stays on the lamp through the delver's every frame: some vertex of the delver lies
// within 2.5 of its centre.
TEST(ContentModels, LampGlowFollowsTheLamp) {
    Model delver, glow;
    ASSERT_TRUE(LoadMesh(MakeDelverMesh(), &delver));
    ASSERT_TRUE(LoadMesh(MakeLampGlowMesh(), &glow));
    for (int f = 0; f < 33; f++) {
        const Mesh *g = glow.frames[f], *d = delver.frames[f];
        float best = 1e9f;
        for (int v = 0; v < d->vertexCount; v++) {
            const float* p = d->vertices + v * 3;
            best = std::min(best, std::hypot(p[0] - g->centre[0], p[1] - g->centre[1], p[2] - g->centre[2]));
        }
        EXPECT_LT(best, 2.5f) << "frame " << f;
    }
}

TEST(ContentModels, ShapesFaceOutwards) {
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
            EXPECT_GT(Dot(normals[t * 3 + k], Sub(mesh.positions[tri.v[k]], centre)), 0.0f);
        }
    }
}
