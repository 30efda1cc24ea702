// Frame blending: the one place a model's frames become drawable vertices.
#include <cstdlib>

#include "resources/mesh.h"
#include "resources/model.h"

// Grows frameVertices to hold triangles; content keeps one triangle count per model,
// so after the first build this never allocates again.
static FrameVertex* EnsureRoom(Model& model, unsigned int triangles) {
    if (!model.frameVertices || triangles > model.frameCapacity) {
        free(model.frameVertices);
        unsigned int count = triangles ? triangles * 3 : 1;
        model.frameVertices = static_cast<FrameVertex*>(calloc(count, sizeof(FrameVertex)));
        model.frameCapacity = triangles;
    }
    return model.frameVertices;
}

static const Mesh* FrameAt(const Model& model, int index) {
    if (index < 0 || index >= Model::kMaxFrames) {
        return nullptr;
    }
    return model.frames[index];
}

void Model::BuildFrame(int a, int b, float t) {
    const Mesh* frameA = FrameAt(*this, a);
    const Mesh* frameB = t != 0.0f ? FrameAt(*this, b) : nullptr;
    if (!frameA || (t != 0.0f && !frameB)) {
        return;
    }
    // A blend reads frame B through frame A's indices and triangles; a frame B with fewer
    // positions or triangles than that cannot be blended, and the model stays as it was.
    if (frameB && (frameB->vertexCount < frameA->vertexCount || frameB->faceCount < frameA->faceCount)) {
        return;
    }
    frameTriangles = frameA->faceCount;
    FrameVertex* out = EnsureRoom(*this, frameTriangles);
    int textured = frameA->texCoordCount >= 1;
    for (unsigned int i = 0; i < frameA->faceCount; i++) {
        for (int k = 0; k < 3; k++) {
            FrameVertex& vertex = out[i * 3 + k];
            unsigned int v = frameA->faces[i * 3 + k];
            const float* posA = frameA->vertices + v * 3;
            const float* normalA = frameA->faceNormals + i * 12 + (k + 1) * 3;
            if (!frameB) {
                for (int c = 0; c < 3; c++) {
                    vertex.position[c] = posA[c];
                    vertex.normal[c] = normalA[c];
                }
            } else {
                const float* posB = frameB->vertices + v * 3;
                const float* normalB = frameB->faceNormals + i * 12 + (k + 1) * 3;
                for (int c = 0; c < 3; c++) {
                    vertex.position[c] = (posB[c] - posA[c]) * t + posA[c];
                    vertex.normal[c] = (normalB[c] - normalA[c]) * t + normalA[c];
                }
            }
            if (textured) {
                const float* uv = frameA->texCoords + frameA->texFaces[i * 3 + k] * 3;
                vertex.texCoord[0] = uv[0];
                vertex.texCoord[1] = uv[1];
            } else {
                vertex.texCoord[0] = 0.0f;
                vertex.texCoord[1] = 0.0f;
            }
        }
    }
}
