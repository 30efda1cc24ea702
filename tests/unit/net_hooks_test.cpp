// The network panel as the main loop drives it: brought up to date every 100 ms
// from the endpoint's figures, its rate falling again once the traffic stops.
#include "app/net_hooks.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "app/frame_timer.h"
#include "app/gl_window.h"
#include "app/main_loop.h"
#include "app/scene_hooks.h"
#include "net/net_endpoint.h"
#include "platform/sys_events.h"
#include "test_clock.h"
#include "text_shown.h"
#include "ui/text_batch.h"

namespace {

std::string Shown(int index) {
    return test::Shown(g_netDebugText, index);
}

class NetHooks : public ::testing::Test {
protected:
    test::ManualClock clock{5000000};
    FrameTimer savedTimer = g_timer;

    void SetUp() override {
        Sys_FlushMessages();
        g_hooks = EngineHooks();
        InstallNetHooks();
        g_window.active = 1;
        g_window.sceneDraw = nullptr;
        g_scene = SceneMenu;
        g_quit = 0;
        memset(&g_timer, 0, sizeof(g_timer));
        g_timer.Init(0);
        g_timer.SetPeriod(TimerUpdate, 20);
        g_timer.SetPeriod(TimerStats, 100);
        // The panel as start-up lays it out: a title and five zeroed figures.
        static const char* const kLines[6] = {"Net debug",  "Seq. in: 0", "Seq.out: 0",
                                              "Packets: 0", "KB/sec : 0", "Ping   : 0"};
        g_netDebugText.Reset();
        for (int i = 0; i < 6; i++) {
            g_netDebugText.AddEntry(kLines[i], 680, 32.0f + 14.0f * i, 780, 10, 1.0f, 0);
        }
        g_netPeer.stats.Reset(Sys_TickCount());
    }
    void TearDown() override {
        g_hooks = EngineHooks();
        g_timer = savedTimer;
        g_netPeer.stats.Reset(0);
        g_netDebugText.Reset();
        Sys_FlushMessages();
    }
};

}  // namespace

TEST_F(NetHooks, TheLoopKeepsThePanelCurrent) {
    uint32_t start = Sys_TickCount();
    g_netPeer.stats.CountSent(4, 1024, start);
    g_netPeer.stats.CountSent(5, 1024, start);
    clock.AdvanceMs(60);
    MainLoopPass();
    EXPECT_EQ(Shown(2), "Seq.out: 0");  // not yet 100 ms
    clock.AdvanceMs(40);
    MainLoopPass();
    EXPECT_EQ(Shown(2), "Seq.out: 5");
    EXPECT_EQ(Shown(3), "Packets: 2");
    EXPECT_EQ(Shown(4), "KB/sec : 0.0");  // the first second is still being measured
    int glyphs = 0;
    for (int i = 0; i < 6; i++) {
        glyphs += g_netDebugText.entries[i].length;
    }
    EXPECT_EQ(g_netDebugText.triangleCount, 2u * glyphs);

    clock.AdvanceMs(900);
    MainLoopPass();
    EXPECT_EQ(Shown(4), "KB/sec : 2.0");
    // Nothing more is sent: the next full second brings the rate down without any Update.
    clock.AdvanceMs(1000);
    MainLoopPass();
    EXPECT_EQ(Shown(4), "KB/sec : 0.0");
    EXPECT_EQ(Shown(3), "Packets: 2");
}
