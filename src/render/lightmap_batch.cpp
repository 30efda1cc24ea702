#include "render/lightmap_batch.h"

#include <GL/gl.h>

#include <cstring>

#include "app/gl_window.h"
#include "platform/sys_window.h"
#include "resources/lightmap_set.h"

static const int kSourceFloats = 8;
static const unsigned int kUnit0 = 0x84C0;  // GL_TEXTURE0_ARB
static const unsigned int kUnit1 = 0x84C1;  // GL_TEXTURE1_ARB
static const int kStride = LightmapBatch::kArrayFloats * sizeof(float);

LightmapBatch::LightmapBatch()
    : sourceVertices(nullptr),
      sourceCoords(nullptr),
      sourceTriangles(0),
      copyVertices(nullptr),
      copyCoords(nullptr),
      arrays(nullptr),
      vertexCount(0),
      runCount(0) {}

LightmapBatch::~LightmapBatch() {
    Clear();
}

void LightmapBatch::Clear() {
    delete[] copyVertices;
    delete[] copyCoords;
    delete[] arrays;
    sourceVertices = nullptr;
    sourceCoords = nullptr;
    sourceTriangles = 0;
    copyVertices = nullptr;
    copyCoords = nullptr;
    arrays = nullptr;
    vertexCount = 0;
    runCount = 0;
}

// Appends the three vertices of triangle t to out.
static float* AppendTriangle(float* out, const float* vertices, const LightmapVertex* coords,
                             unsigned int t) {
    for (unsigned int k = t * 3; k < t * 3 + 3; k++) {
        const float* source = vertices + k * kSourceFloats;
        out[0] = source[0];
        out[1] = source[1];
        out[2] = source[2];
        out[3] = source[6];
        out[4] = source[7];
        out[5] = coords[k].u;
        out[6] = coords[k].v;
        out += LightmapBatch::kArrayFloats;
    }
    return out;
}

int LightmapBatch::Build(const float* vertices, unsigned int triangleCount, const LightmapVertex* coords) {
    if (!vertices || !coords) {
        Clear();
        return 0;
    }
    // A swaying piece moves its vertices every tick without changing their number: its
    // batch is refilled in the arrays it already has instead of being freed and allocated
    // again each time.
    unsigned int vertexTotal = triangleCount * 3;
    if (!copyVertices || sourceTriangles != triangleCount) {
        Clear();
        copyVertices = new float[vertexTotal * kSourceFloats];
        copyCoords = new LightmapVertex[vertexTotal];
        arrays = new float[vertexTotal * kArrayFloats + 1];
    }
    vertexCount = 0;
    runCount = 0;
    unsigned int perPage[LightmapSet::kMaxPages] = {};
    for (unsigned int t = 0; t < triangleCount; t++) {
        if (coords[t * 3].page < LightmapSet::kNoPage) {
            perPage[coords[t * 3].page]++;
        }
    }
    memcpy(copyVertices, vertices, sizeof(float) * kSourceFloats * vertexTotal);
    memcpy(copyCoords, coords, sizeof(LightmapVertex) * vertexTotal);

    // Pages in ascending order, each run keeping the mesh's own triangle order.
    float* out = arrays;
    for (unsigned int page = 0; page < LightmapSet::kNoPage; page++) {
        if (!perPage[page]) {
            continue;
        }
        LightmapRun& run = runs[runCount++];
        run.page = page;
        run.first = vertexCount;
        run.count = perPage[page] * 3;
        for (unsigned int t = 0; t < triangleCount; t++) {
            if (coords[t * 3].page == page) {
                out = AppendTriangle(out, vertices, coords, t);
            }
        }
        vertexCount += run.count;
    }
    sourceVertices = vertices;
    sourceCoords = coords;
    sourceTriangles = triangleCount;
    return 1;
}

