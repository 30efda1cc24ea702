// The main loop's scheduling, one pass at a time, with a hand-driven clock and no window.
#include "app/main_loop.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "app/console.h"
#include "app/frame_timer.h"
#include "app/gl_window.h"
#include "app/scene_hooks.h"
#include "platform/sys_events.h"
#include "test_clock.h"

namespace {

int g_menuTicks, g_gameTicks, g_endTicks, g_draws, g_refreshes, g_musicTicks;

class MainLoop : public ::testing::Test {
protected:
    void SetUp() override {
        Sys_FlushMessages();
        g_menuTicks = g_gameTicks = g_endTicks = g_draws = g_refreshes = g_musicTicks = 0;
        g_hooks = EngineHooks();
        g_hooks.updateMenu = [] { g_menuTicks++; };
        g_hooks.updateGame = [] { g_gameTicks++; };
        g_hooks.updateClosingScene = [] { g_endTicks++; };
        g_hooks.refreshDebugPanel = [] { g_refreshes++; };
        g_hooks.musicUpdate = [] { g_musicTicks++; };
        g_window.sceneDraw = [] { g_draws++; };
        g_window.active = 1;
        g_window.videoQuality = 0;
        g_scene = SceneMenu;
        g_quit = 0;
        ticksRun = 0;
        g_console.visible = 0;
        g_console.slide = -240.0f;
        memset(&g_timer, 0, sizeof(g_timer));
        g_timer.Init(0);
        g_timer.SetPeriod(TimerUpdate, 20);
        g_timer.SetPeriod(TimerStats, 100);
    }
    void TearDown() override {
        g_hooks = EngineHooks();
        g_window.sceneDraw = nullptr;
        Sys_FlushMessages();
    }
    test::ManualClock clock;
};

TEST_F(MainLoop, NothingRunsWithinAPeriodAndAStallRunsAtMostAHundredTicksAndDrawsOnce) {
    uint32_t frames = g_window.framesDrawn;
    clock.AdvanceMs(19);
    MainLoopPass();
    EXPECT_EQ(g_menuTicks, 0);
    EXPECT_EQ(g_window.framesDrawn, frames);
    clock.AdvanceMs(3001);
    MainLoopPass();
    EXPECT_EQ(g_menuTicks, 100);
    EXPECT_EQ(g_draws, 1);
    EXPECT_EQ(g_window.framesDrawn, frames + 1);
    // The rest of the backlog is lost, not run later.
    clock.AdvanceMs(10);
    MainLoopPass();
    EXPECT_EQ(g_menuTicks, 100);
}

TEST_F(MainLoop, FiftyTicksASecondAtAnyPassRate) {
    for (int i = 0; i < 1000; i++) {
        clock.AdvanceUs(7000);  // 7 ms passes: 7 seconds in all
        MainLoopPass();
    }
    // A channel pays out on every third pass (21 ms) and carries the 1 ms surplus, so
    // 333 paying passes deliver 349 ticks of the 350 whole periods (0.65 still carried).
    EXPECT_EQ(g_menuTicks, 349);
    EXPECT_EQ(g_musicTicks, 349) << "the music is fed once a tick";
    EXPECT_EQ(g_draws, 333);     // one frame per pass that ticked
    EXPECT_EQ(g_refreshes, 66);  // every 15th pass (105 ms)
}

TEST_F(MainLoop, TheSceneChoosesTheUpdate) {
    g_scene = SceneGame;
    clock.AdvanceMs(40);
    MainLoopPass();
    g_scene = SceneEnd;
    clock.AdvanceMs(20);
    MainLoopPass();
    g_scene = 9;  // anything else runs the menu
    clock.AdvanceMs(20);
    MainLoopPass();
    EXPECT_EQ(g_gameTicks, 2);
    EXPECT_EQ(g_endTicks, 1);
    EXPECT_EQ(g_menuTicks, 1);
}

TEST_F(MainLoop, QueuedMessagesAreDrainedBeforeFrameWork) {
    SysWindow* other = reinterpret_cast<SysWindow*>(static_cast<uintptr_t>(0x1000));
    Sys_PostMessage(other, WM_KEYDOWN, 'A', 0);
    Sys_PostMessage(nullptr, WM_KEYDOWN, 'B', 0);
    Sys_PostMessage(other, WM_CLOSE, 0, 0);
    clock.AdvanceMs(100);
    for (int i = 0; i < 3; i++) {
        MainLoopPass();
        EXPECT_EQ(g_menuTicks, 0) << "pass " << i;
    }
    // Messages for other windows (or none) were removed without being dispatched.
    EXPECT_EQ(g_window.keys['A'], 0);
    EXPECT_EQ(g_window.keys['B'], 0);
    EXPECT_EQ(g_quit, 0);
    MainLoopPass();
    EXPECT_EQ(g_menuTicks, 5);
}

TEST_F(MainLoop, ConsoleSlidesInFiveTicks) {
    g_console.visible = 1;
    clock.AdvanceMs(80);
    MainLoopPass();
    EXPECT_FLOAT_EQ(g_console.slide, -48.0f);
    clock.AdvanceMs(40);
    MainLoopPass();
    EXPECT_FLOAT_EQ(g_console.slide, 0.0f);
    g_console.visible = 0;
    clock.AdvanceMs(100);
    MainLoopPass();
    EXPECT_FLOAT_EQ(g_console.slide, -240.0f);
}

TEST(AltEnter, SnapsToStandardModes) {
    struct Case {
        int w, h, expectW, expectH;
    } cases[] = {{1600, 1200, 1280, 960}, {320, 200, 320, 200}, {300, 200, 320, 240},
                 {321, 10, 640, 480},     {640, 1, 640, 480},   {800, 5, 800, 600},
                 {801, 5, 1024, 768},     {1152, 1, 1152, 864}, {1153, 1, 1280, 960}};
    for (const Case& c : cases) {
        int w = c.w, h = c.h;
        SnapWindowSize(&w, &h);
        EXPECT_EQ(w, c.expectW) << c.w << "x" << c.h;
        EXPECT_EQ(h, c.expectH) << c.w << "x" << c.h;
    }
}

}  // namespace
