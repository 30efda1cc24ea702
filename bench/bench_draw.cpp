// Lightmapped drawing, literal against batched, side by side in one window:
// a 6,000-triangle landscape over 16 lightmap pages at 800 x 600 under Mesa's
// software rasteriser, the frame finished (glFinish) every time, the rounds of
// the two paths interleaved so that both see the same machine. Prints the
// largest pixel difference between the two pictures, then the ratio.
//
//   xvfb-run -a -s "-screen 0 1280x1024x24" build/bench/bench_draw [frames per round] [rounds]
#include <GL/gl.h>
#include <GL/glu.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "app/gl_window.h"
#include "platform/sys_clock.h"
#include "render/lightmap_batch.h"
#include "render/lightmap_draw.h"
#include "resources/lightmap_set.h"

static const int kColumns = 60;
static const int kRows = 50;
static const int kPages = 16;

struct Scene {
    std::vector<float> vertices;
    std::vector<LightmapVertex> coords;
    unsigned int triangles = 0;
    GLuint base = 0;
    GLuint pages[LightmapSet::kMaxPages] = {};
};

static float Height(int x, int z) {
    return 30.0f * sinf(x * 0.3f) * cosf(z * 0.25f);
}

static void AddVertex(Scene& scene, int x, int z, unsigned int page, int cellX, int cellZ) {
    float wx = (x - kColumns / 2) * 20.0f, wz = -z * 20.0f;
    const float vertex[8] = {wx, Height(x, z), wz, 0, 1, 0, x * 0.25f, z * 0.25f};
    scene.vertices.insert(scene.vertices.end(), vertex, vertex + 8);
    // Each page holds 8 x 8 blocks of cells, as the lightmap builder packs faces.
    float u = ((cellX % 8) * 32 + (x - cellX) * 31 + 0.5f) / 256.0f;
    float v = ((cellZ % 8) * 32 + (z - cellZ) * 31 + 0.5f) / 256.0f;
    scene.coords.push_back(LightmapVertex{page, u, v});
}

// A rolling landscape seen from above one edge; neighbouring 4 x 4 blocks of cells use
// different pages.
static void BuildScene(Scene& scene) {
    for (int z = 0; z < kRows; z++) {
        for (int x = 0; x < kColumns; x++) {
            unsigned int page = static_cast<unsigned int>(((x / 4) + (z / 4) * 3) % kPages);
            AddVertex(scene, x, z, page, x, z);
            AddVertex(scene, x + 1, z, page, x, z);
            AddVertex(scene, x + 1, z + 1, page, x, z);
            AddVertex(scene, x, z, page, x, z);
            AddVertex(scene, x + 1, z + 1, page, x, z);
            AddVertex(scene, x, z + 1, page, x, z);
            scene.triangles += 2;
        }
    }
}

// Pages are uploaded as the lightmap set does (one level, linear); the base texture as the
// texture manager uploads a 24-bit image (mipmapped).
static GLuint MakeTexture(int seed, bool mipmaps) {
    std::vector<unsigned char> texels(256 * 256 * 3);
    for (int y = 0; y < 256; y++) {
        for (int x = 0; x < 256; x++) {
            unsigned char* t = &texels[(y * 256 + x) * 3];
            t[0] = static_cast<unsigned char>(x ^ (seed * 37));
            t[1] = static_cast<unsigned char>(y + seed * 11);
            t[2] = static_cast<unsigned char>((x + y) / 2);
        }
    }
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    if (mipmaps) {
        gluBuild2DMipmaps(GL_TEXTURE_2D, 3, 256, 256, GL_RGB, GL_UNSIGNED_BYTE, texels.data());
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_NEAREST);
    } else {
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, 256, 256, 0, GL_RGB, GL_UNSIGNED_BYTE, texels.data());
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    }
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    return texture;
}

static void DrawFrame(const Scene& scene, int mode) {
    g_lightmapDrawMode = mode;
    g_window.BeginFrame();
    const float camera[6] = {0.0f, 260.0f, 120.0f, 30.0f, 180.0f, 0.0f};
    for (int i = 0; i < 6; i++) {
        g_window.renderCamera[i] = camera[i];
    }
    g_window.SetCamera();
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, scene.base);
    g_window.DrawLightmappedMesh(scene.vertices.data(), scene.triangles, scene.coords.data(), scene.pages, 0,
                                 0, 0, 0, 0, 0, 1, 1, 1);
    glFinish();
}

