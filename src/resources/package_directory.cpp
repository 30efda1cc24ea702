#include "resources/package_directory.h"

#include <cstdlib>
#include <cstring>

#include "resources/package.h"

unsigned int PackageNameHash(const char* name) {
    unsigned int hash = 2166136261u;
    for (; *name; name++) {
        unsigned char c = *name;
        if (c >= 'A' && c <= 'Z') {
            c += 'a' - 'A';
        }
        hash = (hash ^ c) * 16777619u;
    }
    return hash;
}

static unsigned int ReadRecordSize(const unsigned char* record) {
    const unsigned char* p = record + 129;
    return p[0] | (p[1] << 8) | (p[2] << 16) | (static_cast<unsigned int>(p[3]) << 24);
}

// The per-record half of the shared rule: the entry is usable when its name is
// terminated and its data lies inside the file.
static int UsableRecord(const unsigned char* record, unsigned long long offset, unsigned long long fileSize,
                        PackageEntry* entry) {
    if (!PackageReadRecord(record, entry)) {
        return 0;
    }
    return offset + entry->size <= fileSize;
}

unsigned long long PackageDirectory::NeededBytes(const unsigned char* header, unsigned int length,
                                                 unsigned long long fileSize) {
    unsigned int count;
    if (!PackageReadHeader(header, length, &count) || count > kMaxPackageEntries) {
        return 0;
    }
    unsigned long long needed =
        kPackageHeaderSize + static_cast<unsigned long long>(kPackageRecordSize) * count;
    return needed <= fileSize ? needed : 0;
}

int PackageWalkFile(FILE* file, unsigned long long fileSize, const char* name, unsigned long long* offset,
                    unsigned int* size) {
    unsigned char header[kPackageHeaderSize];
    if (fseek(file, 0, SEEK_SET) != 0 || fread(header, 1, sizeof(header), file) != sizeof(header)) {
        return 0;
    }
    unsigned long long needed = PackageDirectory::NeededBytes(header, sizeof(header), fileSize);
    if (!needed) {
        return 0;
    }
    unsigned int count = (needed - kPackageHeaderSize) / kPackageRecordSize;
    unsigned long long running = needed;
    for (unsigned int i = 0; i < count; i++) {
        unsigned char record[kPackageRecordSize];
        if (fread(record, 1, sizeof(record), file) != sizeof(record)) {
            return 0;
        }
        PackageEntry entry;
        if (UsableRecord(record, running, fileSize, &entry) && PackageNamesEqual(entry.name, name)) {
            *offset = running;
            *size = entry.size;
            return 1;
        }
        running += ReadRecordSize(record);
    }
    return 0;
}

PackageDirectory::PackageDirectory() : entries(nullptr), count(0) {}

PackageDirectory::~PackageDirectory() {
    Clear();
}

void PackageDirectory::Clear() {
    free(entries);
    entries = nullptr;
    count = 0;
}

int PackageDirectory::Parse(const unsigned char* bytes, unsigned int length, unsigned long long fileSize) {
    Clear();
    unsigned long long needed = NeededBytes(bytes, length, fileSize);
    if (!needed || needed > length) {
        return 1;
    }
    unsigned int records = (needed - kPackageHeaderSize) / kPackageRecordSize;
    if (!records) {
        return 1;
    }
    entries = static_cast<PackageDirectoryEntry*>(malloc(sizeof(PackageDirectoryEntry) * records));
    if (!entries) {
        return 0;
    }
    unsigned long long running = needed;
    const unsigned char* record = bytes + kPackageHeaderSize;
    for (unsigned int i = 0; i < records; i++, record += kPackageRecordSize) {
        PackageEntry entry;
        if (UsableRecord(record, running, fileSize, &entry)) {
            PackageDirectoryEntry& out = entries[count++];
            memcpy(out.name, entry.name, sizeof(out.name));
            out.hash = PackageNameHash(entry.name);
            out.size = entry.size;
            out.offset = running;
        }
        running += ReadRecordSize(record);
    }
    return 1;
}

int PackageDirectory::Find(const char* name, unsigned long long* offset, unsigned int* size) const {
    unsigned int hash = PackageNameHash(name);
    for (unsigned int i = 0; i < count; i++) {
        if (entries[i].hash == hash && PackageNamesEqual(entries[i].name, name)) {
            *offset = entries[i].offset;
            *size = entries[i].size;
            return 1;
        }
    }
    return 0;
}
