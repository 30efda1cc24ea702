#include "resources/resource_manager.h"

#include <strings.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/sys_files.h"

static const int kPackageHeaderSize = 76;
static const int kPackageRecordSize = 133;
static const unsigned int kMaxPackageEntries = 4096;

ResourceManager::ResourceManager() : buffer(nullptr), bufferSize(0) {
    strcpy(dataDirectory, "data");
}

ResourceManager::~ResourceManager() {
    Release();
}

void ResourceManager::Release() {
    free(buffer);
    buffer = nullptr;
    bufferSize = 0;
}

static FILE* OpenNative(const char* path) {
    char native[1024];
    Sys_ToNativePath(path, native, sizeof(native));
    return fopen(native, "rb");
}

static unsigned int ReadU32(const unsigned char* p) {
    return p[0] | (p[1] << 8) | (p[2] << 16) | (static_cast<unsigned int>(p[3]) << 24);
}

// Reads a whole open file into a fresh allocation; null when it cannot.
static unsigned char* ReadRest(FILE* file, long offset, unsigned int size) {
    if (fseek(file, offset, SEEK_SET) != 0) {
        return nullptr;
    }
    unsigned char* bytes = static_cast<unsigned char*>(malloc(size ? size : 1));
    if (bytes && size && fread(bytes, 1, size, file) != size) {
        free(bytes);
        return nullptr;
    }
    return bytes;
}

// Walks a package's directory looking for name. On a match returns 1 with the
// entry's data offset and size. Packages with a bad magic or a directory that
// runs past the file never match.
static int FindEntry(FILE* file, const char* name, long* offset, unsigned int* size) {
    unsigned char header[kPackageHeaderSize];
    if (fseek(file, 0, SEEK_SET) != 0 || fread(header, 1, sizeof(header), file) != sizeof(header) ||
        memcmp(header, "VPKG", 4) != 0) {
        return 0;
    }
    unsigned int count = ReadU32(header + 72);
    if (count > kMaxPackageEntries) {
        return 0;
    }
    long running = kPackageHeaderSize + static_cast<long>(kPackageRecordSize) * count;
    for (unsigned int i = 0; i < count; i++) {
        unsigned char record[kPackageRecordSize];
        if (fread(record, 1, sizeof(record), file) != sizeof(record)) {
            return 0;
        }
        char entryName[129];
        memcpy(entryName, record, 128);
        entryName[128] = 0;
        unsigned int entrySize = ReadU32(record + 129);
        if (strcasecmp(entryName, name) == 0) {
            *offset = running;
            *size = entrySize;
            return 1;
        }
        running += entrySize;
    }
    return 0;
}

struct PackageSearch {
    const char* directory;
    const char* name;
    char* outPath;
    int found;
};

static int VisitPackage(const char* fileName, void* context) {
    PackageSearch* search = static_cast<PackageSearch*>(context);
    char path[256];
    snprintf(path, sizeof(path), "%s\\%s", search->directory, fileName);
    FILE* file = OpenNative(path);
    if (!file) {
        return 1;
    }
    long offset;
    unsigned int size;
    int match = FindEntry(file, search->name, &offset, &size);
    fclose(file);
    if (!match) {
        return 1;
    }
    snprintf(search->outPath, 260, "%s", path);
    search->found = 1;
    return 0;
}

int ResourceManager::FindPackage(const char* directory, const char* name, char* outPath) {
    PackageSearch search = {directory, name, outPath, 0};
    Sys_ListFiles(directory, ".vpk", VisitPackage, &search);
    return search.found;
}

unsigned char* ResourceManager::Open(const char* name) {
    if (!name) {
        return nullptr;
    }
    char path[600];
    snprintf(path, sizeof(path), "%s\\%s", dataDirectory, name);
    if (FILE* loose = OpenNative(path)) {
        unsigned char* bytes = nullptr;
        long length = -1;
        if (fseek(loose, 0, SEEK_END) == 0) {
            length = ftell(loose);
        }
        if (length >= 0) {
            bytes = ReadRest(loose, 0, static_cast<unsigned int>(length));
        }
        fclose(loose);
        if (bytes) {
            Release();
            buffer = bytes;
            bufferSize = static_cast<unsigned int>(length);
            return buffer;
        }
    }
    char packagePath[260];
    if (!FindPackage(dataDirectory, name, packagePath) && !FindPackage("data", name, packagePath)) {
        return nullptr;
    }
    FILE* package = OpenNative(packagePath);
    if (!package) {
        return nullptr;
    }
    long offset;
    unsigned int size;
    unsigned char* bytes = nullptr;
    if (FindEntry(package, name, &offset, &size)) {
        bytes = ReadRest(package, offset, size);
    }
    fclose(package);
    if (!bytes) {
        return nullptr;
    }
    Release();
    buffer = bytes;
    bufferSize = size;
    return buffer;
}
