// The transport's hooks in a real window: start-up's socket-layer start, and
// "VID_RESTART" pointing the arrival notification of a notified endpoint at
// the new window while a polled endpoint stays polled and both sockets keep
// working on 127.0.0.1.
#include <gtest/gtest.h>

#include "app/console.h"
#include "app/gl_window.h"
#include "app/net_hooks.h"
#include "app/scene_hooks.h"
#include "net/net_endpoint.h"

TEST(RestartServices, NotifiedEndpointsFollowTheNewWindowAndKeepTheirSockets) {
    EngineHooks saved = g_hooks;
    InstallNetHooks();
    ASSERT_NE(g_hooks.netStartup, nullptr);
    EXPECT_EQ(g_hooks.netStartup(), 1);

    ASSERT_EQ(g_window.Create("Restart test", 64, 64, 0), 1);
    int stale = 0;
    g_netHost.udp.notifyWindow = &stale;  // stands for a window that is gone
    ASSERT_EQ(g_netHost.Open(0), 1);
    NetEndpoint polled(NetEndpoint::kHost);
    ASSERT_EQ(polled.Open(0), 1);

    ExecuteCommand("VID_RESTART");
    ASSERT_NE(g_window.window, nullptr);
    EXPECT_EQ(g_netHost.udp.notifyWindow, g_window.window);
    EXPECT_EQ(polled.udp.notifyWindow, nullptr);

    NetPacket packet;
    packet.WriteUInt32(0xC0FFEE);
    packet.address = Sys_NetAddress(127, 0, 0, 1, g_netHost.udp.LocalPort());
    polled.Send(packet);
    ASSERT_EQ(g_netHost.udp.Pending(2000), 1);
    NetPacket got;
    ASSERT_EQ(g_netHost.Receive(got), 1);
    uint32_t value = 0;
    EXPECT_EQ(got.ReadUInt32(&value), 1);
    EXPECT_EQ(value, 0xC0FFEEu);

    g_netHost.Close();
    g_netHost.udp.notifyWindow = nullptr;
    g_window.Destroy();
    g_hooks = saved;
}
