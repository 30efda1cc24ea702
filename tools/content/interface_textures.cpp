#include "interface_textures.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "font_raster.h"
#include "image.h"
#include "materials.h"
#include "noise.h"
#include "paint.h"
#include "resources/flare_list.h"

const char* const kFlareTextures[4] = {"flare\\glow.tga", "flare\\ring.tga", "flare\\disc.tga",
                                       "flare\\streak.tga"};

static void AddTga(AssetList* list, const char* name, const Image& img, bool force32 = false) {
    list->Add(name, CONTENT_BASE_PACKAGE, EncodeTga(img, force32));
}

bool GenerateFonts(AssetList* list, const std::string& fontDirectory, std::string* error) {
    // Console and panels: plain, white, so any text colour tints it.
    const FontStyle console = {"DejaVuSans.ttf",   24,           0, Rgb(255, 255, 255),
                               Rgb(255, 255, 255), Rgb(0, 0, 0), 0};
    // HUD: bold white with a dark outline, readable over any scenery.
    const FontStyle hud = {"DejaVuSans-Bold.ttf", 22, 2, Rgb(255, 255, 255), Rgb(225, 230, 240),
                           Rgb(20, 20, 30),       0};
    // Credits: a serif italic in warm gold with a drop shadow.
    const FontStyle credits = {
        "DejaVuSerif-BoldItalic.ttf", 22, 1, Rgb(255, 240, 170), Rgb(220, 150, 50), Rgb(40, 20, 0), 2};
    const FontStyle* styles[3] = {&console, &hud, &credits};
    const char* names[3] = {"gui_font.tga", "gui_font2.tga", "gui_font3.tga"};
    for (int i = 0; i < 3; i++) {
        Image img;
        if (!RasteriseFont(fontDirectory, *styles[i], &img, error)) {
            return false;
        }
        AddTga(list, names[i], img, true);
    }
    return true;
}

// A banded bar for the level title: light wood with a carved groove at each edge.
static Image LevelBar() {
    Image img = MakeWood(256, Rgb(214, 182, 132), 2, 41);
    Image bar(512, 64);
    for (int y = 0; y < 64; y++) {
        for (int x = 0; x < 512; x++) {
            Colour c = img.Get(x, y * 4);
            float edge = (y < 4 || y >= 60) ? 0.55f : (y < 6 || y >= 58 ? 1.2f : 1.0f);
            bar.Set(x, y, Colour{c.r * edge, c.g * edge, c.b * edge, 1.0f});
        }
    }
    return bar;
}

// The air gauge's tube, full (bright water) or empty (dark glass).
static Image AirBar(bool full) {
    Image img(512, 64);
    img.Fill(Colour{0, 0, 0, 0});
    Colour top = full ? Rgb(150, 230, 255) : Rgb(60, 70, 80);
    Colour bottom = full ? Rgb(20, 110, 200) : Rgb(25, 30, 38);
    PaintRoundRect(&img, 2, 10, 510, 54, 18, Rgb(10, 20, 30), Rgb(10, 20, 30));
    PaintRoundRect(&img, 5, 13, 507, 51, 15, top, bottom);
    PaintRoundRect(&img, 16, 16, 496, 24, 4, Rgb(255, 255, 255, full ? 110 : 50), Rgb(255, 255, 255, 0));
    if (full) {
        for (int i = 0; i < 40; i++) {
            float x = 14 + Hash01(i, 0, 5) * 484;
            float y = 22 + Hash01(i, 1, 5) * 24;
            float r = 1.5f + Hash01(i, 2, 5) * 3.5f;
            PaintDisc(&img, x, y, r, Rgb(230, 250, 255, 150), 1.0f);
        }
    }
    return img;
}

// The air gauge's icon: a diver's bubble with "AIR" across it.
static bool AirIcon(const std::string& fonts, Image* img, std::string* error) {
    *img = Image(128, 128);
    img->Fill(Colour{0, 0, 0, 0});
    PaintDisc(img, 64, 52, 44, Rgb(10, 30, 50), 1.0f);
    PaintDisc(img, 64, 52, 40, Rgb(60, 170, 230), 1.0f);
    PaintGlow(img, 50, 38, 30, Rgb(220, 250, 255, 200), 1.5f);
    PaintDisc(img, 48, 34, 7, Rgb(255, 255, 255, 230), 1.5f);
    const TextStyle style = {"DejaVuSans-Bold.ttf", 28, Rgb(255, 255, 255),
                             Rgb(200, 230, 255),    2,  Rgb(0, 30, 60)};
    return PaintText(fonts, style, "AIR", 64, 63, img, error);
}

