// Location files: any bytes must parse or fail cleanly, and what parses must
// serialise into a file that parses again. (Not necessarily into the same bytes:
// corner normals are rescaled and ".\" prefixes stripped on every read.)
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "fuzz_seeds.h"
#include "resources/location.h"
#include "resources/model_shapes.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static Location* location = new Location;  // large: made once, emptied after each input
    if (location->Parse(data, static_cast<unsigned int>(size))) {
        std::vector<unsigned char> out(location->Size());
        location->Serialise(out.data());
        if (!location->Parse(out.data(), static_cast<unsigned int>(out.size()))) {
            abort();  // what we write we must read back
        }
    }
    location->Clear();
    location->lightmaps.Clear();
    return 0;
}

static void AddLocation(FuzzSeedList& seeds, const Location& location) {
    std::vector<unsigned char> bytes(location.Size());
    location.Serialise(bytes.data());
    AddSeed(seeds, bytes.data(), bytes.size());
}

void VantleFuzzSeeds(FuzzSeedList& seeds) {
    std::unique_ptr<Location> location(new Location);
    strcpy(location->name, "fuzz");
    AddLocation(seeds, *location);
    float lo[3] = {0, 0, 0}, hi[3] = {5, 1, 5};
    for (int i = 0; i < 2; i++) {
        LocationPiece* piece = new LocationPiece;
        memset(piece->name, 0, sizeof(piece->name));
        memset(piece->textureName, 0, sizeof(piece->textureName));
        strcpy(piece->name, i ? "floor" : "box");
        strcpy(piece->textureName, ".\\stone.tga");
        if (i) {
            MakeGridModel(piece->model, 0, 0, 0, 2, 1, 1);
        } else {
            MakeBoxModel(piece->model, lo, hi, 1);
        }
        location->pieces[location->pieceCount++] = piece;
    }
    for (const char* name : {"player", "light1"}) {
        LocationEntity* entity = new LocationEntity;
        strcpy(entity->name, name);
        entity->params = strdup("color=1,1,1\r\ndist=50");
        entity->position[1] = 3;
        location->entities[location->entityCount++] = entity;
    }
    AddLocation(seeds, *location);
    LightmapSet& set = location->lightmaps;
    unsigned n = location->pieces[1]->model.frameTriangles * 3;
    set.coords[1] = static_cast<LightmapVertex*>(calloc(n, sizeof(LightmapVertex)));
    set.coordCounts[1] = n;
    set.EnsurePage(0);
    AddLocation(seeds, *location);
}
