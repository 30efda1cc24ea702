// The GL window under a real X display: creation, clearing and reading back pixels,
// the full-screen fall-back and recreation.
#include "app/gl_window.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <string>

#include "platform/sys_message_box.h"
#include "platform/sys_window.h"
#include "render/loading_screen.h"

namespace {

int g_boxes;

class GlWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        g_boxes = 0;
        Sys_SetMessageBoxHook([](const char*, const char*, unsigned int) { g_boxes++; });
    }
    void TearDown() override {
        if (g_window.window) {
            g_window.Destroy();
        }
        Sys_SetMessageBoxHook(nullptr);
    }
    static void ReadCentre(unsigned char* rgb) {
        glReadBuffer(GL_BACK);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glReadPixels(g_window.width / 2, g_window.height / 2, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, rgb);
    }
};

TEST_F(GlWindowTest, AClearedFrameReadsBackTheClearColour) {
    ASSERT_EQ(g_window.Create("Vantle2\x99", 320, 240, 0), 1);
    EXPECT_EQ(g_boxes, 0);
    EXPECT_EQ(g_activeWindow, &g_window);
    EXPECT_STREQ(g_window.title, "Vantle2\x99");
    ASSERT_NE(g_window.renderContext, nullptr);
    g_window.clearColour[0] = 1.0f;
    g_window.clearColour[1] = 0.5f;
    g_window.clearColour[2] = 0.0f;
    uint32_t frames = g_window.framesDrawn;
    g_window.polyCount = 99;
    g_window.BeginFrame();
    EXPECT_EQ(g_window.framesDrawn, frames + 1);
    EXPECT_EQ(g_window.polyCount, 0u);
    unsigned char rgb[3];
    ReadCentre(rgb);
    EXPECT_EQ(rgb[0], 255);
    EXPECT_NEAR(rgb[1], 128, 1);
    EXPECT_EQ(rgb[2], 0);
}

TEST_F(GlWindowTest, FogColourReplacesTheClearColour) {
    ASSERT_EQ(g_window.Create(nullptr, 320, 240, 0), 1);
    g_window.clearColour[0] = g_window.clearColour[1] = g_window.clearColour[2] = 1.0f;
    g_window.fogEnabled = 1;
    g_window.fogColour[0] = 0.0f;
    g_window.fogColour[1] = 0.0f;
    g_window.fogColour[2] = 1.0f;
    g_window.BeginFrame();
    g_window.fogEnabled = 0;
    unsigned char rgb[3];
    ReadCentre(rgb);
    EXPECT_EQ(rgb[0], 0);
    EXPECT_EQ(rgb[1], 0);
    EXPECT_EQ(rgb[2], 255);
}

TEST_F(GlWindowTest, DefaultsAfterInitGL) {
    ASSERT_EQ(g_window.Create(nullptr, 320, 240, 0), 1);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_TRUE(glIsEnabled(GL_CULL_FACE));
    GLint depthFunc = 0;
    glGetIntegerv(GL_DEPTH_FUNC, &depthFunc);
    EXPECT_EQ(depthFunc, GL_LEQUAL);
    GLint depthBits = 0, stencilBits = 0;
    glGetIntegerv(GL_DEPTH_BITS, &depthBits);
    glGetIntegerv(GL_STENCIL_BITS, &stencilBits);
    EXPECT_GE(depthBits, 16);
    EXPECT_GE(stencilBits, 1);
    // Mesa offers ARB multitexture.
    EXPECT_NE(g_glActiveTextureARB, nullptr);
    EXPECT_NE(g_glMultiTexCoord2fARB, nullptr);
    EXPECT_NE(Sys_GetProcAddress("glActiveTextureARB"), nullptr);
}

TEST_F(GlWindowTest, RefusedFullScreenModeBecomesAWindowOfTheSameSize) {
    // The virtual screen has only its own mode, so 1000 x 700 cannot be full-screen.
    ASSERT_EQ(g_window.Create(nullptr, 1000, 700, 1), 1);
    EXPECT_EQ(g_window.fullScreen, 0);
    EXPECT_EQ(g_boxes, 0);
    int width = 0, height = 0;
    Sys_WindowSize(g_window.window, &width, &height);
    EXPECT_EQ(width, 1000);
    EXPECT_EQ(height, 700);
}

TEST_F(GlWindowTest, CreateAgainReplacesTheWindow) {
    ASSERT_EQ(g_window.Create(nullptr, 320, 240, 0), 1);
    ASSERT_EQ(g_window.Create(nullptr, 400, 300, 0), 1);
    int width = 0, height = 0;
    Sys_WindowSize(g_window.window, &width, &height);
    EXPECT_EQ(width, 400);
    EXPECT_EQ(height, 300);
    EXPECT_EQ(g_boxes, 0);
    g_window.clearColour[0] = 0.0f;
    g_window.clearColour[1] = 1.0f;
    g_window.clearColour[2] = 0.0f;
    g_window.BeginFrame();
    unsigned char rgb[3];
    ReadCentre(rgb);
    EXPECT_EQ(rgb[1], 255);
}

TEST_F(GlWindowTest, PresentWithoutSceneDrawDoesNotSwap) {
    ASSERT_EQ(g_window.Create(nullptr, 320, 240, 0), 1);
    static int drawn;
    drawn = 0;
    g_window.sceneDraw = nullptr;
    g_window.Present();
    g_window.sceneDraw = [] { drawn++; };
    g_window.Present();
    g_window.sceneDraw = nullptr;
    EXPECT_EQ(drawn, 1);
}

TEST_F(GlWindowTest, ResizeSetsTheViewport) {
    ASSERT_EQ(g_window.Create(nullptr, 320, 240, 0), 1);
    g_window.Resize(200, 0);
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(viewport[2], 200);
    EXPECT_EQ(viewport[3], 1);
    EXPECT_EQ(g_window.height, 1);
}

TEST_F(GlWindowTest, LoadingScreenIsSafeWithAndWithoutAWindow) {
    DrawLoadingScreen("gui_loading.tga", "LOADING", 0.5f);  // no window: nothing
    ASSERT_EQ(g_window.Create(nullptr, 320, 240, 0), 1);
    DrawLoadingScreen("gui_loading.tga", "LOADING", 0.5f);
    g_window.SwapBuffers();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

}  // namespace