bool LightmapBatch::Matches(const float* vertices, unsigned int triangleCount,
                            const LightmapVertex* coords) const {
    if (!sourceVertices || vertices != sourceVertices || coords != sourceCoords ||
        triangleCount != sourceTriangles) {
        return false;
    }
    unsigned int vertexTotal = triangleCount * 3;
    return memcmp(copyVertices, vertices, sizeof(float) * kSourceFloats * vertexTotal) == 0 &&
           memcmp(copyCoords, coords, sizeof(LightmapVertex) * vertexTotal) == 0;
}

typedef void (*ClientActiveTextureFunc)(unsigned int texture);

static ClientActiveTextureFunc ClientActiveTexture() {
    static ClientActiveTextureFunc function;
    if (!function) {
        function = reinterpret_cast<ClientActiveTextureFunc>(Sys_GetProcAddress("glClientActiveTextureARB"));
    }
    return function;
}

void LightmapBatch::DrawMultitexture(const unsigned int* textures) const {
    ClientActiveTextureFunc clientActive = ClientActiveTexture();
    if (!clientActive) {
        DrawBlended(textures);
        return;
    }
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, kStride, arrays);
    clientActive(kUnit1);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, kStride, arrays + 5);
    clientActive(kUnit0);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, kStride, arrays + 3);

    g_glActiveTextureARB(kUnit1);
    glEnable(GL_TEXTURE_2D);
    for (int i = 0; i < runCount; i++) {
        glBindTexture(GL_TEXTURE_2D, textures[runs[i].page]);
        glDrawArrays(GL_TRIANGLES, runs[i].first, runs[i].count);
    }
    glDisable(GL_TEXTURE_2D);
    g_glActiveTextureARB(kUnit0);

    clientActive(kUnit1);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    clientActive(kUnit0);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
}

void LightmapBatch::DrawBlended(const unsigned int* textures) const {
    GLint base = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &base);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glVertexPointer(3, GL_FLOAT, kStride, arrays);
    for (int i = 0; i < runCount; i++) {
        // A whole run is laid down before it is multiplied; with the depth test the
        // second pass lands on exactly the pixels the first one won, as it does
        // triangle by triangle.
        glBindTexture(GL_TEXTURE_2D, textures[runs[i].page]);
        glTexCoordPointer(2, GL_FLOAT, kStride, arrays + 5);
        glDrawArrays(GL_TRIANGLES, runs[i].first, runs[i].count);
        glEnable(GL_BLEND);
        glBlendFunc(GL_DST_COLOR, GL_ZERO);
        glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(base));
        glTexCoordPointer(2, GL_FLOAT, kStride, arrays + 3);
        glDrawArrays(GL_TRIANGLES, runs[i].first, runs[i].count);
        glDisable(GL_BLEND);
    }
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
}

LightmapBatchCache::LightmapBatchCache() : nextVictim(0) {}

LightmapBatch* LightmapBatchCache::Find(const float* vertices, unsigned int triangleCount,
                                        const LightmapVertex* coords) {
    if (!vertices || !coords) {
        return nullptr;
    }
    int freeSlot = -1;
    for (int i = 0; i < kSlots; i++) {
        LightmapBatch& batch = batches[i];
        if (!batch.sourceVertices) {
            if (freeSlot < 0) {
                freeSlot = i;
            }
            continue;
        }
        if (batch.sourceVertices == vertices && batch.sourceCoords == coords &&
            batch.sourceTriangles == triangleCount) {
            if (!batch.Matches(vertices, triangleCount, coords)) {
                batch.Build(vertices, triangleCount, coords);
            }
            return &batch;
        }
    }
    if (freeSlot < 0) {
        freeSlot = nextVictim;
        nextVictim = (nextVictim + 1) % kSlots;
    }
    batches[freeSlot].Build(vertices, triangleCount, coords);
    return &batches[freeSlot];
}

void LightmapBatchCache::Clear() {
    for (int i = 0; i < kSlots; i++) {
        batches[i].Clear();
    }
    nextVictim = 0;
}
