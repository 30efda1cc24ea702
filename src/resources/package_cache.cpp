#include "resources/package_cache.h"

#include <cstdlib>
#include <cstring>

#include "platform/sys_files.h"
#include "resources/package.h"

// How old a file's modification time must be before its stamp is trusted: well
// above the coarsest file-system timestamp granularity.
static const long long kSettleNanoseconds = 1000000000ll;

PackageCache::PackageCache() : useClock(0), directoryReads(0) {
    for (int i = 0; i < kSlots; i++) {
        slots[i].path[0] = 0;
    }
}

void PackageCache::Clear() {
    for (int i = 0; i < kSlots; i++) {
        slots[i].path[0] = 0;
        slots[i].directory.Clear();
    }
}

// Reads the header and the directory records (never the data) of one package.
int PackageCache::ReadDirectory(const char* path, unsigned long long fileSize, PackageDirectory* directory) {
    char native[1024];
    Sys_ToNativePath(path, native, sizeof(native));
    FILE* file = fopen(native, "rb");
    if (!file) {
        return 0;
    }
    directoryReads++;
    unsigned char header[kPackageHeaderSize];
    int ok = 0;
    if (fread(header, 1, sizeof(header), file) != sizeof(header)) {
        directory->Clear();
        ok = 1;
    } else {
        unsigned long long needed = PackageDirectory::NeededBytes(header, sizeof(header), fileSize);
        unsigned char* bytes = static_cast<unsigned char*>(malloc(needed ? needed : kPackageHeaderSize));
        if (bytes) {
            memcpy(bytes, header, sizeof(header));
            size_t rest = needed > kPackageHeaderSize ? needed - kPackageHeaderSize : 0;
            if (fread(bytes + kPackageHeaderSize, 1, rest, file) == rest) {
                ok = directory->Parse(bytes, static_cast<unsigned int>(needed ? needed : sizeof(header)),
                                      fileSize);
            }
            free(bytes);
        }
    }
    fclose(file);
    return ok;
}

PackageCache::Slot* PackageCache::Lookup(const char* path, unsigned long long size, long long mtime,
                                         unsigned long long identity) {
    Slot* stale = nullptr;
    for (int i = 0; i < kSlots; i++) {
        if (slots[i].path[0] && strcmp(slots[i].path, path) == 0) {
            if (slots[i].settled && slots[i].size == size && slots[i].mtime == mtime &&
                slots[i].identity == identity) {
                return &slots[i];
            }
            stale = &slots[i];
            break;
        }
    }
    if (!stale) {
        // A free slot, or else the one used longest ago.
        stale = &slots[0];
        for (int i = 0; i < kSlots && stale->path[0]; i++) {
            if (!slots[i].path[0] || slots[i].lastUse < stale->lastUse) {
                stale = &slots[i];
            }
        }
    }
    stale->path[0] = 0;
    long long readTime = Sys_FileTimeNow();
    if (!ReadDirectory(path, size, &stale->directory)) {
        stale->directory.Clear();
        return nullptr;
    }
    snprintf(stale->path, sizeof(stale->path), "%s", path);
    stale->size = size;
    stale->mtime = mtime;
    stale->identity = identity;
    stale->settled = readTime - mtime > kSettleNanoseconds;
    return stale;
}

int PackageCache::Find(const char* path, const char* name, unsigned long long* offset, unsigned int* size) {
    if (strlen(path) >= sizeof(slots[0].path)) {
        return 0;
    }
    unsigned long long fileSize;
    long long mtime;
    unsigned long long identity;
    if (!Sys_FileStamp(path, &fileSize, &mtime, &identity)) {
        return 0;
    }
    Slot* slot = Lookup(path, fileSize, mtime, identity);
    if (!slot) {
        return 0;
    }
    slot->lastUse = ++useClock;
    return slot->directory.Find(name, offset, size);
}
