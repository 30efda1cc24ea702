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
// The manager holds one buffer: the bytes of the resource opened last, valid
// until the next Open or Release. One global instance.
#pragma once

class ResourceManager {
public:
    char dataDirectory[260];
    unsigned char* buffer;      // bytes of the resource opened last, or null
    unsigned int bufferSize;    // their count

    ResourceManager();
    ~ResourceManager();

    // Returns the resource's bytes (bufferSize holds the length), or null when found nowhere;
    // a failed Open leaves the previously held buffer as it was.
    unsigned char* Open(const char* name);
    // Frees the held buffer.
    void Release();
    // Writes "directory\package.vpk" into outPath (260 bytes) when a package there lists name; 1 or 0.
    int FindPackage(const char* directory, const char* name, char* outPath);
};

extern ResourceManager g_resources;
