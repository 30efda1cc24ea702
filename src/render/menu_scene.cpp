#include "render/menu_scene.h"

#include <strings.h>

#include <cmath>
#include <cstring>

#include "app/console.h"
#include "app/gl_window.h"
#include "app/random.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "audio/music_player.h"
#include "game/game_state.h"
#include "game/level_loading.h"
#include "game/particles.h"
#include "render/loading_screen.h"
#include "resources/flare_list.h"
#include "resources/location.h"
#include "resources/mesh.h"
#include "resources/model.h"
#include "resources/resource_manager.h"
#include "resources/texture_manager.h"
#include "ui/text_batch.h"

Model* g_dancerModel;
float g_dancerFrame;
uint32_t g_dancerFrames[2];
float g_creditsX = 800.0f;
PianoEvent g_pianoEvents[kPianoMaxEvents];
uint32_t g_pianoEventCount;
uint32_t g_pianoTick;
uint8_t g_keyDown[kPianoKeyCount];
int32_t g_menuMusicStarted;

const char kCreditsLine[] =
    "Vantle 2 . . . a platform game in a garden of keys, doors and giant feet . . . "
    "made in 2026 by the Vantle 2 project . . . "
    "drawn with OpenGL through Mesa and the GL Utility library . . . "
    "windows, keys and joysticks by SDL 2 . . . "
    "sound by OpenAL Soft, music in Ogg Vorbis through libogg, libvorbis and vorbisfile . . . "
    "letters rasterised by FreeType from the DejaVu fonts . . . "
    "built with GCC and CMake, tested with GoogleTest, Xvfb, xdotool and ImageMagick . . . "
    "on Debian GNU/Linux . . . "
    "thank you to everyone who writes and keeps these libraries and fonts free . . . "
    "and thank you for playing!";

// Texture binds need a GL context; a headless run only loads.
static void BindTexture(const char* name) {
    if (g_window.renderContext) {
        g_textures.Bind(name);
    }
}

static void LoadModel(Model& model, const char* file, const char* texture) {
    model.Load(&g_resources, file);
    if (model.frameCount) {
        model.BuildFrame(0, 0, 0.0f);
    }
    BindTexture(texture);
}

static void PrecacheMenuTextures() {
    for (unsigned int i = 0; i < g_flares.count; i++) {
        BindTexture(g_flares.elements[i]->name);
    }
    BindTexture(nullptr);
    PrecacheLocationTextures(g_menuLocation);
}

void LoadMenuScene() {
    if (!g_menuLocation.Load(&g_resources, "logo\\logo.vlc")) {
        g_console.Print("Error loading logo file!");
    }
    g_menuLocation.SetupLighting(1);
    g_levelTitleText.SetTextF(0, "%s", g_menuLocation.name);
    g_levelTitleText.Build();
    PrecacheMenuTextures();
    g_window.flashIntensity = 1.0f;
    LoadModel(g_keyboardModel, "logo\\keyboard.vmd", "logo\\keyboard.tga");
    LoadModel(g_logoTextModel, "logo\\3d.vmd", "logo\\logotext_3d.tga");
    ReleaseMenuScene();
    g_dancerModel = new Model();
    LoadModel(*g_dancerModel, "logo\\delver.vmd", "delver.tga");
    g_dancerFrame = 3.0f;
    g_dancerFrames[0] = g_dancerFrames[1] = 0;
    g_pianoEventCount = 0;
    memset(g_keyDown, 0, sizeof(g_keyDown));
    g_logoText.Reset();
    g_logoText.AddEntry(kCreditsLine, 0.0f, 0.0f, 10000.0f, 23.0f, 1.0f, 0);
    g_logoText.Build();
    g_flares.Load(&g_resources, "test.vfl");
}

void ReleaseMenuScene() {
    delete g_dancerModel;
    g_dancerModel = nullptr;
}

int MenuStartKey() {
    if (animClock <= 1.0f) {
        return 0;
    }
    for (int k = 13; k <= 149; k++) {
        // 14 to 29: Shift, Control, Alt, Pause, Caps Lock, Escape and the input-method keys.
        if (k >= 14 && k <= 29) {
            continue;
        }
        if (g_window.keys[k]) {
            return k;
        }
    }
    return 0;
}

static void StartGame(int key) {
    g_window.keys[key] = 0;
    g_menuMusicStarted = 0;
    lives = 3;
    level = 1;
    memset(g_keyDown, 0, sizeof(g_keyDown));
    DrawLoadingScreen("gui_loading.tga", "LOADING", 0.0f);
    g_window.SwapBuffers();
    LoadLevel();
}