// A life: the delver's lamp, glowing.
static Image LivesIcon() {
    Image img(64, 64);
    img.Fill(Colour{0, 0, 0, 0});
    PaintGlow(&img, 32, 34, 30, Rgb(255, 200, 80, 180), 1.6f);
    PaintRoundRect(&img, 22, 18, 42, 48, 4, Rgb(255, 240, 170), Rgb(230, 160, 40));
    PaintRoundRect(&img, 19, 14, 45, 19, 2, Rgb(90, 70, 50), Rgb(60, 45, 30));
    PaintRoundRect(&img, 19, 47, 45, 52, 2, Rgb(90, 70, 50), Rgb(60, 45, 30));
    PaintLine(&img, 26, 14, 32, 6, 2.5f, Rgb(70, 55, 40));
    PaintLine(&img, 38, 14, 32, 6, 2.5f, Rgb(70, 55, 40));
    PaintDisc(&img, 32, 33, 5, Rgb(255, 255, 230), 1.5f);
    return img;
}

// The engine's badge: a "V2" in a ring, drawn on a size x size picture (64 in the game,
// larger as the desktop's icon).
bool DrawBadge(const std::string& fonts, int size, Image* img, std::string* error) {
    const float s = size / 64.0f;
    *img = Image(size, size);
    img->Fill(Colour{0, 0, 0, 0});
    PaintDisc(img, 32 * s, 32 * s, 30 * s, Rgb(30, 30, 40), 1.0f);
    PaintDisc(img, 32 * s, 32 * s, 27 * s, Rgb(200, 140, 40), 1.0f);
    PaintDisc(img, 32 * s, 32 * s, 24 * s, Rgb(40, 60, 90), 1.0f);
    const TextStyle style = {"DejaVuSans-Bold.ttf", static_cast<int>(26 * s),         Rgb(255, 240, 190),
                             Rgb(230, 170, 60),     std::max(1, static_cast<int>(s)), Rgb(0, 0, 0)};
    return PaintText(fonts, style, "V2", size / 2, static_cast<int>(42 * s), img, error);
}

// The widget sheet: field and button bars, the check box and its tick, at the
// texture coordinates the widget geometry uses (128 x 128; v counts from the bottom).
static Image WidgetSheet() {
    Image img(128, 128);
    img.Fill(Colour{0, 0, 0, 0});
    // Text field: rows 15..33, a sunken dark bar.
    PaintRoundRect(&img, 4, 15, 124, 33, 4, Rgb(20, 22, 28), Rgb(45, 48, 58));
    PaintRoundRect(&img, 5, 16, 123, 18, 1, Rgb(0, 0, 0, 120), Rgb(0, 0, 0, 0));
    // Button: rows 56..74, a raised bevelled bar.
    PaintRoundRect(&img, 4, 56, 124, 74, 5, Rgb(150, 160, 185), Rgb(70, 78, 100));
    PaintRoundRect(&img, 6, 57, 122, 62, 3, Rgb(255, 255, 255, 90), Rgb(255, 255, 255, 0));
    // Check box: rows 75..91, columns 4..60.
    PaintRoundRect(&img, 4, 75, 60, 91, 3, Rgb(210, 210, 220), Rgb(150, 150, 165));
    PaintRoundRect(&img, 8, 78, 56, 88, 2, Rgb(30, 32, 40), Rgb(55, 58, 70));
    // Tick: columns 64..128 of the same rows.
    PaintLine(&img, 74, 83, 88, 89, 4.0f, Rgb(90, 230, 90));
    PaintLine(&img, 88, 89, 118, 77, 4.0f, Rgb(90, 230, 90));
    return img;
}

