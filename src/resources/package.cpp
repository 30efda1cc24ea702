#include "resources/package.h"

#include <cstdlib>
#include <cstring>

#include "platform/sys_files.h"

static unsigned int ReadU32(const unsigned char* p) {
    return p[0] | (p[1] << 8) | (p[2] << 16) | (static_cast<unsigned int>(p[3]) << 24);
}

static void WriteU32(unsigned char* p, unsigned int value) {
    p[0] = value & 0xFF;
    p[1] = (value >> 8) & 0xFF;
    p[2] = (value >> 16) & 0xFF;
    p[3] = (value >> 24) & 0xFF;
}

int PackageReadHeader(const unsigned char* bytes, unsigned int length, unsigned int* count) {
    if (length < kPackageHeaderSize || memcmp(bytes, "VPKG", 4) != 0) {
        return 0;
    }
    *count = ReadU32(bytes + 72);
    return 1;
}

int PackageReadRecord(const unsigned char* record, PackageEntry* entry) {
    if (!memchr(record, 0, kPackageNameSize)) {
        return 0;
    }
    memcpy(entry->name, record, kPackageNameSize);
    entry->flag = record[128];
    entry->size = ReadU32(record + 129);
    return 1;
}

int PackageNamesEqual(const char* a, const char* b) {
    for (;; a++, b++) {
        unsigned char x = *a, y = *b;
        if (x >= 'A' && x <= 'Z') {
            x += 'a' - 'A';
        }
        if (y >= 'A' && y <= 'Z') {
            y += 'a' - 'A';
        }
        if (x != y) {
            return 0;
        }
        if (!x) {
            return 1;
        }
    }
}

Package::Package() {
    memset(data, 0, sizeof(data));
    Clear();
}

Package::~Package() {
    Clear();
}

void Package::Clear() {
    for (unsigned int i = 0; i < kMaxPackageEntries; i++) {
        free(data[i]);
    }
    memset(data, 0, sizeof(data));
    memset(entries, 0, sizeof(entries));
    memset(name, 0, sizeof(name));
    memset(author, 0, sizeof(author));
    strcpy(name, "Unnamed Vantle2 Package");
    strcpy(author, "Unnamed Author");
    version = 1;
    count = 0;
}

// Checks that the whole package fits the bytes before anything is changed, so a
// damaged file never leaves a half-loaded package behind.
static int ValidatePackage(const unsigned char* bytes, unsigned int length, unsigned int* countOut) {
    unsigned int count;
    if (!PackageReadHeader(bytes, length, &count) || count > kMaxPackageEntries) {
        return 0;
    }
    unsigned long long end = kPackageHeaderSize + static_cast<unsigned long long>(kPackageRecordSize) * count;
    if (end > length) {
        return 0;
    }
    const unsigned char* record = bytes + kPackageHeaderSize;
    for (unsigned int i = 0; i < count; i++, record += kPackageRecordSize) {
        PackageEntry entry;
        if (!PackageReadRecord(record, &entry)) {
            return 0;
        }
        end += entry.size;
    }
    if (end > length) {
        return 0;
    }
    *countOut = count;
    return 1;
}

int Package::LoadFromMemory(const unsigned char* bytes, unsigned int length) {
    unsigned int newCount;
    if (!bytes || !ValidatePackage(bytes, length, &newCount)) {
        return 0;
    }
    Clear();
    memcpy(name, bytes + 4, kPackageTitleSize);
    memcpy(author, bytes + 36, kPackageTitleSize);
    name[kPackageTitleSize - 1] = 0;
    author[kPackageTitleSize - 1] = 0;
    version = ReadU32(bytes + 68);
    const unsigned char* record = bytes + kPackageHeaderSize;
    const unsigned char* payload = record + kPackageRecordSize * newCount;
    for (unsigned int i = 0; i < newCount; i++, record += kPackageRecordSize) {
        PackageReadRecord(record, &entries[i]);
        data[i] = static_cast<unsigned char*>(malloc(entries[i].size ? entries[i].size : 1));
        if (!data[i]) {
            Clear();
            return 0;
        }
        memcpy(data[i], payload, entries[i].size);
        payload += entries[i].size;
        count = i + 1;
    }
    return 1;
}

