// Model and mesh files byte for byte: the axis turn, normal scaling, bounds,
// frames after the first, and refusal of bad bytes.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "resources/mesh.h"
#include "resources/model.h"

namespace {

// Builds little-endian file bytes by hand, independent of the engine's writer.
struct Bytes {
    std::vector<unsigned char> data;
    void Tag(const char* t) { data.insert(data.end(), t, t + 4); }
    void U8(unsigned v) { data.push_back(static_cast<unsigned char>(v)); }
    void U16(unsigned v) {
        U8(v & 0xFF);
        U8(v >> 8);
    }
    void U32(unsigned v) {
        U16(v & 0xFFFF);
        U16(v >> 16);
    }
    void F32(float f) {
        unsigned v;
        memcpy(&v, &f, 4);
        U32(v);
    }
    void Vec(float a, float b, float c) {
        F32(a);
        F32(b);
        F32(c);
    }
};

// One full mesh block: a single triangle, three texture coordinates; the file's own axes.
Bytes OneTriangleBlock(unsigned labelLength, float normalZ) {
    Bytes b;
    b.Tag("VMSH");
    b.U32(0);  // size is not read
    b.U16(labelLength);
    for (unsigned i = 0; i < labelLength; i++) {
        b.U8('x');
    }
    b.U16(3);
    b.Vec(1, 2, 3);
    b.Vec(4, 5, 6);
    b.Vec(-1, -2, 7);
    b.U16(1);
    b.U16(0);
    b.U16(1);
    b.U16(2);
    b.U16(3);
    b.Vec(0.25f, 0.5f, 0);
    b.Vec(0.75f, 0.5f, 0);
    b.Vec(0.5f, 1, 0);
    b.U16(1);
    b.U16(2);
    b.U16(1);
    b.U16(0);
    b.Vec(9, 9, 9);                                          // face vector, not rescaled
    b.Vec(0, 0, normalZ);                                    // corner 0
    b.Vec(1, 1, 0);                                          // corner 1
    b.Vec(0, -0.5f, 0.5f);                                   // corner 2
    return b;
}

Bytes ModelHeader(unsigned frames, unsigned flag) {
    Bytes b;
    b.Tag("VMDL");
    b.U32(0);
    b.U16(frames);
    b.U8(flag);
    return b;
}

std::vector<unsigned char> Serialised(const Model& model) {
    std::vector<unsigned char> out(model.Size());
    EXPECT_EQ(model.Serialise(out.data()), out.size());
    return out;
}

std::vector<float> Floats(const float* values, int count) {
    return std::vector<float>(values, values + count);
}

// The block's label (five bytes here) is skipped. File (1, 2, 3) is memory (1, 3, -2); corner
// normal (0, 0, 2) loads as (0, 1, 0) and (1, 1, 0) as (0.5, 0, -0.5); the face vector is turned
// but keeps its length. Bounds and centre follow, and the radius is the largest half extent.
TEST(MeshFormat, FullBlockTurnsAxesAndScalesCornerNormals) {
    Bytes b = OneTriangleBlock(5, 2.0f);
    Mesh mesh;
    ASSERT_EQ(mesh.Parse(b.data.data(), b.data.size(), nullptr), b.data.size());
    ASSERT_EQ(mesh.vertexCount, 3);
    EXPECT_EQ(Floats(mesh.vertices, 9), (std::vector<float>{1, 3, -2, 4, 6, -5, -1, 7, 2}));
    EXPECT_EQ(Floats(mesh.faceNormals, 9), (std::vector<float>{9, 9, -9, 0, 1, 0, 0.5f, 0, -0.5f}));
    EXPECT_EQ(mesh.texFaces[0], 2);
    EXPECT_FLOAT_EQ(mesh.texCoords[3], 0.75f);
    EXPECT_EQ(Floats(mesh.boundsMin, 3), (std::vector<float>{-1, 3, -5}));
    EXPECT_EQ(Floats(mesh.boundsMax, 3), (std::vector<float>{4, 7, 2}));
    EXPECT_EQ(Floats(mesh.centre, 3), (std::vector<float>{1.5f, 5, -1.5f}));
    EXPECT_FLOAT_EQ(mesh.radius, 3.5f);  // half extents 2.5, 2, 3.5
}

TEST(ModelFormat, RoundTripIsByteForByteAndPositionsGoBackToFileAxes) {
    Bytes file = ModelHeader(2, 0x13);
    Bytes frame0 = OneTriangleBlock(0, 1.0f);
    file.data.insert(file.data.end(), frame0.data.begin(), frame0.data.end());
    Bytes frame1;
    frame1.Tag("VMSH");
    frame1.U32(0);
    frame1.U16(0);
    frame1.U16(3);
    frame1.Vec(10, 20, 30);
    frame1.Vec(40, 50, 60);
    frame1.Vec(70, 80, 90);
    file.data.insert(file.data.end(), frame1.data.begin(), frame1.data.end());

    Model model;
    ASSERT_EQ(model.Parse(file.data.data(), file.data.size()), file.data.size());
    ASSERT_EQ(model.frameCount, 2);
    EXPECT_EQ(model.modelFlag, 0x13);
    // The later frame shares frame 0's triangles through its own copies.
    ASSERT_EQ(model.frames[1]->faceCount, 1);
    EXPECT_NE(model.frames[1]->faces, model.frames[0]->faces);
    EXPECT_EQ(model.frames[1]->faces[2], 2);

    std::vector<unsigned char> out = Serialised(model);
    ASSERT_EQ(out.size(), file.data.size());
    unsigned declared = out[4] | out[5] << 8 | out[6] << 16;
    EXPECT_EQ(declared, out.size());
    // Everything except the size fields (ours are zero) and corner normal 1, which was
    // (1, 1, 0) in the file and is written as held, (0.5, 0.5, 0).
    std::vector<unsigned char> expected = file.data;
    memcpy(&expected[4], &out[4], 4);
    memcpy(&expected[11 + 4], &out[11 + 4], 4);
    size_t frame1At = 11 + frame0.data.size();
    memcpy(&expected[frame1At + 4], &out[frame1At + 4], 4);
    size_t normalsAt = 11 + frame0.data.size() - 48;
    float half[3] = {0.5f, 0.5f, 0.0f};
    memcpy(&expected[normalsAt + 24], half, 12);
    EXPECT_EQ(out, expected);
}

TEST(ModelFormat, LaterFrameWithOtherVertexCountHasNoTriangles) {
    Bytes file = ModelHeader(2, 0);
    Bytes frame0 = OneTriangleBlock(0, 1.0f);
    file.data.insert(file.data.end(), frame0.data.begin(), frame0.data.end());
    Bytes frame1;
    frame1.Tag("VMSH");
    frame1.U32(0);
    frame1.U16(0);
    frame1.U16(1);
    frame1.Vec(1, 1, 1);
    file.data.insert(file.data.end(), frame1.data.begin(), frame1.data.end());
    Model model;
    ASSERT_EQ(model.Parse(file.data.data(), file.data.size()), file.data.size());
    EXPECT_EQ(model.frames[1]->vertexCount, 1);
    EXPECT_EQ(model.frames[1]->faceCount, 0);
    EXPECT_EQ(model.frames[1]->texCoordCount, 0);
    // Blending towards it is refused instead of reading past its one position.
    model.BuildFrame(0, 0, 0.0f);
    FrameVertex before = model.frameVertices[1];
    model.BuildFrame(0, 1, 0.5f);
    EXPECT_EQ(0, memcmp(&before, &model.frameVertices[1], sizeof(before)));
}

TEST(ModelFormat, BadBytesFailCleanly) {
    Bytes file = ModelHeader(1, 0);
    Bytes frame0 = OneTriangleBlock(0, 1.0f);
    file.data.insert(file.data.end(), frame0.data.begin(), frame0.data.end());
    Model model;
    // Every truncation fails and leaves no frames behind.
    for (size_t cut = 0; cut < file.data.size(); cut++) {
        EXPECT_EQ(model.Parse(file.data.data(), cut), 0u) << cut;
        EXPECT_EQ(model.frameCount, 0) << cut;
    }
    // Wrong magic.
    std::vector<unsigned char> wrong = file.data;
    wrong[0] = 'X';
    EXPECT_EQ(model.Parse(wrong.data(), wrong.size()), 0u);
    // A triangle index past the vertex count.
    std::vector<unsigned char> badIndex = file.data;
    badIndex[11 + 12 + 36 + 2 + 4] = 3;
    EXPECT_EQ(model.Parse(badIndex.data(), badIndex.size()), 0u);
    // A texture index past the texture coordinates.
    std::vector<unsigned char> badTex = file.data;
    badTex[11 + 12 + 36 + 8 + 2 + 36 + 2] = 7;
    EXPECT_EQ(model.Parse(badTex.data(), badTex.size()), 0u);
    // More frames than the table holds.
    Bytes tooMany = ModelHeader(513, 0);
    for (int i = 0; i < 513; i++) {
        tooMany.data.insert(tooMany.data.end(), frame0.data.begin(), frame0.data.end());
    }
    EXPECT_EQ(model.Parse(tooMany.data.data(), tooMany.data.size()), 0u);
    EXPECT_EQ(model.frameCount, 0);
    // A bad second frame keeps the first and counts only it.
    Bytes second = ModelHeader(2, 0);
    second.data.insert(second.data.end(), frame0.data.begin(), frame0.data.end());
    second.Tag("VMSX");
    EXPECT_EQ(model.Parse(second.data.data(), second.data.size()), 0u);
    EXPECT_EQ(model.frameCount, 1);
    EXPECT_NE(model.frames[0], nullptr);
    EXPECT_EQ(model.frames[1], nullptr);
}

}  // namespace
