// The network panel follows an endpoint's statistics: its five figure lines
// are rewritten from the traffic an endpoint really saw on 127.0.0.1, the
// vertex array is rebuilt to match, and the panel shows the host while its
// socket is open and the peer otherwise.
#include "net/net_panel.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "net/net_endpoint.h"
#include "platform/sys_clock.h"
#include "ui/text_batch.h"

namespace {

int64_t s_nowMs = 0;
int64_t PanelCounter() {
    return s_nowMs;
}

// The panel as start-up lays it out: a title and five zeroed figures.
void FillPanel(TextBatch& panel) {
    static const char* const kLines[6] = {"Net debug",  "Seq. in: 0", "Seq.out: 0",
                                          "Packets: 0", "KB/sec : 0", "Ping   : 0"};
    for (int i = 0; i < 6; i++) {
        ASSERT_EQ(panel.AddEntry(kLines[i], 680, 32.0f + 14.0f * i, 780, 10, 1.0f, 0), i);
    }
    panel.Build();
}

// An entry's glyph indices, and those a text would have: equal when the entry shows the text.
std::vector<int> Shown(const TextBatch& panel, int index) {
    const TextEntry& entry = panel.entries[index];
    return std::vector<int>(entry.glyphs, entry.glyphs + entry.length);
}
std::vector<int> Text(const char* text) {
    std::vector<int> glyphs;
    for (const char* c = text; *c; c++) {
        glyphs.push_back(TextBatch::GlyphIndex(static_cast<unsigned char>(*c)));
    }
    return glyphs;
}

int Glyphs(const TextBatch& panel) {
    int total = 0;
    for (int i = 0; i < panel.count; i++) {
        total += panel.entries[i].length;
    }
    return total;
}

class NetPanel : public ::testing::Test {
protected:
    void SetUp() override {
        s_nowMs = 50000;
        SysTestClock clock = {1000, PanelCounter};
        Sys_SetTestClock(&clock);
    }
    void TearDown() override { Sys_SetTestClock(nullptr); }
};

}  // namespace

TEST_F(NetPanel, FiguresOfRealTrafficReplaceTheZeros) {
    NetEndpoint host(NetEndpoint::kHost);
    NetEndpoint peer(NetEndpoint::kPeer);
    ASSERT_EQ(host.Open(0), 1);
    ASSERT_EQ(peer.Open("127.0.0.1", host.udp.LocalPort()), 1);
    // Three reliable messages of 510 payload bytes: 512 bytes each on the wire.
    char payload[510];
    memset(payload, 'x', sizeof(payload));
    for (int i = 0; i < 3; i++) {
        NetPacket packet;
        packet.WriteBytes(payload, sizeof(payload));
        packet.address = peer.serverAddress;
        packet.flags = 1;
        peer.Send(packet);
    }
    s_nowMs += 40;
    int delivered = 0;
    NetPacket got;
    while (delivered < 3 && host.udp.Pending(2000)) {
        delivered += host.Receive(got);
        if (delivered == 1) {
            host.AddPeer(got.address);  // known from now on: its own counter numbers the replies
        }
    }
    ASSERT_EQ(delivered, 3);
    s_nowMs += 25;  // the acknowledgements come back 65 ms after the first transmission
    int acknowledgements = 0;
    while (acknowledgements < 3 && peer.udp.Pending(2000)) {
        EXPECT_EQ(peer.Receive(got), 0);
        acknowledgements++;
    }
    ASSERT_EQ(peer.PendingCount(), 0);
    s_nowMs += 935;  // one second after the first send
    peer.Update();

    TextBatch panel;
    FillPanel(panel);
    unsigned int before = panel.triangleCount;
    ASSERT_EQ(NetPanel_Show(peer, panel), 1);
    EXPECT_EQ(Shown(panel, 0), Text("Net debug"));
    EXPECT_EQ(Shown(panel, 1), Text("Seq. in: 1"));  // acknowledgements numbered 0, 0, 1
    EXPECT_EQ(Shown(panel, 2), Text("Seq.out: 2"));
    EXPECT_EQ(Shown(panel, 3), Text("Packets: 6"));
    // 3 x 512 bytes sent and 3 x 3 received in one second: 1545 / 1024 KiB.
    EXPECT_EQ(Shown(panel, 4), Text("KB/sec : 1.5"));
    EXPECT_EQ(Shown(panel, 5), Text("Ping   : 65"));
    EXPECT_GT(panel.triangleCount, before);
    EXPECT_EQ(panel.triangleCount, static_cast<unsigned int>(2 * Glyphs(panel)));
}

TEST_F(NetPanel, APanelWithoutItsSixLinesIsLeftAlone) {
    NetEndpoint peer(NetEndpoint::kPeer);
    peer.stats.packets = 9;
    TextBatch panel;
    for (int i = 0; i < 5; i++) {
        panel.AddEntry("Packets: 0", 0, 0, 100, 10, 1.0f, 0);
    }
    EXPECT_EQ(NetPanel_Show(peer, panel), 0);
    EXPECT_EQ(Shown(panel, 3), Text("Packets: 0"));
    EXPECT_EQ(panel.triangleCount, 0u);
}

TEST_F(NetPanel, RefreshShowsTheHostWhileItIsOpenElseThePeer) {
    g_netDebugText.Reset();
    FillPanel(g_netDebugText);
    g_netPeer.stats.Reset(0);
    g_netHost.stats.Reset(0);
    g_netPeer.stats.packets = 7;
    g_netPeer.stats.sequenceOut = 200;
    ASSERT_EQ(NetPanel_Refresh(), 1);
    EXPECT_EQ(Shown(g_netDebugText, 3), Text("Packets: 7"));
    EXPECT_EQ(Shown(g_netDebugText, 2), Text("Seq.out: 200"));

    ASSERT_EQ(g_netHost.Open(0), 1);
    g_netHost.stats.packets = 12;
    ASSERT_EQ(NetPanel_Refresh(), 1);
    EXPECT_EQ(Shown(g_netDebugText, 3), Text("Packets: 12"));
    EXPECT_EQ(Shown(g_netDebugText, 2), Text("Seq.out: 0"));

    g_netHost.Close();
    ASSERT_EQ(NetPanel_Refresh(), 1);
    EXPECT_EQ(Shown(g_netDebugText, 3), Text("Packets: 7"));
    g_netPeer.stats.Reset(0);
    g_netDebugText.Reset();
}