// A loading icon: an hourglass of sand (or a bulb for lighting) on a dark plate.
static Image LoadingIcon(bool bulb) {
    Image img = MakeStone(256, Rgb(60, 60, 70), 5, bulb ? 9 : 8);
    if (bulb) {
        PaintGlow(&img, 128, 110, 110, Rgb(255, 230, 140, 220), 1.4f);
        PaintDisc(&img, 128, 110, 50, Rgb(255, 250, 210), 2.0f);
        PaintRoundRect(&img, 104, 156, 152, 196, 6, Rgb(170, 170, 180), Rgb(90, 90, 100));
    } else {
        PaintLine(&img, 80, 60, 176, 60, 10, Rgb(120, 80, 40));
        PaintLine(&img, 80, 196, 176, 196, 10, Rgb(120, 80, 40));
        PaintLine(&img, 90, 66, 166, 190, 4, Rgb(220, 220, 240, 160));
        PaintLine(&img, 166, 66, 90, 190, 4, Rgb(220, 220, 240, 160));
        PaintDisc(&img, 128, 170, 26, Rgb(230, 190, 110), 2.0f);
        PaintDisc(&img, 128, 90, 16, Rgb(230, 190, 110), 2.0f);
    }
    return img;
}

// The glow the player's lamp casts: warm light fading to black at the edges
// (drawn additively, so black adds nothing).
static Image LampGlow() {
    Image img(128, 128);
    img.Fill(Rgb(0, 0, 0));
    PaintGlow(&img, 64, 64, 64, Rgb(255, 200, 110), 1.8f);
    PaintGlow(&img, 64, 64, 24, Rgb(255, 250, 220), 1.2f);
    return img;
}

static bool TitleText(const std::string& fonts, const char* name, const char* text, int w, int size,
                      const TextStyle& style, AssetList* list, std::string* error) {
    Image img(w, 64);
    img.Fill(Colour{style.top.r, style.top.g, style.top.b, 0.0f});
    if (!PaintText(fonts, style, text, w / 2, 32 + size * 3 / 8, &img, error)) {
        return false;
    }
    AddTga(list, name, img, true);
    return true;
}

static bool TitleImages(AssetList* list, const std::string& fonts, std::string* error) {
    const TextStyle gold = {"DejaVuSerif-Bold.ttf", 50, Rgb(255, 245, 180),
                            Rgb(210, 120, 30),      3,  Rgb(40, 15, 0)};
    const TextStyle italic = {"DejaVuSerif-Italic.ttf", 40, Rgb(255, 255, 255),
                              Rgb(190, 210, 255),       2,  Rgb(10, 20, 50)};
    const TextStyle prompt = {"DejaVuSans-Bold.ttf", 36, Rgb(255, 255, 255),
                              Rgb(170, 230, 140),    2,  Rgb(10, 40, 10)};
    if (!TitleText(fonts, "logo\\logotext_main.tga", "VANTLE 2", 512, 50, gold, list, error) ||
        !TitleText(fonts, "logo\\logotext_starring.tga", "starring", 256, 40, italic, list, error) ||
        !TitleText(fonts, "logo\\logotext_start.tga", "press any key to start", 512, 36, prompt, list,
                   error)) {
        return false;
    }
    // The 3D lettering's skin: polished gold with streaks.
    Image gild = MakeMetal(128, Rgb(230, 170, 60), 77);
    for (int y = 0; y < 128; y++) {
        for (int x = 0; x < 128; x++) {
            Colour c = gild.Get(x, y);
            float shine = 0.8f + 0.4f * std::sin(y * 0.15f + x * 0.05f);
            gild.Set(x, y, Colour{c.r * shine, c.g * shine, c.b * shine * 0.8f, 1.0f});
        }
    }
    AddTga(list, "logo\\logotext_3d.tga", gild);
    return true;
}

bool GenerateInterfaceTextures(AssetList* list, const std::string& fontDirectory, std::string* error) {
    AddTga(list, "gui_loading.tga", LoadingIcon(false));
    AddTga(list, "gui_lighting.tga", LoadingIcon(true));
    AddTga(list, "gui\\level_bar.tga", LevelBar());
    AddTga(list, "gui\\air_bar_full.tga", AirBar(true), true);
    AddTga(list, "gui\\air_bar_empty.tga", AirBar(false), true);
    Image img;
    if (!AirIcon(fontDirectory, &img, error)) {
        return false;
    }
    AddTga(list, "gui\\air.tga", img, true);
    AddTga(list, "gui\\lives.tga", LivesIcon(), true);
    if (!DrawBadge(fontDirectory, 64, &img, error)) {
        return false;
    }
    AddTga(list, "gui_logo.tga", img, true);
    AddTga(list, "gui_controls.tga", WidgetSheet(), true);
    AddTga(list, "delver_light.tga", LampGlow());
    return TitleImages(list, fontDirectory, error);
}

