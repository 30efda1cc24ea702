// The lens flare: up to 100 textured elements sharing one origin point, read
// from a .vfl file (magic "VFLR"). Elements are 80-byte records kept in the
// file exactly as in memory.
//
// File layout, little-endian, no padding:
//   0   "VFLR"
//   4   file size, 24 + 80 x count
//   8   origin, 3 floats (no axis conversion)
//   20  count
//   24  count elements of 80 bytes
// The stored file size is written but not relied on when reading; a list
// whose count exceeds 100 or whose elements run past the bytes is refused.
#pragma once

#include <cstddef>

class ResourceManager;

struct FlareElement {
    char name[52];             // texture name, NUL-terminated, zero-padded
    float axisPosition;        // 0 at the screen centre, 1 at the flare source
    float halfSize;            // half the side of the element's square
    float alpha;               // opacity
    float grey;                // red = green = blue
    unsigned int unused[2];    // stored and copied, read by nothing
    unsigned char spins;       // turn by x position x 0.25 degrees
    unsigned char centreFade;  // alpha from the source's distance to the centre
    unsigned char distanceFade;
    unsigned char pad;
};

static_assert(sizeof(FlareElement) == 80, "flare elements are 80 bytes on disk");
static_assert(offsetof(FlareElement, axisPosition) == 52 && offsetof(FlareElement, unused) == 68 &&
                  offsetof(FlareElement, spins) == 76,
              "flare elements keep the file's field offsets");

class FlareList {
public:
    static const unsigned int kMaxElements = 100;
    static const unsigned int kHeaderSize = 24;

    float origin[3];
    FlareElement* elements[100];  // owned, 0..count-1 in use
    unsigned int count;

    FlareList();
    ~FlareList();

    // Frees every element; the list stays usable.
    void Clear();
    // Opens name through the resource manager and parses it; 0 with no manager or no resource.
    int Load(ResourceManager* resources, const char* name);
    // Clears, then reads a flare file from bytes; 0 on a bad magic or inconsistent bytes.
    int Parse(const unsigned char* bytes, unsigned int length);
    // Bytes Serialise writes: 24 + 80 x count.
    unsigned int Size() const;
    // Writes the file into out (Size() bytes).
    void Serialise(unsigned char* out) const;
    // Writes the file through a temporary file renamed into place; 0 when it cannot be written.
    int Save(const char* path) const;
    // Appends a copy of element; the new index, or -1 when the list is full.
    int Add(const FlareElement& element);
};

extern FlareList g_flares;
