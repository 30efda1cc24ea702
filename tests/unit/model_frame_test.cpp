// Frame building: blends, texture coordinates and refusals.
#include <gtest/gtest.h>

#include <cstring>

#include "resources/mesh.h"
#include "resources/model.h"

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

}  // namespace
