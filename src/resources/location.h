// A location: one level or scene. Named pieces of geometry (each an embedded
// model with a texture name), named entities (markers with a position, three
// angles and a parameter text the game interprets), and the baked lighting.
//
// On disk a location is a "VLOC" header and tagged blocks: "VLST" pieces,
// "VLEN" entities, "VLLM" lightmaps, ended by "VEND". Blocks may come in any
// order and unknown ones are skipped by their size. The reader takes (bytes,
// length) and refuses anything inconsistent: counts over 512, strings or
// models running past their block, lightmap coordinates that do not match
// their piece, a missing "VEND". A refused file leaves the location empty.
#pragma once

#include "resources/lightmap_set.h"
#include "resources/model.h"

class ResourceManager;

// Piece flag bits of the piece model's modelFlag, as the format stores them.
enum {
    kPieceReceivesNoShadow = 0x01,
    kPieceCastsNoShadow = 0x02,
    kPieceGlLit = 0x04,  // drawn with GL lights instead of its lightmap
    kPieceNoCull = 0x08,
    kPieceHidden = 0x10,
    kPieceSolid = 0x40
};

struct LocationPiece {
    char name[50];
    char textureName[260];
    Model model;
};

struct LocationEntity {
    char name[50];
    float position[3];  // memory convention, y up
    float rotation[3];  // degrees, as stored in the file
    char* params;       // owned, NUL-terminated, never null once parsed

    LocationEntity();
    ~LocationEntity();
    LocationEntity(const LocationEntity&) = delete;
    LocationEntity& operator=(const LocationEntity&) = delete;
};

class Location {
public:
    static const int kMaxPieces = 512;
    static const int kMaxEntities = 512;

    char name[50];
    unsigned short pieceCount;
    unsigned short entityCount;
    LocationPiece* pieces[kMaxPieces];
    LocationEntity* entities[kMaxEntities];
    LightmapSet lightmaps;

    Location();
    ~Location();
    Location(const Location&) = delete;
    Location& operator=(const Location&) = delete;

    // Destroys every piece and entity and empties the name; the lightmap set is left alone.
    void Clear();
    // Reads a whole "VLOC" file; returns the offset of its "VEND" tag, 0 on failure.
    unsigned int Parse(const unsigned char* bytes, unsigned int length);
    // Opens name through the resource manager and parses it; 1 or 0.
    int Load(ResourceManager* resources, const char* name);
    // Size in bytes of the file Serialise writes.
    unsigned int Size() const;
    // Writes the location into out (room for Size bytes); returns the bytes written.
    unsigned int Serialise(unsigned char* out) const;
    // Writes the location to a file (temporary file, then renamed); 1 or 0.
    int Save(const char* path) const;
    // Reads the lights from the "light" entities; keep = 0 also rebakes every lightmap.
    void SetupLighting(int keep);
    // As SetupLighting(0), reporting the fraction of triangles baked as it goes.
    void RebuildLighting(void (*progress)(float fraction, void* context), void* context);
};

// The closing scenes' scenery.
extern Location closingLocation;
// The title menu's scenery.
extern Location g_menuLocation;
// The location being played.
extern Location g_location;
