// Shared by the GL tests: a real window of a chosen size, frames read back top row first,
// TGA files and textures made from pixel functions, a test font, a scratch data directory
// the resource lookup reads, and the window's drawing settings put back after each test.
#pragma once

#include <GL/gl.h>
#include <GL/glu.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "app/console.h"
#include "app/gl_window.h"
#include "app/scene_hooks.h"
#include "resources/resource_manager.h"
#include "resources/texture_manager.h"
#include "resources/tga_image.h"
#include "test_support.h"
#include "ui/engine_texts.h"
#include "ui/text_batch.h"

namespace drawtest {

typedef std::vector<unsigned char> Bytes;

// One frame as RGB bytes, row 0 at the top of the window.
struct Frame {
    int width = 0;
    int height = 0;
    Bytes rgb;

    const unsigned char* At(int x, int y) const { return &rgb[(y * width + x) * 3]; }
};

inline Frame ReadFrame() {
    Frame frame;
    frame.width = g_window.width;
    frame.height = g_window.height;
    Bytes bottomUp(frame.width * frame.height * 3);
    glReadBuffer(GL_BACK);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, frame.width, frame.height, GL_RGB, GL_UNSIGNED_BYTE, bottomUp.data());
    frame.rgb.resize(bottomUp.size());
    for (int y = 0; y < frame.height; y++) {
        memcpy(&frame.rgb[y * frame.width * 3], &bottomUp[(frame.height - 1 - y) * frame.width * 3],
               frame.width * 3);
    }
    return frame;
}

// True when every channel is within tolerance of (r, g, b).
inline bool Near(const unsigned char* rgb, int r, int g, int b, int tolerance = 6) {
    return abs(rgb[0] - r) <= tolerance && abs(rgb[1] - g) <= tolerance && abs(rgb[2] - b) <= tolerance;
}

// Largest difference of any channel of any pixel between two frames of one size.
inline int MaxDifference(const Frame& a, const Frame& b) {
    int worst = 0;
    for (size_t i = 0; i < a.rgb.size() && i < b.rgb.size(); i++) {
        int d = abs(static_cast<int>(a.rgb[i]) - static_cast<int>(b.rgb[i]));
        worst = d > worst ? d : worst;
    }
    return worst;
}

// w x h pixels (channels 3 or 4) from colour(x, y, out), y = 0 the first row: what a TGA file
// made of them stores first row first, and what GL gives back of the texture made from it.
inline Bytes Pixels(int w, int h, int channels, const std::function<void(int, int, unsigned char*)>& colour) {
    Bytes pixels(w * h * channels);
    for (int i = 0; i < w * h; i++) {
        unsigned char texel[4] = {0, 0, 0, 255};
        colour(i % w, i / w, texel);
        memcpy(&pixels[i * channels], texel, channels);
    }
    return pixels;
}

// A TGA file of w x h pixels (bits 24 or 32) from colour, as Pixels.
inline Bytes Tga(int w, int h, int bits, const std::function<void(int, int, unsigned char*)>& colour) {
    unsigned int length = 0;
    unsigned char* file = TgaEncode(Pixels(w, h, bits / 8, colour).data(), w, h, bits, 0, &length);
    Bytes bytes(file, file + (file ? length : 0));
    free(file);
    return bytes;
}

// Uploads a TGA file into the texture manager's first free slot under name.
inline bool LoadTexture(const char* name, const Bytes& file) {
    g_textures.resources = &g_resources;
    int slot = 0;
    while (slot < TextureManager::kSlots && g_textures.names[slot][0]) {
        slot++;
    }
    return slot < TextureManager::kSlots &&
           g_textures.LoadSlot(name, file.data(), static_cast<unsigned int>(file.size()), slot) == 1;
}

// A size x size texture of one RGBA colour under name.
inline bool SolidTexture(const char* name, unsigned char r, unsigned char g, unsigned char b,
                         unsigned char a = 255, int size = 8) {
    const unsigned char rgba[4] = {r, g, b, a};
    return LoadTexture(name,
                       Tga(size, size, 32, [&](int, int, unsigned char* out) { memcpy(out, rgba, 4); }));
}

