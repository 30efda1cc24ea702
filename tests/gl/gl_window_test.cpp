// The GL window under a real X display: frames cleared to the clear colour (or the fog's),
// and a second Create replacing the window. Every failure path of creation and teardown: each step made to
// fail in turn shows its own box after tearing down what was made, leaves no window, context or drawable
// behind, and the next Create works and draws.
#include "app/gl_window.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "draw_test_util.h"
#include "platform/sys_message_box.h"
#include "platform/sys_window.h"

namespace {

struct Box {
    std::string text;
    std::string caption;
    unsigned int flags;
};

std::vector<Box> g_seen;

class GlWindowTest : public drawtest::GlTest {
protected:
    void SetUp() override {
        g_seen.clear();
        Sys_SetMessageBoxHook([](const char* text, const char* caption, unsigned int flags) {
            g_seen.push_back({text, caption, flags});
        });
    }
    void TearDown() override {
        Sys_FailWindowStep(SysStepNone);
        g_window.Destroy();
        Sys_SetMessageBoxHook(nullptr);
        GlTest::TearDown();
    }
    // Clears a frame to (r, g, b) and reads the centre back.
    static void ExpectClearsTo(float r, float g, float b) {
        g_window.clearColour[0] = r;
        g_window.clearColour[1] = g;
        g_window.clearColour[2] = b;
        g_window.BeginFrame();
        drawtest::Frame frame = drawtest::ReadFrame();
        EXPECT_TRUE(drawtest::Near(frame.At(frame.width / 2, frame.height / 2),
                                   static_cast<int>(r * 255 + 0.5f), static_cast<int>(g * 255 + 0.5f),
                                   static_cast<int>(b * 255 + 0.5f), 1));
    }
    static void ExpectSize(int width, int height) {
        int w = 0, h = 0;
        Sys_WindowSize(g_window.window, &w, &h);
        EXPECT_EQ(w, width);
        EXPECT_EQ(h, height);
    }
};

TEST_F(GlWindowTest, FramesClearToTheClearColourOrTheFogColour) {
    ASSERT_EQ(g_window.Create("Vantle2\x99", 320, 240, 0), 1);
    EXPECT_EQ(g_activeWindow, &g_window);
    ExpectClearsTo(1.0f, 0.5f, 0.0f);
    g_window.fogEnabled = 1;
    g_window.fogColour[0] = 0.0f;
    g_window.fogColour[1] = 0.0f;
    g_window.fogColour[2] = 1.0f;
    g_window.BeginFrame();
    EXPECT_TRUE(drawtest::Near(drawtest::ReadFrame().At(160, 120), 0, 0, 255, 0));
    // A second Create replaces the window at the new size.
    ASSERT_EQ(g_window.Create(nullptr, 400, 300, 0), 1);
    ExpectSize(400, 300);
    g_window.fogEnabled = 0;
    ExpectClearsTo(0.0f, 1.0f, 0.0f);
    EXPECT_TRUE(g_seen.empty());
}

TEST_F(GlWindowTest, EachFailingStepShowsItsOwnBoxAndLeavesNothing) {
    const struct {
        int step;
        bool teardown;
        const char* text;
    } steps[] = {
        {SysStepInitVideo, false, "halix_Renderer : Failed To Register The Window Class."},
        {SysStepCreateWindow, false, "halix_Renderer : Window Creation Error."},
        {SysStepDeviceContext, false, "halix_Renderer : Can't Create A GL Device Context."},
        {SysStepChoosePixelFormat, false, "halix_Renderer : Can't Find A Suitable PixelFormat."},
        {SysStepSetPixelFormat, false, "halix_Renderer : Can't Set The PixelFormat."},
        {SysStepCreateContext, false, "halix_Renderer : Can't Create A GL Rendering Context."},
        {SysStepMakeCurrent, false, "halix_Renderer : Can't Activate The GL Rendering Context."},
        {SysStepReleaseCurrent, true, "halix_Renderer : Release Of DC And RC Failed."},
        {SysStepDeleteContext, true, "halix_Renderer : Release Rendering Context Failed."},
        {SysStepReleaseDeviceContext, true, "halix_Renderer : Release Device Context Failed."},
        {SysStepDestroyWindow, true, "halix_Renderer : Could Not Release hWnd."},
        {SysStepShutdownVideo, true, "halix_Renderer : Could Not Unregister Class."},
        {SysStepNone, true, nullptr},  // a clean teardown shows nothing
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.text ? step.text : "none");
        // A live window first: a failing Create must also take the old one down.
        ASSERT_EQ(g_window.Create("Vantle2\x99", 320, 240, 0), 1);
        g_seen.clear();
        Sys_FailWindowStep(step.step);
        if (step.teardown) {
            g_window.Destroy();
        } else {
            EXPECT_EQ(g_window.Create(nullptr, 400, 300, 0), 0);
            // The size asked for is kept for the next attempt, as "VID_RESTART" relies on.
            EXPECT_EQ(g_window.width, 400);
            EXPECT_EQ(g_window.height, 300);
        }
        Sys_FailWindowStep(SysStepNone);
        if (step.text) {
            ASSERT_EQ(g_seen.size(), 1u);
            EXPECT_EQ(g_seen[0].text, step.text);
            EXPECT_EQ(g_seen[0].caption, step.teardown ? "SHUTDOWN ERROR" : "ERROR");
            EXPECT_EQ(
                g_seen[0].flags,
                static_cast<unsigned int>(MB_OK | (step.teardown ? MB_ICONINFORMATION : MB_ICONEXCLAMATION)));
        } else {
            EXPECT_TRUE(g_seen.empty());
        }
        EXPECT_EQ(g_window.window, nullptr);
        EXPECT_EQ(g_window.deviceContext, nullptr);
        EXPECT_EQ(g_window.renderContext, nullptr);
        // A window made after the failure is whole.
        g_seen.clear();
        ASSERT_EQ(g_window.Create(nullptr, 320, 240, 0), 1);
        ExpectClearsTo(0.0f, 0.0f, 1.0f);
        EXPECT_TRUE(g_seen.empty());
    }
}

}  // namespace
