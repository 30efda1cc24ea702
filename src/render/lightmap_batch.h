// Lightmapped meshes as vertex arrays grouped by lightmap page. A batch copies
// a mesh's triangles once, stably sorted by page (triangles without a page are
// left out), into one interleaved array of position, base texture coordinate
// and lightmap coordinate, and remembers where each page's run starts. Drawing
// then binds each page once and submits its run with one glDrawArrays, on two
// texture units or in the same two blended passes as the literal path.
//
// GlWindow::DrawLightmappedMesh takes plain pointers, so the batches live in a
// cache keyed by the mesh's arrays. A batch keeps a copy of the arrays it was
// built from and is used only while they still hold exactly those bytes: a
// location freed and loaded again at the same addresses, or lightmaps baked
// again in place, rebuild their batches instead of drawing stale ones.
#pragma once

struct LightmapVertex;

// One page's run of vertices inside a batch.
struct LightmapRun {
    unsigned int page;
    unsigned int first;  // first vertex
    unsigned int count;  // vertices
};

class LightmapBatch {
public:
    static const int kArrayFloats = 7;  // x, y, z, u, v, lightmap u, lightmap v

    const float* sourceVertices;  // the arrays the batch was built from (the key)
    const LightmapVertex* sourceCoords;
    unsigned int sourceTriangles;
    float* copyVertices;  // their bytes at build time
    LightmapVertex* copyCoords;
    float* arrays;             // kArrayFloats per vertex, grouped by page
    unsigned int vertexCount;  // vertices in arrays
    int runCount;
    LightmapRun runs[128];

    LightmapBatch();
    ~LightmapBatch();
    LightmapBatch(const LightmapBatch&) = delete;
    LightmapBatch& operator=(const LightmapBatch&) = delete;

    // Frees everything; the batch matches nothing.
    void Clear();
    // Groups the triangles of a mesh by page; 1, or 0 for null arrays.
    int Build(const float* vertices, unsigned int triangleCount, const LightmapVertex* coords);
    // True when built from these arrays and their contents are unchanged since.
    bool Matches(const float* vertices, unsigned int triangleCount, const LightmapVertex* coords) const;
    // Draws with the page on unit 1 through client arrays on both units.
    void DrawMultitexture(const unsigned int* textures) const;
    // Draws each run twice: the page, then the bound base texture blended over it.
    void DrawBlended(const unsigned int* textures) const;
};

class LightmapBatchCache {
public:
    static const int kSlots = 512;  // one per location piece

    LightmapBatch batches[kSlots];
    int nextVictim;  // slot reused when the cache is full

    LightmapBatchCache();

    // The batch for these arrays, built now when missing or stale; null for null arrays.
    LightmapBatch* Find(const float* vertices, unsigned int triangleCount, const LightmapVertex* coords);
    // Frees every batch.
    void Clear();
};

extern LightmapBatchCache g_lightmapBatches;