// Level 0 of a GL texture (w x h, RGB or RGBA); empty when it is no texture of that width.
inline Bytes TextureTexels(unsigned int texture, GLenum format, int w, int h) {
    GLint width = 0;
    if (glIsTexture(texture)) {
        glBindTexture(GL_TEXTURE_2D, texture);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    }
    if (width != w) {
        return Bytes();
    }
    Bytes out(w * h * (format == GL_RGBA ? 4 : 3));
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(GL_TEXTURE_2D, 0, format, GL_UNSIGNED_BYTE, out.data());
    return out;
}

// A 512 x 256 RGBA font file; texel(glyph, cellX, cellY, rgba) paints cell pixel (cellX, cellY),
// cellY 0 at the cell's top.
inline Bytes FontTga(const std::function<void(int, int, int, unsigned char*)>& texel) {
    // TGA rows are stored bottom row first.
    return Tga(512, 256, 32, [&](int x, int y, unsigned char* out) {
        int row = 255 - y;
        texel((row / 32) * 16 + x / 32, x % 32, row % 32, out);
    });
}

// Uploads a test font as "gui_font.tga" through the texture manager.
inline bool LoadTestFont(const std::function<void(int, int, int, unsigned char*)>& texel) {
    g_textures.resources = &g_resources;
    Bytes file = FontTga(texel);
    return g_textures.LoadSlot("gui_font.tga", file.data(), static_cast<unsigned int>(file.size()), 0) == 1;
}

// Writes a frame as <build>/test-artefacts/<name>.tga (kept after the run for people to look at).
inline void SaveArtefact(const char* name, const Frame& frame) {
    std::string dir = std::string(VANTLE_BINARY_DIR) + "/test-artefacts";
    std::filesystem::create_directories(dir);
    Bytes file = Tga(frame.width, frame.height, 24, [&](int x, int y, unsigned char* out) {
        memcpy(out, frame.At(x, frame.height - 1 - y), 3);
    });
    test::WriteFile(dir + "/" + name + ".tga", file.data(), file.size());
}

// A picture as taken, kept as the mean colour of each 25 x 25 block of an 800 x 600 frame (one
// line of numbers per block row): anything a player would see move, tint or go missing changes
// some block by more than rounding does, while the file stays small and readable in a diff.
inline std::string BlockMeans(const Frame& frame) {
    std::string means;
    for (int by = 0; by < 600; by += 25) {
        for (int bx = 0; bx < 800; bx += 25) {
            int sum[3] = {0, 0, 0};
            for (int y = by; y < by + 25; y++) {
                for (int x = bx; x < bx + 25; x++) {
                    for (int c = 0; c < 3; c++) {
                        sum[c] += frame.At(x, y)[c];
                    }
                }
            }
            for (int c = 0; c < 3; c++) {
                means += std::to_string(sum[c] / 625) + (bx == 775 && c == 2 ? "\n" : " ");
            }
        }
    }
    return means;
}

// The blocks unlike tests/gl/<file>, the pictures' block means as taken; with
// VANTLE_WRITE_SIGNATURE=1 the file is taken again from these first (look at the artefacts the
// test saved before committing it). -1 when the file does not hold as many blocks.
inline int BlocksUnlike(const char* file, const std::string& means) {
    std::string path = std::string(VANTLE_SOURCE_DIR) + "/tests/gl/" + file;
    if (getenv("VANTLE_WRITE_SIGNATURE")) {
        test::WriteFile(path, means.data(), means.size());
    }
    std::ifstream stored(path);
    std::vector<int> expected{std::istream_iterator<int>(stored), std::istream_iterator<int>()};
    std::istringstream taken(means);
    std::vector<int> now{std::istream_iterator<int>(taken), std::istream_iterator<int>()};
    if (expected.size() != now.size()) {
        return -1;
    }
    int unlike = 0;
    for (size_t i = 0; i < now.size(); i++) {
        unlike += abs(now[i] - expected[i]) > 2;
    }
    return unlike;
}