// A strip of frames side by side, each painted by the callback.
template <typename Painter>
static Image Strip(int frames, int cell, Painter paint) {
    Image img(frames * cell, cell);
    img.Fill(Colour{0, 0, 0, 0});
    for (int f = 0; f < frames; f++) {
        Image frame(cell, cell);
        frame.Fill(Colour{0, 0, 0, 0});
        paint(&frame, f);
        img.Paste(frame, f * cell, 0);
    }
    return img;
}

// Flame turning to smoke over 16 frames: a bright core that grows, reddens and greys.
static void FireFrame(Image* img, int f) {
    float t = f / 15.0f;
    Colour hot = Mix(Rgb(255, 250, 200), Rgb(255, 120, 30), std::min(1.0f, t * 1.6f));
    Colour c = f >= 13 ? Rgb(150, 145, 140) : hot;
    float r = 8.0f + 7.0f * t;
    for (int i = 0; i < 7; i++) {
        float ox = (Hash01(f, i, 3) - 0.5f) * 10.0f * t;
        float oy = (Hash01(f, i, 4) - 0.5f) * 10.0f * t;
        Colour k = c;
        k.a = (f >= 13 ? 0.35f : 0.55f) * (1.0f - 0.3f * t);
        PaintGlow(img, 16 + ox, 16 + oy, r, k, 1.2f);
    }
    if (f < 13) {
        PaintGlow(img, 16, 16, r * 0.5f, Rgb(255, 255, 230, static_cast<int>(220 * (1.0f - t))), 1.0f);
    }
}

// A twinkle: a four-pointed star that pulses and turns.
static void SparkleFrame(Image* img, int f) {
    float pulse = 0.5f + 0.5f * std::sin(f * 6.2831853f / 16.0f);
    PaintGlow(img, 16, 16, 10 + 4 * pulse, Rgb(255, 250, 200, 200), 2.0f);
    PaintStar(img, 16, 16, 8 + 7 * pulse, 1.5f, 4, f * 0.1f, Rgb(255, 255, 240, 255));
}

// Bits of the squashed delver: cloth, boot, lamp glass, flesh.
static void GibFrame(Image* img, int f) {
    static const Colour kColours[4] = {Rgb(60, 90, 160), Rgb(90, 60, 40), Rgb(255, 220, 120),
                                       Rgb(200, 50, 40)};
    for (int i = 0; i < 5; i++) {
        float x = 8 + Hash01(f, i, 11) * 16;
        float y = 8 + Hash01(f, i, 12) * 16;
        PaintDisc(img, x, y, 3 + Hash01(f, i, 13) * 4, kColours[f], 1.0f);
    }
    PaintDisc(img, 14, 13, 2, Rgb(255, 255, 255, 120), 1.0f);
}

