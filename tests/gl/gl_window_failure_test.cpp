// Every failure path of the GL window on a real display: each creation step made to
// fail in turn shows its own box ("ERROR", exclamation) after tearing down what was
// made, and leaves no window, context or drawable behind; each teardown step that
// fails shows its own box ("SHUTDOWN ERROR", information) and teardown still runs to
// the end. After every failure the next Create works and draws.
#include <GL/gl.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/gl_window.h"
#include "platform/sys_message_box.h"
#include "platform/sys_window.h"

namespace {

struct Box {
    std::string text;
    std::string caption;
    unsigned int flags;
};

std::vector<Box> g_seen;

class GlWindowFailureTest : public ::testing::Test {
protected:
    void SetUp() override {
        g_seen.clear();
        Sys_SetMessageBoxHook([](const char* text, const char* caption, unsigned int flags) {
            g_seen.push_back({text, caption, flags});
        });
    }
    void TearDown() override {
        Sys_FailWindowStep(SysStepNone);
        if (g_window.window) {
            g_window.Destroy();
        }
        Sys_SetMessageBoxHook(nullptr);
    }
    // A window made after a failure is whole: it clears to a colour and reads it back.
    static void ExpectAWorkingWindow() {
        g_seen.clear();
        ASSERT_EQ(g_window.Create(nullptr, 320, 240, 0), 1);
        EXPECT_TRUE(g_seen.empty());
        g_window.clearColour[0] = 0.0f;
        g_window.clearColour[1] = 0.0f;
        g_window.clearColour[2] = 1.0f;
        g_window.BeginFrame();
        unsigned char rgb[3] = {};
        glReadBuffer(GL_BACK);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glReadPixels(160, 120, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, rgb);
        EXPECT_EQ(rgb[0], 0);
        EXPECT_EQ(rgb[2], 255);
    }
};

struct StepMessage {
    int step;
    const char* text;
};

TEST_F(GlWindowFailureTest, EachCreationStepFailsWithItsOwnBoxAndLeavesNothing) {
    static const StepMessage kSteps[] = {
        {SysStepInitVideo, "halix_Renderer : Failed To Register The Window Class."},
        {SysStepCreateWindow, "halix_Renderer : Window Creation Error."},
        {SysStepDeviceContext, "halix_Renderer : Can't Create A GL Device Context."},
        {SysStepChoosePixelFormat, "halix_Renderer : Can't Find A Suitable PixelFormat."},
        {SysStepSetPixelFormat, "halix_Renderer : Can't Set The PixelFormat."},
        {SysStepCreateContext, "halix_Renderer : Can't Create A GL Rendering Context."},
        {SysStepMakeCurrent, "halix_Renderer : Can't Activate The GL Rendering Context."},
    };
    for (const StepMessage& step : kSteps) {
        SCOPED_TRACE(step.text);
        // A live window first: the failing Create must also take the old one down.
        ASSERT_EQ(g_window.Create("Vantle2\x99", 320, 240, 0), 1);
        g_seen.clear();
        Sys_FailWindowStep(step.step);
        EXPECT_EQ(g_window.Create(nullptr, 400, 300, 0), 0);
        Sys_FailWindowStep(SysStepNone);
        ASSERT_EQ(g_seen.size(), 1u);
        EXPECT_EQ(g_seen[0].text, step.text);
        EXPECT_EQ(g_seen[0].caption, "ERROR");
        EXPECT_EQ(g_seen[0].flags, static_cast<unsigned int>(MB_OK | MB_ICONEXCLAMATION));
        EXPECT_EQ(g_window.window, nullptr);
        EXPECT_EQ(g_window.deviceContext, nullptr);
        EXPECT_EQ(g_window.renderContext, nullptr);
        // The size asked for is kept for the next attempt, as "VID_RESTART" relies on.
        EXPECT_EQ(g_window.width, 400);
        EXPECT_EQ(g_window.height, 300);
        ExpectAWorkingWindow();
    }
}

TEST_F(GlWindowFailureTest, EachTeardownStepReportsItsFailureAndTeardownGoesOn) {
    static const StepMessage kSteps[] = {
        {SysStepReleaseCurrent, "halix_Renderer : Release Of DC And RC Failed."},
        {SysStepDeleteContext, "halix_Renderer : Release Rendering Context Failed."},
        {SysStepReleaseDeviceContext, "halix_Renderer : Release Device Context Failed."},
        {SysStepDestroyWindow, "halix_Renderer : Could Not Release hWnd."},
        {SysStepShutdownVideo, "halix_Renderer : Could Not Unregister Class."},
    };
    for (const StepMessage& step : kSteps) {
        SCOPED_TRACE(step.text);
        ASSERT_EQ(g_window.Create(nullptr, 320, 240, 0), 1);
        g_seen.clear();
        Sys_FailWindowStep(step.step);
        g_window.Destroy();
        Sys_FailWindowStep(SysStepNone);
        ASSERT_EQ(g_seen.size(), 1u);
        EXPECT_EQ(g_seen[0].text, step.text);
        EXPECT_EQ(g_seen[0].caption, "SHUTDOWN ERROR");
        EXPECT_EQ(g_seen[0].flags, static_cast<unsigned int>(MB_OK | MB_ICONINFORMATION));
        EXPECT_EQ(g_window.window, nullptr);
        EXPECT_EQ(g_window.deviceContext, nullptr);
        EXPECT_EQ(g_window.renderContext, nullptr);
        ExpectAWorkingWindow();
    }
}

TEST_F(GlWindowFailureTest, ACleanTeardownShowsNothing) {
    ASSERT_EQ(g_window.Create(nullptr, 320, 240, 0), 1);
    g_seen.clear();
    g_window.Destroy();
    EXPECT_TRUE(g_seen.empty());
    EXPECT_EQ(g_window.window, nullptr);
}

}  // namespace