// The number of console log lines that contain text.
inline int ConsoleLines(const char* text) {
    int found = 0;
    for (int i = 0; i < Console::kLineCount; i++) {
        found += strstr(g_console.lines[i], text) != nullptr;
    }
    return found;
}

// Empties the engine's fixed text batches, then fills them as start-up does when fill is set.
inline void ResetEngineTexts(bool fill) {
    for (TextBatch* batch : {&g_loadingText, &g_debugValues, &g_netDebugText, &g_debugTitles}) {
        batch->Reset();
    }
    if (fill) {
        FillEngineTextBatches();
    }
}

// The window settings, hooks, data directory, console and fixed texts the GL tests change, as
// they were found; Restore puts them back (and forgets the textures loaded since). Every fixture
// holds one, so a test leaves what it found whatever ran before it.
class SavedState {
public:
    SavedState() {
        Keep(g_window.width, g_window.height, g_window.fullScreen, g_window.fov, g_window.lightFactor,
             g_window.clearColour, g_window.renderCamera, g_window.frustumFlag, g_window.fogEnabled,
             g_window.showNormals, g_window.joystickFound, g_window.videoQuality, g_window.flashIntensity,
             g_window.flashColour, g_window.fogColour, g_window.fogStart, g_window.fogEnd, g_window.sceneDraw,
             g_window.keepAspect, g_window.desktopFullScreen, g_window.sizedByDesktop, g_window.windowedSize,
             g_hooks, g_resources.dataDirectory, g_textures.resources, g_console);
    }
    void Restore() const {
        if (g_window.renderContext) {
            g_textures.Purge();
        }
        for (const auto& field : kept) {
            memcpy(field.first, field.second.data(), field.second.size());
        }
        ResetEngineTexts(textsFilled);
    }

private:
    template <class... T>
    void Keep(T&... fields) {
        (kept.emplace_back(&fields, Bytes(reinterpret_cast<unsigned char*>(&fields),
                                          reinterpret_cast<unsigned char*>(&fields) + sizeof(fields))),
         ...);
    }
    std::vector<std::pair<void*, Bytes>> kept;
    bool textsFilled = g_loadingText.count > 0;
};

// A test that puts back what it changed (see SavedState) and starts from an empty log.
class GlTest : public ::testing::Test {
protected:
    SavedState saved;
    GlTest() { g_console.Clear(); }
    void TearDown() override { saved.Restore(); }
};

// Points the resource lookup at a fresh scratch directory named after the test; its data path.
inline std::string UseScratchData() {
    std::string dir = test::ScratchDir(::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::string data = dir + "/data";
    std::filesystem::create_directories(data + "/textures");
    std::filesystem::create_directories(data + "/levels");
    snprintf(g_resources.dataDirectory, sizeof(g_resources.dataDirectory), "%s", data.c_str());
    g_textures.resources = &g_resources;
    return data;
}

// Points the resource lookup at the content the build made.
inline void UseShippedData() {
    snprintf(g_resources.dataDirectory, sizeof(g_resources.dataDirectory), "%s/data", VANTLE_RUN_DIR);
    g_textures.resources = &g_resources;
}

// Opens the test window at the given size with the engine's start-up render defaults, unless
// it is open already. A suite keeps one window for all its tests: the drawing is what is under
// test, and every window made and unmade is one more trip through the display connection. A
// refused creation is tried once more, since the display is shared with other test processes.
inline bool OpenWindow(int width, int height) {
    if (g_window.renderContext) {
        g_window.Resize(width, height);
        return true;
    }
    for (int attempt = 0; attempt < 2; attempt++) {
        if (g_window.Create("draw test", width, height, 0)) {
            g_window.lightFactor = 1.0f;
            return true;
        }
    }
    return false;
}

// Releases the test's textures and the window.
inline void CloseWindow() {
    if (g_window.renderContext) {
        g_textures.Purge();
    }
    if (g_window.window) {
        g_window.Destroy();
    }
}

}  // namespace drawtest
