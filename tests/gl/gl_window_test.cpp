// The GL window under a real X display, every failure path of creation and teardown: each
// step made to fail in turn shows its own box (creation "ERROR" with an exclamation, teardown
// "SHUTDOWN ERROR" with information) after tearing down what was made, leaves no window,
// context or drawable behind, and the next Create works and draws, in the clear colour or,
// while fog is on, the fog's.
#include "app/gl_window.h"

#include <gtest/gtest.h>

#include <set>
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
};

TEST_F(GlWindowTest, EachFailingStepShowsItsOwnBoxAndLeavesNothing) {
    std::set<std::string> texts;
    // Every step in turn, then none: a clean teardown shows nothing.
    for (int k = SysStepInitVideo; k <= SysStepShutdownVideo + 1; k++) {
        int step = k > SysStepShutdownVideo ? SysStepNone : k;
        SCOPED_TRACE(step);
        bool teardown = step >= SysStepReleaseCurrent || step == SysStepNone;
        // A live window first: a failing Create must also take the old one down.
        ASSERT_EQ(g_window.Create("Vantle2\x99", 320, 240, 0), 1);
        g_seen.clear();
        Sys_FailWindowStep(step);
        if (teardown) {
            g_window.Destroy();
        } else {
            EXPECT_EQ(g_window.Create(nullptr, 400, 300, 0), 0);
            // The size asked for is kept for the next attempt, as "VID_RESTART" relies on.
            EXPECT_EQ(g_window.width, 400);
            EXPECT_EQ(g_window.height, 300);
        }
        Sys_FailWindowStep(SysStepNone);
        if (step != SysStepNone) {
            ASSERT_EQ(g_seen.size(), 1u);
            EXPECT_TRUE(texts.insert(g_seen[0].text).second) << g_seen[0].text;
            EXPECT_EQ(g_seen[0].caption, teardown ? "SHUTDOWN ERROR" : "ERROR");
            EXPECT_EQ(g_seen[0].flags, static_cast<unsigned int>(
                                           MB_OK | (teardown ? MB_ICONINFORMATION : MB_ICONEXCLAMATION)));
        } else {
            EXPECT_TRUE(g_seen.empty());  // a clean teardown shows nothing
        }
        EXPECT_EQ(g_window.window, nullptr);
        EXPECT_EQ(g_window.deviceContext, nullptr);
        EXPECT_EQ(g_window.renderContext, nullptr);
        // A window made after the failure is whole: it clears to a colour, or the fog's.
        g_seen.clear();
        ASSERT_EQ(g_window.Create(nullptr, 320, 240, 0), 1);
        EXPECT_EQ(g_activeWindow, &g_window);
        const float blue[3] = {0.0f, 0.0f, 1.0f}, red[3] = {1.0f, 0.0f, 0.0f};
        memcpy(g_window.clearColour, blue, sizeof(blue));
        memcpy(g_window.fogColour, red, sizeof(red));
        g_window.fogEnabled = step == SysStepNone;
        g_window.BeginFrame();
        EXPECT_TRUE(drawtest::Near(drawtest::ReadFrame().At(160, 120), 255 * g_window.fogEnabled, 0,
                                   255 * !g_window.fogEnabled, 0));
        EXPECT_TRUE(g_seen.empty());
    }
}

}  // namespace
