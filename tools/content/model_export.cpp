#include "model_export.h"

#include <cmath>
#include <cstring>
#include <map>
#include <utility>

#include "resources/mesh.h"
#include "resources/model.h"

static void PutVector(float* out, Vec3 v) {
    out[0] = v.x;
    out[1] = v.y;
    out[2] = v.z;
}

// True when dividing by |x| + |y| + |z|, as the loader does on every read, leaves
// the vector exactly as it is.
static bool LoaderStable(Vec3 n) {
    float sum = std::fabs(n.x) + std::fabs(n.y) + std::fabs(n.z);
    return n.x / sum == n.x && n.y / sum == n.y && n.z / sum == n.z;
}

static float StepUlps(float v, int ulps) {
    for (; ulps > 0; ulps--) {
        v = std::nextafter(v, 2.0f);
    }
    for (; ulps < 0; ulps++) {
        v = std::nextafter(v, -2.0f);
    }
    return v;
}

// A corner normal as the loader leaves it: divided by |x| + |y| + |z|. Rounding can
// make a second division move the last bit, so the nearest vector within two units
// in the last place that a division leaves alone is taken; a saved model then reads
// back and saves again to the same bytes.
static Vec3 SumNormalised(Vec3 n) {
    float sum = std::fabs(n.x) + std::fabs(n.y) + std::fabs(n.z);
    if (!(sum > 0.0f)) {
        return V3(0, 1, 0);
    }
    n = V3(n.x / sum, n.y / sum, n.z / sum);
    for (int radius = 0; radius <= 2; radius++) {
        for (int dx = -radius; dx <= radius; dx++) {
            for (int dy = -radius; dy <= radius; dy++) {
                for (int dz = -radius; dz <= radius; dz++) {
                    Vec3 c = V3(StepUlps(n.x, dx), StepUlps(n.y, dy), StepUlps(n.z, dz));
                    if (LoaderStable(c)) {
                        return c;
                    }
                }
            }
        }
    }
    return n;
}

static void CopyTopology(const Mesh& from, Mesh* to) {
    memcpy(to->faces, from.faces, from.faceCount * 6u);
    memcpy(to->faceNormals, from.faceNormals, from.faceCount * 48u);
    memcpy(to->texCoords, from.texCoords, from.texCoordCount * 12u);
    memcpy(to->texFaces, from.texFaces, from.texFaceCount * 6u);
}

bool ExportModel(const ShapeMesh& mesh, unsigned char modelFlag, Model* model) {
    model->Clear();
    size_t vertexCount = mesh.positions.size();
    if (vertexCount == 0 || vertexCount > 65535 || mesh.triangles.size() > 65535 ||
        mesh.frames.size() + 1 > static_cast<size_t>(Model::kMaxFrames)) {
        return false;
    }
    for (const std::vector<Vec3>& frame : mesh.frames) {
        if (frame.size() != vertexCount) {
            return false;
        }
    }
    // Distinct texture coordinates, numbered in order of first use.
    std::map<std::pair<float, float>, int> uvIndex;
    std::vector<std::pair<float, float>> uvs;
    std::vector<int> texFaces(mesh.triangles.size() * 3);
    for (size_t t = 0; t < mesh.triangles.size(); t++) {
        for (int k = 0; k < 3; k++) {
            std::pair<float, float> uv(mesh.triangles[t].uv[k][0], mesh.triangles[t].uv[k][1]);
            auto found = uvIndex.find(uv);
            if (found == uvIndex.end()) {
                found = uvIndex.emplace(uv, static_cast<int>(uvs.size())).first;
                uvs.push_back(uv);
            }
            texFaces[t * 3 + k] = found->second;
        }
    }
    if (uvs.size() > 65535) {
        return false;
    }
    unsigned short faceCount = static_cast<unsigned short>(mesh.triangles.size());
    unsigned short texCount = static_cast<unsigned short>(uvs.size());
    Mesh* first = new Mesh;
    first->Allocate(static_cast<unsigned short>(vertexCount), faceCount, texCount, faceCount);
    for (size_t i = 0; i < vertexCount; i++) {
        PutVector(first->vertices + i * 3, mesh.positions[i]);
    }
    std::vector<Vec3> normals;
    mesh.CornerNormals(&normals);
    for (size_t t = 0; t < mesh.triangles.size(); t++) {
        const ShapeTriangle& tri = mesh.triangles[t];
        Vec3 face = Normalise(Cross(Sub(mesh.positions[tri.v[1]], mesh.positions[tri.v[0]]),
                                    Sub(mesh.positions[tri.v[2]], mesh.positions[tri.v[0]])));
        PutVector(first->faceNormals + t * 12, face);
        for (int k = 0; k < 3; k++) {
            first->faces[t * 3 + k] = static_cast<unsigned short>(tri.v[k]);
            first->texFaces[t * 3 + k] = static_cast<unsigned short>(texFaces[t * 3 + k]);
            PutVector(first->faceNormals + t * 12 + 3 + k * 3, SumNormalised(normals[t * 3 + k]));
        }
    }
    for (size_t i = 0; i < uvs.size(); i++) {
        first->texCoords[i * 3] = uvs[i].first;
        first->texCoords[i * 3 + 1] = uvs[i].second;
    }
    first->ComputeBounds();
    model->frames[0] = first;
    for (size_t f = 0; f < mesh.frames.size(); f++) {
        Mesh* later = new Mesh;
        later->Allocate(first->vertexCount, faceCount, texCount, faceCount);
        CopyTopology(*first, later);
        for (size_t i = 0; i < vertexCount; i++) {
            PutVector(later->vertices + i * 3, mesh.frames[f][i]);
        }
        later->ComputeBounds();
        model->frames[f + 1] = later;
    }
    model->frameCount = static_cast<unsigned short>(mesh.frames.size() + 1);
    model->modelFlag = modelFlag;
    return true;
}

std::vector<uint8_t> ModelFileBytes(const Model& model) {
    std::vector<uint8_t> bytes(model.Size());
    model.Serialise(bytes.data());
    return bytes;
}

std::vector<uint8_t> ShapeMeshFile(const ShapeMesh& mesh, unsigned char modelFlag) {
    Model model;
    if (!ExportModel(mesh, modelFlag, &model)) {
        return std::vector<uint8_t>();
    }
    return ModelFileBytes(model);
}
