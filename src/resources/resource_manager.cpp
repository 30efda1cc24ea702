#include "resources/resource_manager.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/sys_files.h"

ResourceManager::ResourceManager() : buffer(nullptr), bufferSize(0), cachePackages(1) {
    strcpy(dataDirectory, "data");
    baseDirectory[0] = 0;
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

// Reads size bytes at offset into a fresh allocation; null when the file does not yield them all.
static unsigned char* ReadAt(FILE* file, unsigned long long offset, unsigned int size) {
    if (fseeko(file, static_cast<off_t>(offset), SEEK_SET) != 0) {
        return nullptr;
    }
    unsigned char* bytes = static_cast<unsigned char*>(malloc(size ? size : 1));
    if (bytes && size && fread(bytes, 1, size, file) != size) {
        free(bytes);
        return nullptr;
    }
    return bytes;
}

// The plain walk: open the package and read its directory until the name turns up.
static int WalkPackage(const char* path, const char* name, unsigned long long* offset, unsigned int* size) {
    FILE* file = OpenNative(path);
    if (!file) {
        return 0;
    }
    int match = 0;
    if (fseeko(file, 0, SEEK_END) == 0) {
        off_t end = ftello(file);
        if (end >= 0) {
            match = PackageWalkFile(file, static_cast<unsigned long long>(end), name, offset, size);
        }
    }
    fclose(file);
    return match;
}

struct PackageSearch {
    ResourceManager* manager;
    const char* directory;
    const char* name;
    char* outPath;
    unsigned long long offset;
    unsigned int size;
    int found;
};

static int VisitPackage(const char* fileName, void* context) {
    PackageSearch* search = static_cast<PackageSearch*>(context);
    char path[256];
    if (snprintf(path, sizeof(path), "%s\\%s", search->directory, fileName) >=
        static_cast<int>(sizeof(path))) {
        return 1;  // a path that does not fit is never opened
    }
    int match = search->manager->cachePackages
                    ? search->manager->packageCache.Find(path, search->name, &search->offset, &search->size)
                    : WalkPackage(path, search->name, &search->offset, &search->size);
    if (!match) {
        return 1;
    }
    snprintf(search->outPath, 260, "%s", path);
    search->found = 1;
    return 0;
}

int ResourceManager::LocateInPackages(const char* directory, const char* name, char* outPath,
                                      unsigned long long* offset, unsigned int* size) {
    if (!directory || !name || !outPath) {
        return 0;
    }
    PackageSearch search = {this, directory, name, outPath, 0, 0, 0};
    Sys_ListFiles(directory, ".vpk", VisitPackage, &search);
    if (search.found) {
        *offset = search.offset;
        *size = search.size;
    }
    return search.found;
}

int ResourceManager::FindPackage(const char* directory, const char* name, char* outPath) {
    unsigned long long offset;
    unsigned int size;
    return LocateInPackages(directory, name, outPath, &offset, &size);
}

// Step 1: a loose file under the data directory. Null when there is none or it cannot be read.
static unsigned char* OpenLoose(const char* dataDirectory, const char* name, unsigned int* length) {
    char path[600];
    snprintf(path, sizeof(path), "%s\\%s", dataDirectory, name);
    return Sys_ReadWholeFile(path, length);
}

unsigned char* ResourceManager::Open(const char* name) {
    if (!name) {
        return nullptr;
    }
    unsigned int length = 0;
    unsigned char* bytes = OpenLoose(dataDirectory, name, &length);
    if (!bytes && baseDirectory[0]) {
        bytes = OpenLoose(baseDirectory, name, &length);
    }
    if (!bytes) {
        char packagePath[260];
        unsigned long long offset;
        if (!LocateInPackages(dataDirectory, name, packagePath, &offset, &length) &&
            !LocateInPackages("data", name, packagePath, &offset, &length) &&
            !(baseDirectory[0] && LocateInPackages(baseDirectory, name, packagePath, &offset, &length))) {
            return nullptr;
        }
        FILE* package = OpenNative(packagePath);
        if (!package) {
            return nullptr;
        }
        bytes = ReadAt(package, offset, length);
        fclose(package);
        if (!bytes) {
            return nullptr;
        }
    }
    Release();
    buffer = bytes;
    bufferSize = length;
    return buffer;
}
