#include "resources/location.h"

#include <cstdlib>
#include <cstring>

#include "platform/sys_files.h"
#include "resources/byte_stream.h"
#include "resources/mesh.h"
#include "resources/resource_manager.h"

static const unsigned int kBlockHeaderSize = 8;

LocationEntity::LocationEntity() : params(nullptr) {
    memset(name, 0, sizeof(name));
    memset(position, 0, sizeof(position));
    memset(rotation, 0, sizeof(rotation));
}

LocationEntity::~LocationEntity() {
    free(params);
}

Location::Location() : pieceCount(0), entityCount(0) {
    memset(pieces, 0, sizeof(pieces));
    memset(entities, 0, sizeof(entities));
    Clear();
}

Location::~Location() {
    Clear();
}

void Location::Clear() {
    for (int i = 0; i < kMaxPieces; i++) {
        delete pieces[i];
        pieces[i] = nullptr;
    }
    for (int i = 0; i < kMaxEntities; i++) {
        delete entities[i];
        entities[i] = nullptr;
    }
    memset(name, 0, sizeof(name));
    pieceCount = 0;
    entityCount = 0;
}

// Reads a length-prefixed string into a fixed field, cutting it to the field's size.
static void ReadString(ByteReader& reader, char* out, unsigned int outSize) {
    unsigned int n = reader.U16();
    if (!reader.Need(n)) {
        return;
    }
    unsigned int kept = n < outSize - 1 ? n : outSize - 1;
    memcpy(out, reader.bytes + reader.position, kept);
    out[kept] = 0;
    reader.position += n;
}

static int ReadPieces(ByteReader& reader, Location& location) {
    unsigned int count = reader.U16();
    if (reader.failed || count > static_cast<unsigned int>(Location::kMaxPieces)) {
        return 0;
    }
    for (unsigned int i = 0; i < count; i++) {
        LocationPiece* piece = new LocationPiece;
        location.pieces[i] = piece;
        location.pieceCount = static_cast<unsigned short>(i + 1);
        memset(piece->name, 0, sizeof(piece->name));
        memset(piece->textureName, 0, sizeof(piece->textureName));
        ReadString(reader, piece->name, sizeof(piece->name));
        ReadString(reader, piece->textureName, sizeof(piece->textureName));
        if (reader.failed) {
            return 0;
        }
        unsigned int used = piece->model.Parse(reader.bytes + reader.position, reader.Remaining());
        if (!used) {
            return 0;
        }
        reader.position += used;
        piece->model.BuildFrame(0, 0, 0.0f);
        // Level editors write texture paths relative to the level (".\stone.tga"); the
        // texture manager wants the bare name.
        if (piece->textureName[0] == '.' && piece->textureName[1] == '\\') {
            memmove(piece->textureName, piece->textureName + 2, strlen(piece->textureName + 2) + 1);
        }
    }
    return 1;
}

static int ReadEntities(ByteReader& reader, Location& location) {
    unsigned int count = reader.U16();
    if (reader.failed || count > static_cast<unsigned int>(Location::kMaxEntities)) {
        return 0;
    }
    for (unsigned int i = 0; i < count; i++) {
        LocationEntity* entity = new LocationEntity;
        location.entities[i] = entity;
        location.entityCount = static_cast<unsigned short>(i + 1);
        ReadString(reader, entity->name, sizeof(entity->name));
        float file[3];
        for (int a = 0; a < 3; a++) {
            file[a] = reader.F32();
        }
        Mesh::FromFile(file, entity->position);
        for (int a = 0; a < 3; a++) {
            entity->rotation[a] = reader.F32();
        }
        unsigned int n = reader.U16();
        if (!reader.Need(n)) {
            return 0;
        }
        entity->params = static_cast<char*>(calloc(n + 1, 1));
        reader.Bytes(entity->params, n);
    }
    return !reader.failed;
}

// Lightmap coordinates are drawn alongside the pieces' built vertices, one per vertex;
// a set that disagrees with the pieces would be read past its end.
static int LightmapsMatchPieces(const Location& location) {
    const LightmapSet& set = location.lightmaps;
    for (int i = 0; i < LightmapSet::kMaxPieces; i++) {
        if (!set.coords[i]) {
            continue;
        }
        if (i >= location.pieceCount || set.coordCounts[i] != location.pieces[i]->model.frameTriangles * 3) {
            return 0;
        }
    }
    return 1;
}

