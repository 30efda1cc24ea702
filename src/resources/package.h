// The package builder: an in-memory .vpk archive that content tools load, edit
// and save. The game itself only reads packages (ResourceManager); this is the
// writer side of the format.
//
// File layout, little-endian, no padding:
//   0   "VPKG"
//   4   title, 32 bytes NUL-padded
//   36  author, 32 bytes NUL-padded
//   68  version (1)
//   72  count
//   76  count directory records of 133 bytes: name[128], flag (1 byte), size (4)
//   then the entries' data, one after another in directory order.
// No offsets are stored: a reader adds the sizes up as it walks the directory.
//
// The table is fixed at 4096 entries. Loading is strict: a package whose
// count, names or data do not fit what the bytes hold is refused whole, and
// the package in memory is left as it was.
#pragma once

static const unsigned int kPackageHeaderSize = 76;
static const unsigned int kPackageRecordSize = 133;
static const unsigned int kMaxPackageEntries = 4096;
static const unsigned int kPackageNameSize = 128;
static const unsigned int kPackageTitleSize = 32;

struct PackageEntry {
    char name[128];      // NUL-terminated, compared without regard to ASCII case
    unsigned int size;   // data bytes
    unsigned char flag;  // 0 for everything the builder adds; carried through unread
};

// Header fields read from the first 76 bytes; 1 when the magic is "VPKG" and
// the bytes are long enough, else 0.
int PackageReadHeader(const unsigned char* bytes, unsigned int length, unsigned int* count);
// Decodes one 133-byte directory record; 0 when its name has no terminating zero.
int PackageReadRecord(const unsigned char* record, PackageEntry* entry);
// ASCII-only case-insensitive compare (A-Z fold to a-z, nothing else); 1 when equal.
int PackageNamesEqual(const char* a, const char* b);

class Package {
public:
    char name[32];
    char author[32];
    unsigned int version;
    unsigned int count;
    PackageEntry entries[4096];
    unsigned char* data[4096];

    Package();
    ~Package();

    // Frees every entry and resets the header to its defaults.
    void Clear();
    // Reads a package file; 0 when it cannot be read or is not a well-formed package.
    int Load(const char* path);
    // Replaces the contents with a package held in memory; 0 (nothing changed) on bad bytes.
    int LoadFromMemory(const unsigned char* bytes, unsigned int length);
    // Writes the package through a temporary file renamed into place; 0 on failure.
    int Save(const char* path) const;
    // Bytes the serialised package takes.
    unsigned long long Size() const;
    // Writes the package into out, which holds Size() bytes.
    void Serialise(unsigned char* out) const;
    // Adds (or replaces, matching without case) the entry from a file; 0 when it cannot be read or full.
    int AddFile(const char* sourcePath, const char* entryName);
    // Adds (or replaces) the entry from bytes in memory; 0 when full or the name does not fit.
    int AddData(const char* entryName, const void* bytes, unsigned int length);
    // Removes the entry, keeping the others in order; 0 when no entry has that name.
    int RemoveFile(const char* entryName);
    // Index of the first entry with that name (without case), or -1.
    int FindEntry(const char* entryName) const;
};
