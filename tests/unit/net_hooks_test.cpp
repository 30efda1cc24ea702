// The transport's hooks as the main loop drives them: start-up's socket-layer
// start, and the network panel brought up to date every 100 ms from the
// endpoint's figures, its rate falling again once the traffic stops.
#include "app/net_hooks.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "app/console.h"
#include "app/frame_timer.h"
#include "app/gl_window.h"
#include "app/main_loop.h"
#include "app/scene_hooks.h"
#include "net/net_endpoint.h"
#include "platform/sys_events.h"
#include "test_clock.h"
#include "ui/text_batch.h"

namespace {

std::vector<int> Shown(int index) {
    const TextEntry& entry = g_netDebugText.entries[index];
    return std::vector<int>(entry.glyphs, entry.glyphs + entry.length);
}
std::vector<int> Text(const char* text) {
    std::vector<int> glyphs;
    for (const char* c = text; *c; c++) {
        glyphs.push_back(TextBatch::GlyphIndex(static_cast<unsigned char>(*c)));
    }
    return glyphs;
}

class NetHooks : public ::testing::Test {
protected:
    test::ManualClock clock{5000000};

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
        g_netDebugText.Reset();
        static const char* const kLines[6] = {"Net debug",  "Seq. in: 0", "Seq.out: 0",
                                              "Packets: 0", "KB/sec : 0", "Ping   : 0"};
        for (int i = 0; i < 6; i++) {
            g_netDebugText.AddEntry(kLines[i], 680, 32.0f + 14.0f * i, 780, 10, 1.0f, 0);
        }
        g_netPeer.stats.Reset(Sys_TickCount());
    }
    void TearDown() override {
        g_hooks = EngineHooks();
        g_netPeer.stats.Reset(0);
        g_netDebugText.Reset();
        Sys_FlushMessages();
    }
};

}  // namespace

TEST_F(NetHooks, StartUpStartsTheSocketLayer) {
    ASSERT_NE(g_hooks.netStartup, nullptr);
    EXPECT_EQ(g_hooks.netStartup(), 1);
    EXPECT_NE(g_hooks.rebindNetwork, nullptr);
}

TEST_F(NetHooks, TheLoopKeepsThePanelCurrent) {
    uint32_t start = Sys_TickCount();
    g_netPeer.stats.CountSent(4, 1024, start);
    g_netPeer.stats.CountSent(5, 1024, start);
    clock.AdvanceMs(60);
    MainLoopPass();
    EXPECT_EQ(Shown(2), Text("Seq.out: 0"));  // not yet 100 ms
    clock.AdvanceMs(40);
    MainLoopPass();
    EXPECT_EQ(Shown(2), Text("Seq.out: 5"));
    EXPECT_EQ(Shown(3), Text("Packets: 2"));
    EXPECT_EQ(Shown(4), Text("KB/sec : 0.0"));  // the first second is still being measured
    EXPECT_GT(g_netDebugText.triangleCount, 0u);

    clock.AdvanceMs(900);
    MainLoopPass();
    EXPECT_EQ(Shown(4), Text("KB/sec : 2.0"));
    // Nothing more is sent: the next full second brings the rate down without any Update.
    clock.AdvanceMs(1000);
    MainLoopPass();
    EXPECT_EQ(Shown(4), Text("KB/sec : 0.0"));
    EXPECT_EQ(Shown(3), Text("Packets: 2"));
}