// Reads the blocks from the reader's position up to "VEND"; returns the tag's offset or 0.
static unsigned int ReadBlocks(ByteReader& reader, Location& location) {
    int seenPieces = 0, seenEntities = 0;
    for (;;) {
        if (reader.PeekTag("VEND")) {
            return reader.position;
        }
        unsigned int start = reader.position;
        reader.Skip(4);
        unsigned int size = reader.U32();
        if (reader.failed) {
            return 0;  // ran out of bytes before "VEND"
        }
        const unsigned char* tag = reader.bytes + start;
        if (memcmp(tag, "VLST", 4) == 0) {
            if (seenPieces++ || !ReadPieces(reader, location)) {
                return 0;
            }
        } else if (memcmp(tag, "VLEN", 4) == 0) {
            if (seenEntities++ || !ReadEntities(reader, location)) {
                return 0;
            }
        } else if (memcmp(tag, "VLLM", 4) == 0) {
            unsigned int used = location.lightmaps.Parse(reader.bytes + start, reader.length - start);
            if (!used) {
                return 0;
            }
            reader.position = start + used;
        } else {
            // An unknown block is skipped by its size, which must at least cover its header.
            if (size < kBlockHeaderSize || size > reader.length - start) {
                return 0;
            }
            reader.position = start + size;
        }
    }
}

unsigned int Location::Parse(const unsigned char* bytes, unsigned int length) {
    if (!bytes || length < 4 || memcmp(bytes, "VLOC", 4) != 0) {
        return 0;
    }
    Clear();
    // A file without a "VLLM" block has no baked lighting: what the previous location left
    // belongs to other pieces.
    lightmaps.Clear();
    ByteReader reader(bytes, length);
    reader.Skip(8);
    ReadString(reader, name, sizeof(name));
    unsigned int end = reader.failed ? 0 : ReadBlocks(reader, *this);
    if (!end || !LightmapsMatchPieces(*this)) {
        Clear();
        lightmaps.Clear();
        return 0;
    }
    lightmaps.Upload();
    return end;
}

int Location::Load(ResourceManager* resources, const char* resourceName) {
    if (!resources) {
        return 0;
    }
    const unsigned char* bytes = resources->Open(resourceName);
    if (!bytes) {
        return 0;
    }
    return Parse(bytes, resources->bufferSize) != 0;
}

static unsigned int StringSize(const char* text, unsigned int fieldSize) {
    return 2 + static_cast<unsigned int>(strnlen(text, fieldSize - 1));
}

static void WriteField(ByteWriter& writer, const char* text, unsigned int fieldSize) {
    unsigned int n = static_cast<unsigned int>(strnlen(text, fieldSize - 1));
    writer.U16(n);
    writer.Bytes(text, n);
}

static unsigned int PiecesSize(const Location& location) {
    unsigned int size = 10;
    for (unsigned int i = 0; i < location.pieceCount; i++) {
        const LocationPiece* piece = location.pieces[i];
        size += StringSize(piece->name, sizeof(piece->name)) +
                StringSize(piece->textureName, sizeof(piece->textureName)) + piece->model.Size();
    }
    return size;
}

static unsigned int ParamsLength(const LocationEntity* entity) {
    return entity->params ? static_cast<unsigned int>(strlen(entity->params)) : 0;
}

static unsigned int EntitiesSize(const Location& location) {
    unsigned int size = 10;
    for (unsigned int i = 0; i < location.entityCount; i++) {
        const LocationEntity* entity = location.entities[i];
        size += StringSize(entity->name, sizeof(entity->name)) + 24 + 2 + ParamsLength(entity);
    }
    return size;
}

unsigned int Location::Size() const {
    return 10 + static_cast<unsigned int>(strnlen(name, sizeof(name) - 1)) + PiecesSize(*this) +
           EntitiesSize(*this) + lightmaps.Size() + kBlockHeaderSize;
}

unsigned int Location::Serialise(unsigned char* out) const {
    ByteWriter writer(out);
    writer.Tag("VLOC");
    writer.U32(Size());
    WriteField(writer, name, sizeof(name));

    writer.Tag("VLST");
    writer.U32(PiecesSize(*this));
    writer.U16(pieceCount);
    for (unsigned int i = 0; i < pieceCount; i++) {
        const LocationPiece* piece = pieces[i];
        WriteField(writer, piece->name, sizeof(piece->name));
        WriteField(writer, piece->textureName, sizeof(piece->textureName));
        writer.position += piece->model.Serialise(out + writer.position);
    }

    writer.Tag("VLEN");
    writer.U32(EntitiesSize(*this));
    writer.U16(entityCount);
    for (unsigned int i = 0; i < entityCount; i++) {
        const LocationEntity* entity = entities[i];
        WriteField(writer, entity->name, sizeof(entity->name));
        float file[3];
        Mesh::ToFile(entity->position, file);
        for (int a = 0; a < 3; a++) {
            writer.F32(file[a]);
        }
        for (int a = 0; a < 3; a++) {
            writer.F32(entity->rotation[a]);
        }
        unsigned int n = ParamsLength(entity);
        writer.U16(n);
        writer.Bytes(entity->params, n);
    }

    writer.position += lightmaps.Serialise(out + writer.position);
    writer.Tag("VEND");
    writer.U32(0);
    return writer.position;
}

int Location::Save(const char* path) const {
    unsigned int size = Size();
    unsigned char* bytes = static_cast<unsigned char*>(malloc(size));
    Serialise(bytes);
    int ok = Sys_WriteFileAtomic(path, bytes, size);
    free(bytes);
    return ok;
}
