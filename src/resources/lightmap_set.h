// The baked lighting of one location: its lights (read from "light" entities),
// up to 128 pages of 256 x 256 RGB texels, one lightmap coordinate per vertex
// of every lit piece, and the allocator that hands out rectangles on the pages
// in cells of 4 x 4 texels.
//
// On disk the set is a "VLLM" block, inside a location file or alone in a file.
// The allocation map is not stored: after Parse every cell is free again, and
// a rebuild starts from a cleared set.
//
// Pages live in ordinary memory; Upload turns them into GL textures when a GL
// context is current and does nothing otherwise, so loading and baking work
// without a window.
#pragma once

class Location;
class ResourceManager;
struct FrameVertex;

struct LightmapVertex {
    unsigned int page;  // 0 to 127; 128 or more marks a triangle without a lightmap
    float u;            // texel column / 256
    float v;            // texel row / 256
};
static_assert(sizeof(LightmapVertex) == 12, "lightmap vertices are 12 bytes");

struct Light {
    unsigned char enabled;
    float position[3];
    float colour[3];
    float range;
    unsigned int flags;  // bit 0: casts shadows
};

class LightmapSet {
public:
    static constexpr int kMaxPages = 128;
    static constexpr int kMaxLights = 32;
    static constexpr int kMaxPieces = 512;
    static constexpr int kPageSize = 256;
    static constexpr int kPageBytes = 256 * 256 * 3;
    static constexpr int kCellsPerSide = 64;
    static constexpr unsigned int kNoPage = 128;

    unsigned int glTextures[kMaxPages];
    float quality;  // texels per world unit for the builder; survives Clear
    unsigned int lightCount;
    unsigned int pageCount;
    unsigned int areaCount;
    LightmapVertex* coords[kMaxPieces];
    unsigned int coordCounts[kMaxPieces];
    Light lights[kMaxLights];
    unsigned char cellFree[kMaxPages][kCellsPerSide][kCellsPerSide];
    int freeCells[kMaxPages];                           // free cells per page, kept with cellFree
    unsigned char freeInRow[kMaxPages][kCellsPerSide];  // free cells per row, likewise
    unsigned char* pages[kMaxPages];
    unsigned char sharedBlackSet;
    LightmapVertex sharedBlack;

    LightmapSet();
    ~LightmapSet();
    LightmapSet(const LightmapSet&) = delete;
    LightmapSet& operator=(const LightmapSet&) = delete;

    // Deletes the GL textures, frees pages and coordinates, frees every cell, forgets the lights.
    void Clear();
    // Adds an enabled light; returns its index, or lightCount (32) when the table is full.
    unsigned int AddLight(float x, float y, float z, float r, float g, float b, float range, int shadows);
    // Reads a "VLLM" block; returns the bytes consumed, 0 on failure (the set is then empty).
    unsigned int Parse(const unsigned char* bytes, unsigned int length);
    // Opens name through the resource manager and parses it; 1 or 0.
    int Load(ResourceManager* resources, const char* name);
    // Size in bytes of the block Serialise writes.
    unsigned int Size() const;
    // Writes the block into out (room for Size bytes); returns the bytes written.
    unsigned int Serialise(unsigned char* out) const;
    // Writes the block alone to a file (temporary file, then renamed); 1 or 0.
    int Save(const char* path) const;
    // Makes GL textures of pages 0 to pageCount-1 (nothing without a current GL context).
    void Upload();
    // Forgets the GL texture names without deleting them (their context is already gone).
    void ForgetTextures();
    // Finds and takes the first free rectangle of w x h cells; 1 with page, column, row, or 0.
    int AllocateArea(int w, int h, int* page, int* column, int* row);
    // Marks a rectangle of cells free again.
    void FreeArea(int w, int h, int page, int column, int row);
    // Bakes one triangle of piece (its three built vertices, starting at firstVertex) into a
    // rectangle and writes its three entries; out is left alone when no page has room. This is
    // the plain loop, kept as the measure for BuildLightmaps (lightmap_builder.h).
    void BuildTriangle(const FrameVertex* triangle, LightmapVertex* out, int piece, int firstVertex,
                       const Location* location);
    // Allocates page index zero-filled when it has no texels yet (counting it in pageCount).
    unsigned char* EnsurePage(int page);
};
