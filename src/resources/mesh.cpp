#include "resources/mesh.h"

#include <cmath>
#include <cstdlib>
#include <cstring>

#include "platform/sys_files.h"
#include "resources/byte_stream.h"
#include "resources/resource_manager.h"

Mesh::Mesh()
    : vertexCount(0),
      faceCount(0),
      texCoordCount(0),
      texFaceCount(0),
      vertices(nullptr),
      faces(nullptr),
      faceNormals(nullptr),
      texCoords(nullptr),
      texFaces(nullptr) {
    Clear();
}

Mesh::~Mesh() {
    Clear();
}

void Mesh::Clear() {
    free(vertices);
    free(faces);
    free(faceNormals);
    free(texCoords);
    free(texFaces);
    vertices = nullptr;
    faces = nullptr;
    faceNormals = nullptr;
    texCoords = nullptr;
    texFaces = nullptr;
    vertexCount = faceCount = texCoordCount = texFaceCount = 0;
    for (int i = 0; i < 3; i++) {
        boundsMin[i] = boundsMax[i] = centre[i] = 0.0f;
    }
    radius = 0.0f;
}

void Mesh::FromFile(const float* file, float* memory) {
    float p = file[0], q = file[1], r = file[2];
    memory[0] = p;
    memory[1] = r;
    memory[2] = -q;
}

void Mesh::ToFile(const float* memory, float* file) {
    float x = memory[0], y = memory[1], z = memory[2];
    file[0] = x;
    file[1] = -z;
    file[2] = y;
}

// Allocates count bytes, never returning null for a zero count, so "array set"
// and "count" never disagree.
static void* AllocBytes(unsigned int count) {
    return malloc(count ? count : 1);
}

void Mesh::Allocate(unsigned short newVertexCount, unsigned short newFaceCount,
                    unsigned short newTexCoordCount, unsigned short newTexFaceCount) {
    Clear();
    vertexCount = newVertexCount;
    faceCount = newFaceCount;
    texCoordCount = newTexCoordCount;
    texFaceCount = newTexFaceCount;
    vertices = static_cast<float*>(calloc(vertexCount * 3u + 1, sizeof(float)));
    faces = static_cast<unsigned short*>(calloc(faceCount * 3u + 1, sizeof(unsigned short)));
    faceNormals = static_cast<float*>(calloc(faceCount * 12u + 1, sizeof(float)));
    texCoords = static_cast<float*>(calloc(texCoordCount * 3u + 1, sizeof(float)));
    texFaces = static_cast<unsigned short*>(calloc(texFaceCount * 3u + 1, sizeof(unsigned short)));
}

static void ReadVector(ByteReader& reader, float* memory) {
    float file[3];
    file[0] = reader.F32();
    file[1] = reader.F32();
    file[2] = reader.F32();
    Mesh::FromFile(file, memory);
}

static void ReadIndices(ByteReader& reader, unsigned short* out, unsigned int count) {
    for (unsigned int i = 0; i < count; i++) {
        out[i] = reader.U16();
    }
}

// The highest index in a list must stay below the count it indexes.
static int IndicesBelow(const unsigned short* indices, unsigned int count, unsigned int limit) {
    for (unsigned int i = 0; i < count; i++) {
        if (indices[i] >= limit) {
            return 0;
        }
    }
    return 1;
}

int Mesh::CopyTopology(const Mesh* first) {
    if (vertexCount != first->vertexCount) {
        // A frame that does not match frame 0 keeps its positions but has no triangles.
        return 1;
    }
    faceCount = first->faceCount;
    texCoordCount = first->texCoordCount;
    texFaceCount = first->texFaceCount;
    faces = static_cast<unsigned short*>(AllocBytes(faceCount * 6u));
    faceNormals = static_cast<float*>(AllocBytes(faceCount * 48u));
    texCoords = static_cast<float*>(AllocBytes(texCoordCount * 12u));
    texFaces = static_cast<unsigned short*>(AllocBytes(texFaceCount * 6u));
    if (first->faces) {
        memcpy(faces, first->faces, faceCount * 6u);
        memcpy(faceNormals, first->faceNormals, faceCount * 48u);
    }
    if (first->texCoords) {
        memcpy(texCoords, first->texCoords, texCoordCount * 12u);
    }
    if (first->texFaces) {
        memcpy(texFaces, first->texFaces, texFaceCount * 6u);
    }
    return 1;
}