static std::vector<unsigned char> ReadBack() {
    std::vector<unsigned char> pixels(g_window.width * g_window.height * 3);
    glReadBuffer(GL_BACK);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, g_window.width, g_window.height, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
    return pixels;
}

// Milliseconds per frame over frames frames of one path.
static double TimeFrames(const Scene& scene, int mode, int frames) {
    int64_t start = Sys_PerformanceCounter();
    for (int i = 0; i < frames; i++) {
        DrawFrame(scene, mode);
    }
    int64_t ticks = Sys_PerformanceCounter() - start;
    return 1000.0 * ticks / Sys_PerformanceFrequency() / frames;
}

int main(int argc, char** argv) {
    int frames = argc > 1 ? atoi(argv[1]) : 10;
    int rounds = argc > 2 ? atoi(argv[2]) : 3;
    if (frames < 1 || rounds < 1) {
        fprintf(stderr, "usage: bench_draw [frames per round] [rounds]\n");
        return 1;
    }
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 0);
    if (!g_window.Create("bench_draw", 800, 600, 0)) {
        fprintf(stderr, "bench_draw: no GL window (run inside xvfb-run)\n");
        return 1;
    }
    printf("renderer: %s\n", reinterpret_cast<const char*>(glGetString(GL_RENDERER)));
    printf("multitexture: %s\n", Lightmap_UseMultitexture() ? "yes" : "no (blending)");
    Scene scene;
    BuildScene(scene);
    scene.base = MakeTexture(0, true);
    for (int p = 0; p < kPages; p++) {
        scene.pages[p] = MakeTexture(p + 1, false);
    }
    printf("scene: %u triangles over %d pages at %dx%d\n", scene.triangles, kPages, g_window.width,
           g_window.height);

    DrawFrame(scene, LightmapDrawLiteral);
    std::vector<unsigned char> literalPicture = ReadBack();
    DrawFrame(scene, LightmapDrawBatched);  // builds the batch once
    std::vector<unsigned char> batchedPicture = ReadBack();
    int worst = 0;
    long drawn = 0;
    for (size_t i = 0; i < literalPicture.size(); i++) {
        int d = abs(literalPicture[i] - batchedPicture[i]);
        worst = d > worst ? d : worst;
        drawn += literalPicture[i] > 0;
    }
    printf("largest channel difference between the pictures: %d (%ld non-black channels)\n", worst, drawn);

    double literal = 0.0, batched = 0.0;
    for (int r = 0; r < rounds; r++) {
        literal += TimeFrames(scene, LightmapDrawLiteral, frames);
        batched += TimeFrames(scene, LightmapDrawBatched, frames);
    }
    literal /= rounds;
    batched /= rounds;
    // The same comparison for drivers without multitexture (two passes per triangle).
    g_lightmapForceBlend = 1;
    double literalBlended = TimeFrames(scene, LightmapDrawLiteral, frames);
    double batchedBlended = TimeFrames(scene, LightmapDrawBatched, frames);
    g_lightmapForceBlend = 0;
    // With an 8 x 6 viewport almost nothing is rasterised: what is left is the cost of
    // handing the triangles to GL, which is what batching saves.
    g_window.Resize(8, 6);
    double literalSubmit = TimeFrames(scene, LightmapDrawLiteral, frames);
    double batchedSubmit = TimeFrames(scene, LightmapDrawBatched, frames);
    g_window.Resize(800, 600);
    printf("submission only (8x6 viewport): %.2fx (literal %.2f ms/frame, batched %.2f ms/frame)\n",
           literalSubmit / batchedSubmit, literalSubmit, batchedSubmit);
    printf("blending path: %.2fx (literal %.2f ms/frame, batched %.2f ms/frame)\n",
           literalBlended / batchedBlended, literalBlended, batchedBlended);
    g_lightmapBatches.Clear();
    g_window.Destroy();
    printf("lightmapped draw speedup: %.2fx (literal %.2f ms/frame, batched %.2f ms/frame)\n",
           literal / batched, literal, batched);
    return 0;
}
