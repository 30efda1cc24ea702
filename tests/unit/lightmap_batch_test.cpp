// Grouping a lightmapped mesh into page runs, without GL: page order, the
// mesh's own order within a page, triangles without a page left out, the
// interleaved layout, and the cache noticing arrays changed in place.
#include "render/lightmap_batch.h"

#include <gtest/gtest.h>

#include <vector>

#include "resources/lightmap_set.h"

namespace {

struct Mesh {
    std::vector<float> vertices;
    std::vector<LightmapVertex> coords;

    // Triangle number n on page: positions and uvs encode n and the corner.
    void Add(int n, unsigned int page) {
        for (int k = 0; k < 3; k++) {
            const float vertex[8] = {n + 0.1f * k, 0, 0, 0, 0, 1, 100.0f + n, 200.0f + k};
            vertices.insert(vertices.end(), vertex, vertex + 8);
            coords.push_back(LightmapVertex{page, 0.25f * k, 0.5f + n});
        }
    }
    unsigned int Triangles() const { return static_cast<unsigned int>(coords.size() / 3); }
};

TEST(LightmapBatchTest, TrianglesAreGroupedByPageInMeshOrder) {
    Mesh mesh;
    const unsigned int pages[7] = {5, 2, 5, 128, 2, 0, 500};
    for (int n = 0; n < 7; n++) {
        mesh.Add(n, pages[n]);
    }
    LightmapBatch batch;
    ASSERT_EQ(batch.Build(mesh.vertices.data(), mesh.Triangles(), mesh.coords.data()), 1);
    ASSERT_EQ(batch.runCount, 3);
    EXPECT_EQ(batch.runs[0].page, 0u);
    EXPECT_EQ(batch.runs[0].first, 0u);
    EXPECT_EQ(batch.runs[0].count, 3u);
    EXPECT_EQ(batch.runs[1].page, 2u);
    EXPECT_EQ(batch.runs[1].first, 3u);
    EXPECT_EQ(batch.runs[1].count, 6u);
    EXPECT_EQ(batch.runs[2].page, 5u);
    EXPECT_EQ(batch.runs[2].count, 6u);
    EXPECT_EQ(batch.vertexCount, 15u);  // the two triangles without a page are gone

    // Vertex order: triangles 5, 1, 4, 0, 2; each vertex x, y, z, u, v, lightmap u, v.
    const int order[5] = {5, 1, 4, 0, 2};
    for (int t = 0; t < 5; t++) {
        for (int k = 0; k < 3; k++) {
            const float* v = batch.arrays + (t * 3 + k) * LightmapBatch::kArrayFloats;
            int n = order[t];
            EXPECT_FLOAT_EQ(v[0], n + 0.1f * k);
            EXPECT_FLOAT_EQ(v[3], 100.0f + n);
            EXPECT_FLOAT_EQ(v[4], 200.0f + k);
            EXPECT_FLOAT_EQ(v[5], 0.25f * k);
            EXPECT_FLOAT_EQ(v[6], 0.5f + n);
        }
    }
}

TEST(LightmapBatchTest, TheCacheRebuildsWhenTheArraysChange) {
    Mesh mesh;
    for (int n = 0; n < 4; n++) {
        mesh.Add(n, 3);
    }
    LightmapBatchCache* cache = new LightmapBatchCache;
    LightmapBatch* first = cache->Find(mesh.vertices.data(), 4, mesh.coords.data());
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->runCount, 1);
    EXPECT_EQ(cache->Find(mesh.vertices.data(), 4, mesh.coords.data()), first);

    // Baked again in place: a new page for the second triangle.
    for (int k = 3; k < 6; k++) {
        mesh.coords[k].page = 7;
    }
    LightmapBatch* again = cache->Find(mesh.vertices.data(), 4, mesh.coords.data());
    EXPECT_EQ(again, first);
    ASSERT_EQ(again->runCount, 2);
    EXPECT_EQ(again->runs[1].page, 7u);

    // A moved vertex is noticed too.
    mesh.vertices[0] = 42.0f;
    EXPECT_FLOAT_EQ(cache->Find(mesh.vertices.data(), 4, mesh.coords.data())->arrays[0], 42.0f);

    // Fewer triangles from the same arrays is another mesh.
    LightmapBatch* shorter = cache->Find(mesh.vertices.data(), 2, mesh.coords.data());
    EXPECT_NE(shorter, first);
    EXPECT_EQ(shorter->vertexCount, 6u);
    EXPECT_EQ(cache->Find(nullptr, 2, mesh.coords.data()), nullptr);
    delete cache;
}

}  // namespace