int LoadPianoRoll() {
    g_pianoEventCount = 0;
    unsigned char* bytes = g_resources.Open("piano.vpr");
    if (!bytes) {
        return 0;
    }
    unsigned int count = 0;
    int read = ParsePianoRoll(bytes, g_resources.bufferSize, g_pianoEvents, &count) != 0;
    g_resources.Release();
    g_pianoEventCount = count;
    return read;
}

void StepPianoRoll() {
    for (uint32_t i = 0; i < g_pianoEventCount; i++) {
        if (g_pianoEvents[i].tick == g_pianoTick) {
            g_keyDown[g_pianoEvents[i].key] = g_pianoEvents[i].state;
        }
    }
    g_pianoTick++;
    if (g_pianoTick >= kPianoLoopTicks) {
        g_pianoTick = 0;
    }
}

static void StartMusicAndRoll() {
    if (g_menuMusicStarted || !kSoundEnabled) {
        return;
    }
    g_menuMusicStarted = 1;
    g_music.PlayMusic("sound\\music_menu.ogg");
    LoadPianoRoll();
    // The roll starts at tick 9: the music's first notes sound a little after it starts.
    g_pianoTick = 9;
}

static void MoveKeys() {
    for (int i = 0; i < kPianoKeyCount; i++) {
        const PianoKeyTravel& key = kPianoKeys[i];
        if (g_keyDown[i]) {
            PressKey(key.keyNumber, key.pressedZ);
        } else {
            RaiseKey(key.keyNumber, key.restZ);
        }
    }
}

// Sway of one piece: x (and z for the tree) swing about the pivot height in proportion
// to the height above it.
struct Sway {
    const char* piece;
    float pivot;
    float amount;
    float rate;
    int kind;  // 0 x by sin(rate t), 1 x by sin(rate t + y), 2 x by sin t and z by cos t
};

static const Sway kSways[] = {
    {"plant1", 60, 0.002f, 6.1f, 0},     {"plant2", 60, 0.003f, 3.9f, 0},
    {"plant3", 60, 0.002f, 4.2f, 0},     {"plant4", 60, 0.002f, 3.2f, 0},
    {"plant5", 60, 0.002f, 4.2f, 0},     {"plant6", 60, 0.002f, 4.2f, 0},
    {"bushes", 60, 0.001f, 1.2f, 1},     {"tree_leaves", 60, 0.001f, 1.0f, 2},
    {"tree_trunk", 45, 0.001f, 1.0f, 2},
};

static void SwayVertices(Model& model, const Sway& sway, float t) {
    unsigned int count = model.frameTriangles * 3;
    for (unsigned int i = 0; i < count; i++) {
        float* p = model.frameVertices[i].position;
        float lever = (p[1] - sway.pivot) * sway.amount;
        if (sway.kind == 0) {
            p[0] += lever * sinf(sway.rate * t);
        } else if (sway.kind == 1) {
            p[0] += lever * sinf(sway.rate * t + p[1]);
        } else {
            p[0] += lever * sinf(t);
            p[2] += lever * cosf(t);
        }
    }
}

static void SpawnLeaf(const LocationPiece& piece) {
    const Mesh* frame = piece.model.frames[0];
    if (!frame) {
        return;
    }
    ParticleSpawn s;
    memset(&s, 0, sizeof(s));
    s.texture = "particle_leaf.tga";
    s.position[0] = frame->centre[0] + 20.0f - Rand() % 40;
    s.position[1] = frame->centre[1] + 15.0f - Rand() % 30;
    s.position[2] = frame->centre[2];
    s.velocity[0] = 0.005f;
    s.velocity[1] = -0.32f;
    s.acceleration[0] = 0.005f;
    s.rotation = static_cast<float>(Rand() % 360);
    for (int k = 0; k < 3; k++) {
        s.colourStart[k] = s.colourEnd[k] = 0.6f;
    }
    s.sizeStart[0] = s.sizeStart[1] = s.sizeEnd[0] = s.sizeEnd[1] = 4.0f;
    s.alphaStart = 1.0f;
    s.frameCount = 1;
    s.lastFrame = 1;
    s.lifeRate = 0.0005f + (Rand() % 100) / 100.0f * 0.001f;
    SpawnParticle(s);
}

