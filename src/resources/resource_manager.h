// Opens every piece of content by name. A name is a relative path with
// backslashes ("levels\01.vlc"). The search order:
//
//   1. a loose file under the data directory ("data/levels/01.vlc") always wins;
//   2. otherwise the .vpk packages of the data directory, in the order the
//      directory listing yields them; the first package that lists the name
//      (compared without regard to ASCII case) supplies it;
//   3. the same search in the fixed directory "data" (the same place unless a
//      tool changed dataDirectory).
//
// The installed game adds its own read-only data under the player's as
// baseDirectory: the player's loose files, then the installed loose files, then
// the player's packages, then the installed packages. A player's add-on is thus
// found exactly as a loose file or package is in the working directory, and a
// loose file still beats every package.
//
// Package directories are kept in memory between lookups (package_cache.h), so
// an Open that misses the loose file lists the directory and stamps each
// package, but reads no directory from disk unless the package changed. With
// cachePackages at 0 every lookup walks the packages from disk record by record
// instead; both ways resolve every name to the same bytes.
//
// The manager holds one buffer: the bytes of the resource opened last, valid
// until the next Open or Release. One global instance.
#pragma once

#include "resources/package_cache.h"

class ResourceManager {
public:
    char dataDirectory[260];
    char baseDirectory[260];  // installed data searched after dataDirectory; "" for none
    unsigned char* buffer;    // bytes of the resource opened last, or null
    unsigned int bufferSize;  // their count
    int cachePackages;        // 1: package directories from memory; 0: read from disk each time
    PackageCache packageCache;

    ResourceManager();
    ~ResourceManager();

    // Returns the resource's bytes (bufferSize holds the length), or null when found nowhere;
    // a failed Open leaves the previously held buffer as it was.
    unsigned char* Open(const char* name);
    // Frees the held buffer.
    void Release();
    // Writes "directory\package.vpk" into outPath (260 bytes) when a package there lists name; 1 or 0.
    int FindPackage(const char* directory, const char* name, char* outPath);
    // FindPackage that also gives the entry's data offset and size inside the package.
    int LocateInPackages(const char* directory, const char* name, char* outPath, unsigned long long* offset,
                         unsigned int* size);
};

extern ResourceManager g_resources;
