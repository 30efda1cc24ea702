// Package directories kept in memory between lookups. A lookup that misses the
// loose file would otherwise re-read the directory of every package from disk
// on every Open; the cache reads each directory once and keeps it, keyed by the
// package's path and its stamp (size, modification time in nanoseconds and
// file identity). A package rewritten on disk changes its stamp and is read
// again; one replaced through a temporary file and a rename (as every tool
// here writes) always gets a new identity. A file rewritten in place with the
// same size inside one tick of the file system's clock keeps its stamp, so a
// directory read less than a second after its file's modification time is
// not trusted: it is read again at the next lookup, until it has settled.
//
// The table holds 64 packages; when it is full the least recently used one is
// dropped. The answers are those of the plain record-by-record walk
// (package_directory.h), which the resource manager keeps for comparison.
#pragma once

#include "resources/package_directory.h"

class PackageCache {
public:
    static const int kSlots = 64;

    struct Slot {
        char path[260];  // empty when free
        unsigned long long size;
        long long mtime;
        unsigned long long identity;
        unsigned int lastUse;
        int settled;  // 0 while the file was modified too recently to trust the stamp
        PackageDirectory directory;
    };

    Slot slots[kSlots];
    unsigned int useClock;
    unsigned int directoryReads;  // directories read from disk so far

    PackageCache();

    // Drops every cached directory.
    void Clear();
    // Looks name up in the package at path; 1 with the data offset and size, else 0.
    int Find(const char* path, const char* name, unsigned long long* offset, unsigned int* size);

private:
    Slot* Lookup(const char* path, unsigned long long size, long long mtime, unsigned long long identity);
    int ReadDirectory(const char* path, unsigned long long fileSize, PackageDirectory* directory);
};