static void AnimateScenery() {
    float t = animClock;
    for (int i = 0; i < g_menuLocation.pieceCount; i++) {
        LocationPiece* piece = g_menuLocation.pieces[i];
        if (!piece || !piece->model.frameVertices) {
            continue;
        }
        if (strcmp(piece->name, "clouds") == 0) {
            unsigned int count = piece->model.frameTriangles * 3;
            for (unsigned int v = 0; v < count; v++) {
                piece->model.frameVertices[v].texCoord[0] -= 0.00025f;
            }
            continue;
        }
        for (const Sway& sway : kSways) {
            if (strcmp(piece->name, sway.piece) == 0) {
                SwayVertices(piece->model, sway, t);
            }
        }
        if (strcmp(piece->name, "tree_leaves") == 0 && Rand() % 50 == 0) {
            SpawnLeaf(*piece);
        }
    }
}

static void SpawnMenuSparkle() {
    if (Rand() % 10 != 0) {
        return;
    }
    ParticleSpawn s;
    memset(&s, 0, sizeof(s));
    s.texture = "particle_sparkle.tga";
    s.position[0] = static_cast<float>(Rand() % 20) - 90.0f;
    s.position[1] = 20.0f;
    s.position[2] = -208.0f;
    s.rotation = static_cast<float>(Rand() % 360);
    for (int k = 0; k < 3; k++) {
        s.colourStart[k] = s.colourEnd[k] = 1.0f;
    }
    s.sizeStart[0] = s.sizeStart[1] = s.sizeEnd[0] = s.sizeEnd[1] = 32.0f;
    s.alphaStart = 1.0f;
    s.frameCount = 16;
    s.lastFrame = 15;
    s.frame = static_cast<float>(Rand() % 10);
    s.frameRate = 0.2f;
    s.lifeRate = 0.05f;
    SpawnParticle(s);
}

static void SpawnSmoke(const LocationEntity& entity) {
    if (Rand() % 10 >= 5) {
        return;
    }
    ParticleSpawn s;
    memset(&s, 0, sizeof(s));
    s.texture = "particle_fire.tga";
    memcpy(s.position, entity.position, sizeof(s.position));
    s.velocity[1] = 0.32f;
    s.acceleration[0] = 0.005f;
    // The final size is drawn before the rotation: the order fixes which numbers of the one
    // sequence each puff takes.
    float grow = static_cast<float>(Rand() % 10);
    s.rotation = static_cast<float>(Rand() % 360);
    for (int k = 0; k < 3; k++) {
        s.colourStart[k] = s.colourEnd[k] = 1.0f;
    }
    s.sizeStart[0] = s.sizeStart[1] = 4.0f;
    s.sizeEnd[0] = s.sizeEnd[1] = 16.0f + grow;
    s.alphaStart = 1.0f;
    s.frameCount = 16;
    s.firstFrame = 6;
    s.lastFrame = 15;
    s.loopFrame = 14;
    s.frameRate = 2.2f;
    s.lifeRate = 0.005f + (Rand() % 100) / 100.0f * 0.01f;
    SpawnParticle(s);
}

static void AnimateDancer() {
    g_dancerFrame += 0.45f;
    if (g_dancerFrame >= 9.0f) {
        g_dancerFrame = 0.0f;
    }
    uint32_t whole = static_cast<uint32_t>(g_dancerFrame);
    if (whole != g_dancerFrames[1]) {
        g_dancerFrames[0] = g_dancerFrames[1];
        g_dancerFrames[1] = whole;
    }
    if (g_dancerModel && g_dancerModel->frameCount) {
        g_dancerModel->BuildFrame(g_dancerFrames[0], g_dancerFrames[1], g_dancerFrame - g_dancerFrames[1]);
    }
}

void UpdateMenu() {
    animClock += 0.02f;
    g_creditsX -= 5.0f;
    if (g_creditsX < -12000.0f) {
        g_creditsX = 800.0f;
    }
    g_camera.position = Vec3{5.9f, 48.0f, 660.5f};
    g_camera.pitch = 4.6f;
    g_camera.yaw = 180.0f;
    g_camera.roll = 0.0f;
    if (g_window.flashIntensity > 0.0f) {
        g_window.flashIntensity -= 0.1f;
    }
    g_window.fov = 20.0f;
    int key = MenuStartKey();
    if (key) {
        StartGame(key);
        return;
    }
    StartMusicAndRoll();
    StepPianoRoll();
    MoveKeys();
    UpdateParticles();
    AnimateScenery();
    SpawnMenuSparkle();
    for (int e = 0; e < g_menuLocation.entityCount; e++) {
        const LocationEntity* entity = g_menuLocation.entities[e];
        if (entity && strcasecmp(entity->name, "smoke") == 0) {
            SpawnSmoke(*entity);
        }
    }
    AnimateDancer();
}
