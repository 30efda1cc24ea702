// The screen texture's size for a window: each side the largest power of two
// that fits, capped at 2048.
#include "resources/screen_texture.h"

#include <gtest/gtest.h>

namespace {

struct Size {
    unsigned int windowWidth, windowHeight, width, height;
};

TEST(ScreenTextureSize, LargestPowerOfTwoNotAboveEachSide) {
    const Size cases[] = {
        {800, 600, 512, 512},     {1024, 768, 1024, 512},   {640, 480, 512, 256},
        {1280, 960, 1024, 512},   {1600, 1200, 1024, 1024}, {2048, 2048, 2048, 2048},
        {4096, 3000, 2048, 2048}, {513, 511, 512, 256},     {1, 1, 1, 1},
    };
    for (const Size& c : cases) {
        unsigned int w = 0, h = 0;
        ScreenTexture::SizeForWindow(c.windowWidth, c.windowHeight, &w, &h);
        EXPECT_EQ(w, c.width) << c.windowWidth << "x" << c.windowHeight;
        EXPECT_EQ(h, c.height) << c.windowWidth << "x" << c.windowHeight;
    }
}

}  // namespace
