#include "resources/model.h"

#include <cstdlib>
#include <cstring>

#include "platform/sys_files.h"
#include "resources/byte_stream.h"
#include "resources/mesh.h"
#include "resources/resource_manager.h"

static const unsigned int kModelHeaderSize = 11;

Model::Model() : frameCount(0), frameVertices(nullptr), frameTriangles(0), modelFlag(0), frameCapacity(0) {
    for (int i = 0; i < kMaxFrames; i++) {
        frames[i] = nullptr;
    }
    Clear();
}

Model::~Model() {
    Clear();
}

void Model::Clear() {
    for (int i = 0; i < kMaxFrames; i++) {
        delete frames[i];
        frames[i] = nullptr;
    }
    free(frameVertices);
    frameVertices = nullptr;
    frameTriangles = 0;
    frameCapacity = 0;
    frameCount = 0;
    modelFlag = 0;
}

unsigned int Model::Parse(const unsigned char* bytes, unsigned int length) {
    if (!bytes || length < 4 || memcmp(bytes, "VMDL", 4) != 0) {
        return 0;
    }
    Clear();
    if (length < kModelHeaderSize) {
        return 0;
    }
    ByteReader reader(bytes, length);
    reader.Skip(8);
    unsigned int count = reader.U16();
    reader.Bytes(&modelFlag, 1);
    if (count > kMaxFrames) {
        return 0;
    }
    unsigned int position = kModelHeaderSize;
    for (unsigned int i = 0; i < count; i++) {
        Mesh* mesh = new Mesh;
        unsigned int used = mesh->Parse(bytes + position, length - position, i == 0 ? nullptr : frames[0]);
        if (!used) {
            delete mesh;
            return 0;
        }
        frames[i] = mesh;
        frameCount = static_cast<unsigned short>(i + 1);
        position += used;
    }
    return position;
}

int Model::Load(ResourceManager* resources, const char* name) {
    if (!resources) {
        return 0;
    }
    const unsigned char* bytes = resources->Open(name);
    if (!bytes) {
        resources->Release();
        return 0;
    }
    return Parse(bytes, resources->bufferSize) != 0;
}

unsigned int Model::Size() const {
    unsigned int size = kModelHeaderSize;
    for (unsigned int i = 0; i < frameCount; i++) {
        size += frames[i]->Size(i != 0);
    }
    return size;
}

unsigned int Model::Serialise(unsigned char* out) const {
    ByteWriter writer(out);
    writer.Tag("VMDL");
    writer.U32(Size());
    writer.U16(frameCount);
    unsigned char flag = modelFlag;
    writer.Bytes(&flag, 1);
    for (unsigned int i = 0; i < frameCount; i++) {
        writer.position += frames[i]->Serialise(out + writer.position, i != 0);
    }
    return writer.position;
}

int Model::Save(const char* path) const {
    unsigned int size = Size();
    unsigned char* bytes = static_cast<unsigned char*>(malloc(size));
    Serialise(bytes);
    int ok = Sys_WriteFileAtomic(path, bytes, size);
    free(bytes);
    return ok;
}
