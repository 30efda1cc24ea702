// Shared by the drawing tests: a real window of a chosen size, frames read back
// top row first, textures made from pixel functions, a test font uploaded
// through the texture manager, and screenshots kept as test artefacts.
#pragma once

#include <GL/gl.h>
#include <GL/glu.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "app/gl_window.h"
#include "resources/resource_manager.h"
#include "resources/texture_manager.h"
#include "resources/tga_image.h"
#include "test_support.h"

namespace drawtest {

// One frame as RGB bytes, row 0 at the top of the window.
struct Frame {
    int width = 0;
    int height = 0;
    std::vector<unsigned char> rgb;

    const unsigned char* At(int x, int y) const { return &rgb[(y * width + x) * 3]; }
};

inline Frame ReadFrame() {
    Frame frame;
    frame.width = g_window.width;
    frame.height = g_window.height;
    std::vector<unsigned char> bottomUp(frame.width * frame.height * 3);
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

// Largest difference of any channel of any pixel between two frames of one size.
inline int MaxDifference(const Frame& a, const Frame& b) {
    int worst = 0;
    for (size_t i = 0; i < a.rgb.size() && i < b.rgb.size(); i++) {
        int d = abs(static_cast<int>(a.rgb[i]) - static_cast<int>(b.rgb[i]));
        worst = d > worst ? d : worst;
    }
    return worst;
}

// A GL texture of size x size RGB texels from colour(x, y) (y = 0 the first row), nearest filtering.
inline GLuint MakeTexture(int size, const std::function<void(int, int, unsigned char*)>& colour) {
    std::vector<unsigned char> texels(size * size * 3);
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            colour(x, y, &texels[(y * size + x) * 3]);
        }
    }
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, size, size, 0, GL_RGB, GL_UNSIGNED_BYTE, texels.data());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    return texture;
}

// Uploads a 512 x 256 RGBA font as "gui_font.tga" through a TGA file and the texture manager;
// texel(glyph, cellX, cellY, rgba) paints cell pixel (cellX, cellY), cellY 0 at the cell's top.
inline bool LoadTestFont(const std::function<void(int, int, int, unsigned char*)>& texel) {
    std::vector<unsigned char> pixels(512 * 256 * 4);
    for (int row = 0; row < 256; row++) {  // image row from the top
        for (int column = 0; column < 512; column++) {
            int glyph = (row / 32) * 16 + column / 32;
            // TGA rows are stored bottom row first.
            unsigned char* out = &pixels[((255 - row) * 512 + column) * 4];
            texel(glyph, column % 32, row % 32, out);
        }
    }
    unsigned int length = 0;
    unsigned char* file = TgaEncode(pixels.data(), 512, 256, 32, 0, &length);
    if (!file) {
        return false;
    }
    g_textures.resources = &g_resources;
    int loaded = g_textures.LoadSlot("gui_font.tga", file, length, 0);
    free(file);
    return loaded == 1;
}

// Writes a frame as <build>/test-artefacts/<name>.tga (kept after the run for people to look at).
inline void SaveArtefact(const char* name, const Frame& frame) {
    std::string dir = std::string(VANTLE_BINARY_DIR) + "/test-artefacts";
    std::filesystem::create_directories(dir);
    // TGA rows go bottom row first.
    std::vector<unsigned char> bottomUp(frame.rgb.size());
    for (int y = 0; y < frame.height; y++) {
        memcpy(&bottomUp[y * frame.width * 3], frame.At(0, frame.height - 1 - y), frame.width * 3);
    }
    unsigned int length = 0;
    unsigned char* file = TgaEncode(bottomUp.data(), frame.width, frame.height, 24, 0, &length);
    if (file) {
        test::WriteFile(dir + "/" + name + ".tga", file, length);
        free(file);
    }
}

// Opens the test window at the given size with the engine's start-up render defaults, unless
// it is open already. The suites keep one window for all their tests: the drawing is what is
// under test, and every window made and unmade is one more trip through the display
// connection. A refused creation is tried once more, since the display is shared with other
// test processes.
inline bool OpenWindow(int width, int height) {
    if (g_window.renderContext) {
        return true;
    }
    for (int attempt = 0; attempt < 2; attempt++) {
        if (g_window.Create("draw test", width, height, 0)) {
            g_window.lightFactor = 1.0f;
            g_window.polyCount = 0;
            return true;
        }
    }
    return false;
}

// Forgets the test's named textures (the font) while the context still lives.
inline void PurgeTextures() {
    if (g_window.renderContext) {
        g_textures.Purge();
    }
    g_textures.resources = nullptr;
}

// Releases the test's textures and the window.
inline void CloseWindow() {
    PurgeTextures();
    if (g_window.window) {
        g_window.Destroy();
    }
}

}  // namespace drawtest
