#include "app/resource_commands.h"

#include "app/console.h"
#include "app/frame_timer.h"
#include "app/gl_window.h"
#include "app/scene_hooks.h"
#include "game/level_loading.h"
#include "render/loading_screen.h"
#include "resources/location.h"
#include "resources/resource_manager.h"
#include "resources/screen_texture.h"
#include "resources/texture_manager.h"

void LoadLocationCommand(const char* name) {
    // A missing name leaves the level as it was and a damaged file leaves it empty; either way
    // the pre-caching binds what the level now holds.
    g_location.Load(&g_resources, name);
    if (!kPrecacheTextures) {
        return;
    }
    uint32_t start = g_timer.Now();
    PrecacheLocationTextures(g_location);
    // The time spent here must not come back as catch-up ticks.
    g_timer.Elapsed(TimerUpdate);
    g_console.Print("Texture set cached (%dms)", static_cast<int>(g_timer.Now() - start));
}

// The bake reports after each batch of triangles; the bar is drawn again when it has grown
// by a hundredth, and at the end, so a quick bake is not slowed down by swaps.
struct BakeProgress {
    float shown;
};

static void ShowLightmapProgress(float fraction, void* context) {
    BakeProgress* progress = static_cast<BakeProgress*>(context);
    if (fraction < progress->shown + 0.01f && fraction < 1.0f) {
        return;
    }
    progress->shown = fraction;
    DrawLoadingScreen("gui_lighting.tga", "LIGHTING", fraction);
    g_window.SwapBuffers();
}

void BuildLightmapsCommand() {
    uint32_t start = g_timer.Now();
    g_location.lightmaps.Clear();
    DrawLoadingScreen("gui_lighting.tga", "LIGHTING", 0.0f);
    g_window.SwapBuffers();
    // A long bake must not look like a hang: the loading bar follows it.
    BakeProgress progress = {0.0f};
    g_location.RebuildLighting(ShowLightmapProgress, &progress);
    g_console.Print("Lightmaps processed (%dms)", static_cast<int>(g_timer.Now() - start));
    // A long bake must not come back as catch-up ticks.
    g_timer.Elapsed(TimerUpdate);
}

float* LevelLightmapQuality() {
    return &g_location.lightmaps.quality;
}

void ReuploadLightmaps() {
    // The old names belonged to the context that is gone: deleting them would hit the new one's.
    g_location.lightmaps.ForgetTextures();
    g_location.lightmaps.Upload();
    g_menuLocation.lightmaps.ForgetTextures();
    g_menuLocation.lightmaps.Upload();
}

void PrecacheLevelTextures() {
    PrecacheLocationTextures(g_location);
}

static void AttachTextureManager() {
    g_textures.resources = &g_resources;
}

static void PurgeTextures() {
    g_textures.Purge();
}

// Sized for the window; with no window (a failed restart) there is nothing to size it for.
static void CreateScreenTexture() {
    if (!g_window.renderContext) {
        return;
    }
    g_screenTexture.CreateForWindow(static_cast<unsigned int>(g_window.width),
                                    static_cast<unsigned int>(g_window.height));
}

static void ReleaseScreenTexture() {
    g_screenTexture.Release();
}

static void CaptureScreenTexture() {
    g_screenTexture.Capture();
}

static void ScreenTextureSize(int* width, int* height) {
    *width = static_cast<int>(g_screenTexture.width);
    *height = static_cast<int>(g_screenTexture.height);
}

void InstallResourceHooks() {
    g_hooks.attachTextureManager = AttachTextureManager;
    g_hooks.createScreenTexture = CreateScreenTexture;
    g_hooks.releaseScreenTexture = ReleaseScreenTexture;
    g_hooks.captureScreenTexture = CaptureScreenTexture;
    g_hooks.screenTextureSize = ScreenTextureSize;
    g_hooks.purgeTextures = PurgeTextures;
    g_hooks.precacheLocationTextures = PrecacheLevelTextures;
    g_hooks.reuploadLightmaps = ReuploadLightmaps;
    g_hooks.locationLoad = LoadLocationCommand;
    g_hooks.lightmapBuild = BuildLightmapsCommand;
    g_hooks.lightmapQuality = LevelLightmapQuality;
}