int Package::Load(const char* path) {
    unsigned int length;
    unsigned char* bytes = Sys_ReadWholeFile(path, &length);
    if (!bytes) {
        return 0;
    }
    int ok = LoadFromMemory(bytes, length);
    free(bytes);
    return ok;
}

unsigned long long Package::Size() const {
    unsigned long long size =
        kPackageHeaderSize + static_cast<unsigned long long>(kPackageRecordSize) * count;
    for (unsigned int i = 0; i < count; i++) {
        size += entries[i].size;
    }
    return size;
}

void Package::Serialise(unsigned char* out) const {
    memcpy(out, "VPKG", 4);
    memcpy(out + 4, name, kPackageTitleSize);
    memcpy(out + 36, author, kPackageTitleSize);
    WriteU32(out + 68, version);
    WriteU32(out + 72, count);
    unsigned char* record = out + kPackageHeaderSize;
    for (unsigned int i = 0; i < count; i++, record += kPackageRecordSize) {
        memcpy(record, entries[i].name, kPackageNameSize);
        record[128] = entries[i].flag;
        WriteU32(record + 129, entries[i].size);
    }
    unsigned char* payload = record;
    for (unsigned int i = 0; i < count; i++) {
        if (entries[i].size) {
            memcpy(payload, data[i], entries[i].size);
        }
        payload += entries[i].size;
    }
}

int Package::Save(const char* path) const {
    unsigned long long size = Size();
    if (size > 0xFFFFFFFFull) {
        return 0;
    }
    unsigned char* bytes = static_cast<unsigned char*>(malloc(size));
    if (!bytes) {
        return 0;
    }
    Serialise(bytes);
    int ok = Sys_WriteFileAtomic(path, bytes, static_cast<unsigned int>(size));
    free(bytes);
    return ok;
}

int Package::FindEntry(const char* entryName) const {
    if (!entryName) {
        return -1;
    }
    for (unsigned int i = 0; i < count; i++) {
        if (PackageNamesEqual(entries[i].name, entryName)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

int Package::AddData(const char* entryName, const void* bytes, unsigned int length) {
    if (!entryName || !entryName[0] || strlen(entryName) >= kPackageNameSize || (!bytes && length)) {
        return 0;
    }
    int found = FindEntry(entryName);
    unsigned int index = found >= 0 ? static_cast<unsigned int>(found) : count;
    if (index >= kMaxPackageEntries) {
        return 0;
    }
    unsigned char* copy = static_cast<unsigned char*>(malloc(length ? length : 1));
    if (!copy) {
        return 0;
    }
    if (length) {
        memcpy(copy, bytes, length);
    }
    free(data[index]);
    data[index] = copy;
    // A name that differs only in case replaces the entry and takes the new spelling.
    memset(entries[index].name, 0, kPackageNameSize);
    strcpy(entries[index].name, entryName);
    entries[index].size = length;
    entries[index].flag = 0;
    if (index == count) {
        count++;
    }
    return 1;
}

int Package::AddFile(const char* sourcePath, const char* entryName) {
    if (!sourcePath) {
        return 0;
    }
    unsigned int length;
    unsigned char* bytes = Sys_ReadWholeFile(sourcePath, &length);
    if (!bytes) {
        return 0;
    }
    int ok = AddData(entryName, bytes, length);
    free(bytes);
    return ok;
}

int Package::RemoveFile(const char* entryName) {
    int found = FindEntry(entryName);
    if (found < 0) {
        return 0;
    }
    unsigned int index = static_cast<unsigned int>(found);
    free(data[index]);
    for (unsigned int i = index; i + 1 < count; i++) {
        entries[i] = entries[i + 1];
        data[i] = data[i + 1];
    }
    count--;
    memset(&entries[count], 0, sizeof(entries[count]));
    data[count] = nullptr;
    return 1;
}
