// vantle-levelinfo [--bake] NAME...: loads each location (for example
// "levels\03.vlc") from data/ with the engine's own loader and prints one line:
//   levels\03.vlc: pieces 19, entities 30, triangles 1180, bake 640 ms, name The Nettle Walk
// The bake is the lightmap build the content build runs, timed again here
// (only with --bake). Exit status 1 when a location does not load.
#include <cstdio>
#include <cstring>

#include "platform/sys_clock.h"
#include "resources/location.h"
#include "resources/mesh.h"
#include "resources/model.h"
#include "resources/resource_manager.h"

static int Triangles(const Location& location) {
    int count = 0;
    for (int i = 0; i < location.pieceCount; i++) {
        const LocationPiece* piece = location.pieces[i];
        if (piece && piece->model.frames[0]) {
            count += piece->model.frames[0]->faceCount;
        }
    }
    return count;
}

int main(int argc, char** argv) {
    int bake = 0, status = 0;
    static Location location;  // large: kept out of the stack
    for (int i = 1; i < argc; i++) {
        if (strcmp(argv[i], "--bake") == 0) {
            bake = 1;
            continue;
        }
        if (!location.Load(&g_resources, argv[i])) {
            fprintf(stderr, "vantle-levelinfo: %s does not load\n", argv[i]);
            status = 1;
            continue;
        }
        printf("%s: pieces %i, entities %i, triangles %i", argv[i], location.pieceCount, location.entityCount,
               Triangles(location));
        if (bake) {
            uint32_t start = Sys_TickCount();
            location.RebuildLighting(nullptr, nullptr);
            printf(", bake %u ms", Sys_TickCount() - start);
        }
        printf(", name %s\n", location.name);
    }
    return status;
}
