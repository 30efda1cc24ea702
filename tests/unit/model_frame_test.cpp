// Frame building: single frames, blends, texture coordinates and refusals.
#include <gtest/gtest.h>

#include <cstring>

#include "resources/mesh.h"
#include "resources/model.h"
#include "resources/model_shapes.h"

namespace {

// A one-triangle model with the given frames of three positions each.
void MakeTriangleModel(Model& model, const float (*frames)[9], int frameCount, bool textured) {
    model.Clear();
    for (int f = 0; f < frameCount; f++) {
        Mesh* mesh = new Mesh;
        mesh->Allocate(3, 1, textured ? 3 : 0, textured ? 1 : 0);
        memcpy(mesh->vertices, frames[f], sizeof(float) * 9);
        for (int k = 0; k < 3; k++) {
            mesh->faces[k] = static_cast<unsigned short>(k);
            mesh->faceNormals[3 + k * 3 + 1] = 1.0f;  // corner normals (0, 1, 0)
        }
        mesh->faceNormals[3 + 2 * 3 + 0] = 0.5f;  // corner 2: (0.5, 1, 0)
        if (textured) {
            float uv[9] = {0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f, 0.7f, 0.8f, 0.9f};
            memcpy(mesh->texCoords, uv, sizeof(uv));
            mesh->texFaces[0] = 2;
            mesh->texFaces[1] = 0;
            mesh->texFaces[2] = 1;
        }
        mesh->ComputeBounds();
        model.frames[f] = mesh;
    }
    model.frameCount = static_cast<unsigned short>(frameCount);
}

const float kFrames[2][9] = {{0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 0, 0, 3, 0, 0, 0, 1, 0}};

TEST(ModelFrame, BlendMovesPositionsAndTurnsNormalsAndKeepsTextureCoordinates) {
    Model model;
    MakeTriangleModel(model, kFrames, 2, true);
    // Frame 1's corner normals differ from frame 0's: corner k is (1, 0, k).
    for (int k = 0; k < 3; k++) {
        float normal[3] = {1, 0, static_cast<float>(k)};
        memcpy(model.frames[1]->faceNormals + 3 + k * 3, normal, sizeof(normal));
    }
    model.BuildFrame(0, 1, 0.25f);
    ASSERT_EQ(model.frameTriangles, 1u);
    EXPECT_FLOAT_EQ(model.frameVertices[1].position[0], 1.5f);
    EXPECT_FLOAT_EQ(model.frameVertices[2].position[1], 1.0f);
    // A quarter of the way from frame 0's corner normal to frame 1's.
    const float normals[3][3] = {{0.25f, 0.75f, 0}, {0.25f, 0.75f, 0.25f}, {0.625f, 0.75f, 0.5f}};
    for (int k = 0; k < 3; k++) {
        for (int c = 0; c < 3; c++) {
            EXPECT_FLOAT_EQ(model.frameVertices[k].normal[c], normals[k][c]) << "corner " << k;
        }
    }
    // Corner k's texture coordinate is texCoords[texFaces[k]] (u, v only).
    EXPECT_FLOAT_EQ(model.frameVertices[0].texCoord[0], 0.7f);
    EXPECT_FLOAT_EQ(model.frameVertices[0].texCoord[1], 0.8f);
    EXPECT_FLOAT_EQ(model.frameVertices[1].texCoord[0], 0.1f);
    EXPECT_FLOAT_EQ(model.frameVertices[2].texCoord[1], 0.5f);
}

TEST(ModelFrame, FractionOneOfTheSameFrameIsExactlyThatFrame) {
    Model model;
    const float odd[1][9] = {{0.1f, 0.7f, -3.3f, 1e-7f, 12345.678f, 0, -4.5f, 1, 2}};
    MakeTriangleModel(model, odd, 1, false);
    model.BuildFrame(0, 0, 1.0f);
    for (int k = 0; k < 3; k++) {
        EXPECT_EQ(0, memcmp(model.frameVertices[k].position, odd[0] + k * 3, 12)) << k;
        // No texture coordinates: (0, 0).
        EXPECT_EQ(model.frameVertices[k].texCoord[0], 0.0f);
        EXPECT_EQ(model.frameVertices[k].texCoord[1], 0.0f);
    }
}

TEST(ModelFrame, MissingFramesLeaveTheBuiltVerticesAlone) {
    Model model;
    MakeTriangleModel(model, kFrames, 2, false);
    model.BuildFrame(9, 9, 0.0f);
    EXPECT_EQ(model.frameVertices, nullptr);
    EXPECT_EQ(model.frameTriangles, 0u);
    model.BuildFrame(1, 0, 0.0f);
    FrameVertex* built = model.frameVertices;
    ASSERT_NE(built, nullptr);
    FrameVertex copy[3];
    memcpy(copy, built, sizeof(copy));
    model.BuildFrame(0, 7, 0.5f);     // B missing
    model.BuildFrame(-1, 0, 0.5f);    // A missing
    model.BuildFrame(0, 600, -0.5f);  // negative fraction still needs B
    EXPECT_EQ(model.frameVertices, built);
    EXPECT_EQ(0, memcmp(copy, built, sizeof(copy)));
    EXPECT_FLOAT_EQ(built[1].position[0], 3.0f);
}

TEST(ModelFrame, ShapesBuildOutwardFacingTriangles) {
    Model box;
    float lo[3] = {-1, -2, -3}, hi[3] = {1, 2, 3};
    ASSERT_EQ(MakeBoxModel(box, lo, hi, 1.0f), 1);
    ASSERT_EQ(box.frameTriangles, 12u);
    for (unsigned i = 0; i < 12; i++) {
        const FrameVertex* v = box.frameVertices + i * 3;
        float e1[3], e2[3], n[3], centre[3];
        for (int a = 0; a < 3; a++) {
            e1[a] = v[1].position[a] - v[0].position[a];
            e2[a] = v[2].position[a] - v[0].position[a];
            centre[a] = (v[0].position[a] + v[1].position[a] + v[2].position[a]) / 3;
        }
        n[0] = e1[1] * e2[2] - e1[2] * e2[1];
        n[1] = e1[2] * e2[0] - e1[0] * e2[2];
        n[2] = e1[0] * e2[1] - e1[1] * e2[0];
        float outward = n[0] * centre[0] + n[1] * centre[1] + n[2] * centre[2];
        EXPECT_GT(outward, 0.0f) << i;
        // The stored normal agrees with the winding.
        EXPECT_GT(n[0] * v[0].normal[0] + n[1] * v[0].normal[1] + n[2] * v[0].normal[2], 0.0f) << i;
    }
    EXPECT_FLOAT_EQ(box.frames[0]->boundsMin[2], -3);
    EXPECT_FLOAT_EQ(box.frames[0]->boundsMax[1], 2);

    Model grid;
    ASSERT_EQ(MakeGridModel(grid, 0, 5, 0, 10, 3, 0.1f), 1);
    EXPECT_EQ(grid.frameTriangles, 18u);
    EXPECT_FLOAT_EQ(grid.frames[0]->boundsMax[0], 30);
    EXPECT_EQ(MakeGridModel(grid, 0, 0, 0, 1, 300, 1), 0);
}

}  // namespace