int Mesh::ReadTopology(ByteReader& reader) {
    faceCount = reader.U16();
    if (!reader.Need(faceCount * 6u)) {
        return 0;
    }
    faces = static_cast<unsigned short*>(AllocBytes(faceCount * 6u));
    ReadIndices(reader, faces, faceCount * 3u);

    texCoordCount = reader.U16();
    if (!reader.Need(texCoordCount * 12u)) {
        return 0;
    }
    texCoords = static_cast<float*>(AllocBytes(texCoordCount * 12u));
    for (unsigned int i = 0; i < texCoordCount * 3u; i++) {
        texCoords[i] = reader.F32();
    }

    texFaceCount = reader.U16();
    if (!reader.Need(texFaceCount * 6u)) {
        return 0;
    }
    texFaces = static_cast<unsigned short*>(AllocBytes(texFaceCount * 6u));
    ReadIndices(reader, texFaces, texFaceCount * 3u);

    if (!reader.Need(faceCount * 48u)) {
        return 0;
    }
    faceNormals = static_cast<float*>(AllocBytes(faceCount * 48u));
    for (unsigned int i = 0; i < faceCount; i++) {
        float* four = faceNormals + i * 12;
        for (int k = 0; k < 4; k++) {
            ReadVector(reader, four + k * 3);
        }
        // Corner normals are scaled so that |x| + |y| + |z| = 1; the face vector is kept as stored.
        for (int k = 1; k < 4; k++) {
            float* n = four + k * 3;
            float sum = fabsf(n[0]) + fabsf(n[1]) + fabsf(n[2]);
            n[0] /= sum;
            n[1] /= sum;
            n[2] /= sum;
        }
    }

    // Frame building reads vertices and texture coordinates through these indices, so a
    // file whose indices point past its own arrays is refused rather than trusted.
    if (!IndicesBelow(faces, faceCount * 3u, vertexCount)) {
        return 0;
    }
    if (texCoordCount > 0 &&
        (texFaceCount < faceCount || !IndicesBelow(texFaces, texFaceCount * 3u, texCoordCount))) {
        return 0;
    }
    return 1;
}

void Mesh::ComputeBounds() {
    if (vertexCount == 0) {
        return;  // an empty frame keeps zero bounds
    }
    for (int a = 0; a < 3; a++) {
        boundsMin[a] = boundsMax[a] = vertices[a];
    }
    for (unsigned int i = 1; i < vertexCount; i++) {
        for (int a = 0; a < 3; a++) {
            float value = vertices[i * 3 + a];
            if (value < boundsMin[a]) {
                boundsMin[a] = value;
            }
            if (value > boundsMax[a]) {
                boundsMax[a] = value;
            }
        }
    }
    float half[3];
    for (int a = 0; a < 3; a++) {
        centre[a] = (boundsMax[a] - boundsMin[a]) * 0.5f + boundsMin[a];
        half[a] = boundsMax[a] - centre[a];
    }
    if (half[0] > half[1] && half[0] > half[2]) {
        radius = half[0];
    } else if (half[1] > half[0] && half[1] > half[2]) {
        radius = half[1];
    } else {
        radius = half[2];
    }
}

unsigned int Mesh::Parse(const unsigned char* bytes, unsigned int length, const Mesh* firstFrame) {
    if (!bytes || length < 4 || memcmp(bytes, "VMSH", 4) != 0) {
        return 0;
    }
    Clear();
    ByteReader reader(bytes, length);
    reader.Skip(8);
    reader.Skip(reader.U16());
    vertexCount = reader.U16();
    if (!reader.Need(vertexCount * 12u)) {
        Clear();
        return 0;
    }
    vertices = static_cast<float*>(AllocBytes(vertexCount * 12u));
    for (unsigned int i = 0; i < vertexCount; i++) {
        ReadVector(reader, vertices + i * 3);
    }
    int ok = firstFrame ? CopyTopology(firstFrame) : ReadTopology(reader);
    if (!ok || reader.failed) {
        Clear();
        return 0;
    }
    ComputeBounds();
    return reader.position;
}

int Mesh::Load(ResourceManager* resources, const char* name, const Mesh* firstFrame) {
    if (!resources) {
        return 0;
    }
    const unsigned char* bytes = resources->Open(name);
    if (!bytes) {
        return 0;
    }
    return Parse(bytes, resources->bufferSize, firstFrame) != 0;
}

unsigned int Mesh::Size(int positionsOnly) const {
    unsigned int size = 12 + 12u * vertexCount;
    if (!positionsOnly) {
        size += 2 + 6u * faceCount + 2 + 12u * texCoordCount + 2 + 6u * texFaceCount + 48u * faceCount;
    }
    return size;
}

static void WriteVector(ByteWriter& writer, const float* memory) {
    float file[3];
    Mesh::ToFile(memory, file);
    writer.F32(file[0]);
    writer.F32(file[1]);
    writer.F32(file[2]);
}

unsigned int Mesh::Serialise(unsigned char* out, int positionsOnly) const {
    ByteWriter writer(out);
    writer.Tag("VMSH");
    writer.U32(Size(positionsOnly));
    writer.U16(0);
    writer.U16(vertexCount);
    for (unsigned int i = 0; i < vertexCount; i++) {
        WriteVector(writer, vertices + i * 3);
    }
    if (positionsOnly) {
        return writer.position;
    }
    writer.U16(faceCount);
    for (unsigned int i = 0; i < faceCount * 3u; i++) {
        writer.U16(faces[i]);
    }
    writer.U16(texCoordCount);
    for (unsigned int i = 0; i < texCoordCount * 3u; i++) {
        writer.F32(texCoords[i]);
    }
    writer.U16(texFaceCount);
    for (unsigned int i = 0; i < texFaceCount * 3u; i++) {
        writer.U16(texFaces[i]);
    }
    for (unsigned int i = 0; i < faceCount * 4u; i++) {
        WriteVector(writer, faceNormals + i * 3);
    }
    return writer.position;
}

int Mesh::Save(const char* path, int positionsOnly) const {
    unsigned int size = Size(positionsOnly);
    unsigned char* bytes = static_cast<unsigned char*>(malloc(size));
    Serialise(bytes, positionsOnly);
    int ok = Sys_WriteFileAtomic(path, bytes, size);
    free(bytes);
    return ok;
}
