// What one frame of each scene costs the processor: the title menu and level
// 01 of the shipped data drawn at 800 x 600 under Mesa's software rasteriser,
// each frame finished (glFinish) and swapped, timed as processor time of the
// whole process (the rasteriser's threads included) rather than wall time, so
// that a busy machine changes the figure less. The scenes are ticked between
// frames as the main loop does. Each scene is drawn in rounds with the fill
// savings of the scene draws (scissor above the HUD bar, opaque pieces nearest first,
// the title keyboard's depth before the garden, text glyphs off the canvas
// not sent) off and on, interleaved; prints milliseconds per frame, what
// 50 frames a second cost in centiseconds per 10 s, the ratio, and the largest
// pixel difference between one frame drawn both ways.
//
//   cd build/run && xvfb-run -a -s "-screen 0 1024x768x24" ../bench/bench_scene_frame [frames per round]
#include <GL/gl.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

#include "app/gl_window.h"
#include "app/scene_hooks.h"
#include "game/game_state.h"
#include "game/game_update.h"
#include "game/level_loading.h"
#include "render/game_view.h"
#include "render/hud_draw.h"
#include "render/menu_scene.h"
#include "resources/resource_manager.h"
#include "resources/texture_manager.h"
#include "ui/engine_texts.h"

static double ProcessSeconds() {
    timespec t;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return t.tv_sec + t.tv_nsec * 1e-9;
}

// Ticks and draws frames; the processor milliseconds per frame.
static double TimeFrames(int frames, void (*tick)(), void (*draw)()) {
    for (int i = 0; i < 20; i++) {
        tick();
        g_window.BeginFrame();
        draw();
        g_window.SwapBuffers();
    }
    glFinish();
    double start = ProcessSeconds();
    for (int i = 0; i < frames; i++) {
        tick();
        g_window.BeginFrame();
        draw();
        glFinish();
        g_window.SwapBuffers();
    }
    return (ProcessSeconds() - start) * 1000.0 / frames;
}

static void SetSavings(int on) {
    g_sceneScissor = on;
    g_piecesFrontToBack = on;
    g_menuDepthFirst = on;
    g_skipOffCanvasGlyphs = on;
}

static std::vector<unsigned char> DrawOnce(void (*draw)()) {
    std::vector<unsigned char> pixels(800 * 600 * 3);
    g_window.BeginFrame();
    draw();
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, 800, 600, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
    return pixels;
}

// Rounds of frames with the savings off and on; prints the figures of one scene.
static void Compare(const char* name, int frames, void (*tick)(), void (*draw)()) {
    double off = 0, on = 0;
    const int rounds = 3;
    for (int r = 0; r < rounds; r++) {
        SetSavings(0);
        off += TimeFrames(frames, tick, draw) / rounds;
        SetSavings(1);
        on += TimeFrames(frames, tick, draw) / rounds;
    }
    SetSavings(0);
    std::vector<unsigned char> plain = DrawOnce(draw);
    SetSavings(1);
    std::vector<unsigned char> saved = DrawOnce(draw);
    int worst = 0;
    for (size_t i = 0; i < plain.size(); i++) {
        int d = abs(plain[i] - saved[i]);
        worst = d > worst ? d : worst;
    }
    printf(
        "%s: %.2f ms per frame plain, %.2f ms with the savings (%.0f and %.0f cs/10 s at 50 frames a "
        "second), "
        "ratio %.2f, largest pixel difference %d\n",
        name, off, on, off * 50, on * 50, off / on, worst);
}

int main(int argc, char** argv) {
    int frames = argc > 1 ? atoi(argv[1]) : 100;
    if (!g_window.Create("bench_scene_frame", 800, 600, 0)) {
        fprintf(stderr, "no window\n");
        return 1;
    }
    g_window.lightFactor = 1.0f;
    FillEngineTextBatches();
    g_textures.resources = &g_resources;
    InitGame();
    LoadMenuScene();
    g_scene = SceneMenu;
    animClock = 0;
    Compare("title", frames, UpdateMenu, DrawMenu);
    lives = 3;
    level = 1;
    LoadLevel();
    if (g_scene == SceneGame) {
        Compare("level01", frames, UpdateGame, DrawGameView);
    } else {
        printf("level01: not in the data\n");
    }
    g_textures.Purge();
    g_window.Destroy();
    return 0;
}
