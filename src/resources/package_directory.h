// How the resource lookup reads a package's directory. There are two readers
// that must always agree: the plain walk, which reads a package file record by
// record until the name turns up (what the lookup does with no cache), and
// PackageDirectory, which holds a whole directory in memory so that the
// package cache can answer later lookups without touching the disk.
//
// Both follow one rule, so a name always resolves to the same bytes:
//   - a package counts only if its magic is "VPKG", its count is at most 4096
//     and the whole directory lies inside the file; otherwise it lists nothing;
//   - records are taken in order; the data of record i begins at
//     76 + 133 x count + the sizes of records 0..i-1;
//   - a record whose name has no terminating zero, or whose data would run past
//     the end of the file, never matches (its size still moves the offset on);
//   - the first matching record, names compared without regard to ASCII case,
//     supplies the resource.
#pragma once

#include <cstdio>

struct PackageDirectoryEntry {
    char name[128];
    unsigned int hash;  // of the lower-cased name
    unsigned int size;
    unsigned long long offset;
};

// Walks the directory of an open package file of fileSize bytes; 1 with the
// entry's data offset and size on the first match, else 0.
int PackageWalkFile(FILE* file, unsigned long long fileSize, const char* name, unsigned long long* offset,
                    unsigned int* size);

// Hash of a name with ASCII letters folded to lower case.
unsigned int PackageNameHash(const char* name);

class PackageDirectory {
public:
    PackageDirectoryEntry* entries;  // usable records in directory order, owned
    unsigned int count;

    PackageDirectory();
    ~PackageDirectory();

    // Forgets every entry.
    void Clear();
    // Bytes of the file's start needed to parse the directory, from its first 76 bytes; 0 when the
    // package lists nothing (bad magic, count over 4096, directory past the end of the file).
    static unsigned long long NeededBytes(const unsigned char* header, unsigned int length,
                                          unsigned long long fileSize);
    // Builds the directory from the file's first length bytes (fileSize is the whole file's size);
    // a package that lists nothing gives an empty directory. 0 only when memory runs out.
    int Parse(const unsigned char* bytes, unsigned int length, unsigned long long fileSize);
    // 1 with the data offset and size of the first entry named name (without case), else 0.
    int Find(const char* name, unsigned long long* offset, unsigned int* size) const;

private:
    PackageDirectory(const PackageDirectory&);
    PackageDirectory& operator=(const PackageDirectory&);
};
