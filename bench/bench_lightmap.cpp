// The lightmap builders side by side: a generated level (a floor, raised
// platforms and a field of crates and pillars, lit by shadow-casting lights)
// baked once with the plain loop and once with the fast builder, the times and
// their ratio printed, and the two results compared byte for byte.
//
//   build/bench/bench_lightmap [quality] [threads] [crates]
//
// The last line is "lightmap speedup: <ratio>x (reference <ms> ms, fast <ms> ms,
// identical: yes|no)".
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "resources/lightmap_builder.h"
#include "resources/location.h"
#include "resources/model_shapes.h"

namespace {

unsigned int g_state = 12345;

float Random01() {
    g_state = g_state * 1103515245u + 12345u;
    return static_cast<float>((g_state >> 8) & 0xFFFF) / 65535.0f;
}

Model& AddPiece(Location& location, const char* name) {
    LocationPiece* piece = new LocationPiece;
    memset(piece, 0, sizeof(piece->name) + sizeof(piece->textureName));
    snprintf(piece->name, sizeof(piece->name), "%s%d", name, location.pieceCount);
    snprintf(piece->textureName, sizeof(piece->textureName), "%s.tga", name);
    location.pieces[location.pieceCount++] = piece;
    return piece->model;
}

void MakeLevel(Location& location, int crates, float quality) {
    g_state = 12345;
    AddPiece(location, "floor");
    MakeGridModel(location.pieces[0]->model, -128, 0, -128, 12.8f, 20, 0.05f);
    for (int p = 0; p < 8; p++) {
        float x = -110 + (p % 4) * 60, z = p < 4 ? -90 : 40;
        MakeGridModel(AddPiece(location, "platform"), x, 24 + 8 * (p % 3), z, 8, 6, 0.1f);
    }
    for (int c = 0; c < crates; c++) {
        float size = 6 + Random01() * 18, height = 6 + Random01() * (c % 5 == 0 ? 60 : 20);
        float x = -120 + Random01() * 220, z = -120 + Random01() * 220;
        float lo[3] = {x, 0, z}, hi[3] = {x + size, height, z + size};
        MakeBoxModel(AddPiece(location, c % 5 == 0 ? "pillar" : "crate"), lo, hi, 0.1f);
    }
    LightmapSet& set = location.lightmaps;
    set.quality = quality;
    for (int l = 0; l < 8; l++) {
        float x = -96 + (l % 4) * 64, z = l < 4 ? -60 : 60;
        set.AddLight(x, 70 + 10 * (l % 2), z, 0.5f + 0.5f * Random01(), 0.5f + 0.5f * Random01(),
                     0.5f + 0.5f * Random01(), 110, 1);
    }
}

std::vector<unsigned char> Block(const LightmapSet& set) {
    std::vector<unsigned char> bytes(set.Size());
    set.Serialise(bytes.data());
    return bytes;
}

double Milliseconds(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

int main(int argc, char** argv) {
    float quality = argc > 1 ? static_cast<float>(atof(argv[1])) : 1.6f;
    int threads = argc > 2 ? atoi(argv[2]) : 2;
    int crates = argc > 3 ? atoi(argv[3]) : 52;
    std::unique_ptr<Location> reference(new Location), fast(new Location), single(new Location);
    MakeLevel(*reference, crates, quality);
    MakeLevel(*fast, crates, quality);
    MakeLevel(*single, crates, quality);
    unsigned int triangles = 0;
    for (int i = 0; i < reference->pieceCount; i++) {
        triangles += reference->pieces[i]->model.frameTriangles;
    }
    printf("level: %d pieces, %u triangles, %u lights casting shadows, quality %.2f, %d threads\n",
           reference->pieceCount, triangles, reference->lightmaps.lightCount, quality, threads);
    fflush(stdout);

    auto start = std::chrono::steady_clock::now();
    BuildLightmapsReference(*reference);
    double referenceMs = Milliseconds(start);
    start = std::chrono::steady_clock::now();
    BuildLightmaps(*fast, threads, nullptr, nullptr);
    double fastMs = Milliseconds(start);

    // The same on one thread, to tell the shadow test's share from the threads'.
    start = std::chrono::steady_clock::now();
    BuildLightmaps(*single, 1, nullptr, nullptr);
    double singleMs = Milliseconds(start);

    int identical = Block(reference->lightmaps) == Block(fast->lightmaps) &&
                    Block(reference->lightmaps) == Block(single->lightmaps);
    printf("pages: %u, rectangles: %u\n", fast->lightmaps.pageCount, fast->lightmaps.areaCount);
    printf("fast builder on 1 thread: %.0f ms (%.1fx)\n", singleMs, referenceMs / singleMs);
    printf("lightmap speedup: %.1fx (reference %.0f ms, fast %.0f ms, identical: %s)\n", referenceMs / fastMs,
           referenceMs, fastMs, identical ? "yes" : "no");
    return identical ? 0 : 1;
}