void GenerateEffectTextures(AssetList* list) {
    AddTga(list, "particle_fire.tga", Strip(16, 32, FireFrame), true);
    AddTga(list, "particle_sparkle.tga", Strip(16, 32, SparkleFrame), true);
    AddTga(list, "particle_gibs.tga", Strip(4, 32, GibFrame), true);
    Image star(32, 32);
    star.Fill(Colour{1, 1, 1, 0});
    PaintGlow(&star, 16, 16, 15, Rgb(255, 240, 170, 180), 2.0f);
    PaintStar(&star, 16, 16, 14, 5, 5, -1.5708f, Rgb(255, 250, 210));
    AddTga(list, "particle_star.tga", star, true);
    Image blood(32, 32);
    blood.Fill(Colour{0.6f, 0, 0, 0});
    PaintDisc(&blood, 16, 17, 9, Rgb(170, 10, 10, 230), 2.0f);
    PaintDisc(&blood, 13, 13, 3, Rgb(255, 120, 120, 160), 1.5f);
    AddTga(list, "particle_blood.tga", blood, true);
    Image smoke(64, 64);
    smoke.Fill(Colour{1, 1, 1, 0});
    for (int i = 0; i < 9; i++) {
        PaintGlow(&smoke, 20 + Hash01(i, 0, 21) * 24, 20 + Hash01(i, 1, 21) * 24, 18, Rgb(255, 255, 255, 110),
                  1.5f);
    }
    AddTga(list, "particle_smoke.tga", smoke, true);
    Image leaf(32, 32);
    leaf.Fill(Colour{0.3f, 0.5f, 0.1f, 0});
    for (int y = 0; y < 32; y++) {
        for (int x = 0; x < 32; x++) {
            float u = (x - 16) / 13.0f;
            float v = (y - 16) / 6.0f;
            float d = u * u + v * v;
            if (d < 1.0f) {
                Colour c = Mix(Rgb(200, 160, 40), Rgb(120, 150, 30), Fbm(x / 8.0f, y / 8.0f, 4, 3, 31));
                if (std::fabs(v) < 0.15f) {
                    c = Mix(c, Rgb(240, 220, 120), 0.6f);
                }
                c.a = std::min(1.0f, (1.0f - d) * 4.0f);
                leaf.Set(x, y, c);
            }
        }
    }
    AddTga(list, "particle_leaf.tga", leaf, true);

    Image glow(128, 128);
    glow.Fill(Colour{1, 1, 1, 0});
    PaintGlow(&glow, 64, 64, 64, Rgb(255, 240, 200, 255), 2.2f);
    AddTga(list, kFlareTextures[0], glow, true);
    Image ring(128, 128);
    ring.Fill(Colour{1, 1, 1, 0});
    for (int y = 0; y < 128; y++) {
        for (int x = 0; x < 128; x++) {
            float d = std::hypot(x + 0.5f - 64, y + 0.5f - 64) / 64.0f;
            float a = std::exp(-std::pow((d - 0.8f) / 0.06f, 2.0f));
            ring.Set(x, y, Colour{0.7f + 0.3f * d, 0.8f, 1.0f - 0.3f * d, a});
        }
    }
    AddTga(list, kFlareTextures[1], ring, true);
    Image disc(64, 64);
    disc.Fill(Colour{1, 1, 1, 0});
    PaintDisc(&disc, 32, 32, 28, Rgb(180, 220, 255, 120), 4.0f);
    AddTga(list, kFlareTextures[2], disc, true);
    Image streak(128, 128);
    streak.Fill(Colour{1, 1, 1, 0});
    for (int y = 0; y < 128; y++) {
        for (int x = 0; x < 128; x++) {
            float dx = std::fabs(x + 0.5f - 64) / 64.0f;
            float dy = std::fabs(y + 0.5f - 64) / 64.0f;
            float a =
                std::max(std::exp(-dy * 40.0f) * (1.0f - dx), std::exp(-dx * 40.0f) * (1.0f - dy) * 0.6f);
            streak.Set(x, y, Colour{1.0f, 0.95f, 0.85f, a});
        }
    }
    AddTga(list, kFlareTextures[3], streak, true);
}

void GenerateFlareList(AssetList* list) {
    // Element: texture, axis position, half size, alpha, grey, spins, centre fade, distance fade.
    struct Spec {
        int texture;
        float axis, half, alpha, grey;
        int spins, centreFade, distanceFade;
    };
    static const Spec kElements[] = {
        {0, 1.0f, 90, 0.9f, 1.0f, 0, 0, 1},   {3, 1.0f, 150, 0.6f, 0.9f, 1, 0, 1},
        {1, 0.6f, 40, 0.35f, 0.8f, 0, 1, 1},  {2, 0.35f, 18, 0.4f, 0.9f, 0, 1, 1},
        {2, 0.1f, 10, 0.3f, 0.7f, 0, 1, 1},   {1, -0.25f, 30, 0.3f, 0.8f, 0, 1, 1},
        {2, -0.5f, 24, 0.35f, 0.9f, 0, 1, 1}, {1, -0.9f, 60, 0.25f, 0.6f, 1, 1, 1}};
    FlareList flares;
    for (const Spec& s : kElements) {
        FlareElement e;
        memset(&e, 0, sizeof(e));
        strncpy(e.name, kFlareTextures[s.texture], sizeof(e.name) - 1);
        e.axisPosition = s.axis;
        e.halfSize = s.half;
        e.alpha = s.alpha;
        e.grey = s.grey;
        e.spins = static_cast<unsigned char>(s.spins);
        e.centreFade = static_cast<unsigned char>(s.centreFade);
        e.distanceFade = static_cast<unsigned char>(s.distanceFade);
        flares.Add(e);
    }
    std::vector<uint8_t> bytes(flares.Size());
    flares.Serialise(bytes.data());
    list->Add("test.vfl", CONTENT_BASE_PACKAGE, std::move(bytes));
}
