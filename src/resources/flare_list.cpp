#include "resources/flare_list.h"

#include <cstdlib>
#include <cstring>

#include "platform/sys_files.h"
#include "resources/resource_manager.h"

static unsigned int ReadU32(const unsigned char* p) {
    return p[0] | (p[1] << 8) | (p[2] << 16) | (static_cast<unsigned int>(p[3]) << 24);
}

static void WriteU32(unsigned char* p, unsigned int value) {
    for (int i = 0; i < 4; i++) {
        p[i] = (value >> (8 * i)) & 0xFF;
    }
}

// Floats are stored as their little-endian IEEE bits, like every other field.
static float ReadFloat(const unsigned char* p) {
    unsigned int bits = ReadU32(p);
    float value;
    memcpy(&value, &bits, 4);
    return value;
}

static void WriteFloat(unsigned char* p, float value) {
    unsigned int bits;
    memcpy(&bits, &value, 4);
    WriteU32(p, bits);
}

FlareList::FlareList() : count(0) {
    memset(origin, 0, sizeof(origin));
    memset(elements, 0, sizeof(elements));
}

FlareList::~FlareList() {
    Clear();
}

void FlareList::Clear() {
    for (unsigned int i = 0; i < kMaxElements; i++) {
        free(elements[i]);
    }
    memset(elements, 0, sizeof(elements));
    count = 0;
}

int FlareList::Load(ResourceManager* resources, const char* name) {
    if (!resources) {
        return 0;
    }
    unsigned char* bytes = resources->Open(name);
    if (!bytes) {
        return 0;
    }
    return Parse(bytes, resources->bufferSize);
}

int FlareList::Parse(const unsigned char* bytes, unsigned int length) {
    Clear();
    if (!bytes || length < kHeaderSize || memcmp(bytes, "VFLR", 4) != 0) {
        return 0;
    }
    unsigned int newCount = ReadU32(bytes + 20);
    if (newCount > kMaxElements || kHeaderSize + newCount * sizeof(FlareElement) > length) {
        return 0;
    }
    for (int i = 0; i < 3; i++) {
        origin[i] = ReadFloat(bytes + 8 + 4 * i);
    }
    const unsigned char* record = bytes + kHeaderSize;
    for (unsigned int i = 0; i < newCount; i++, record += sizeof(FlareElement)) {
        elements[i] = static_cast<FlareElement*>(malloc(sizeof(FlareElement)));
        if (!elements[i]) {
            Clear();
            return 0;
        }
        // The record is the in-memory layout on a little-endian machine.
        memcpy(elements[i], record, sizeof(FlareElement));
        count = i + 1;
    }
    return 1;
}

unsigned int FlareList::Size() const {
    return kHeaderSize + count * sizeof(FlareElement);
}

void FlareList::Serialise(unsigned char* out) const {
    memcpy(out, "VFLR", 4);
    WriteU32(out + 4, Size());
    for (int i = 0; i < 3; i++) {
        WriteFloat(out + 8 + 4 * i, origin[i]);
    }
    WriteU32(out + 20, count);
    for (unsigned int i = 0; i < count; i++) {
        memcpy(out + kHeaderSize + i * sizeof(FlareElement), elements[i], sizeof(FlareElement));
    }
}

int FlareList::Save(const char* path) const {
    unsigned char* bytes = static_cast<unsigned char*>(malloc(Size()));
    if (!bytes) {
        return 0;
    }
    Serialise(bytes);
    int ok = Sys_WriteFileAtomic(path, bytes, Size());
    free(bytes);
    return ok;
}

int FlareList::Add(const FlareElement& element) {
    if (count >= kMaxElements) {
        return -1;
    }
    FlareElement* copy = static_cast<FlareElement*>(malloc(sizeof(FlareElement)));
    if (!copy) {
        return -1;
    }
    *copy = element;
    elements[count] = copy;
    return static_cast<int>(count++);
}
