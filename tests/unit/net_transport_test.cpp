// The datagram transport over real sockets on 127.0.0.1: header bytes on the
// wire, acknowledgements, stale filtering with its wrap window and timed resends.
// Raw sockets stand in for the far side where the exact bytes matter. Time runs on
// a test clock so resends happen on command; waits for arriving datagrams are
// bounded but never measured.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "net/net_endpoint.h"
#include "platform/sys_clock.h"

namespace {

int64_t s_nowMs = 0;
int64_t TestCounter() {
    return s_nowMs;
}

const int kArrivalWaitMs = 2000;  // a loopback datagram is there long before this
const int kSilenceWaitMs = 50;    // how long "nothing arrived" is watched for

SysNetAddress Loopback(int port) {
    return Sys_NetAddress(127, 0, 0, 1, port);
}

// One datagram read raw from a socket; empty when none arrived.
std::vector<uint8_t> RawReceive(UdpSocket& socket, SysNetAddress* from = nullptr,
                                int waitMs = kArrivalWaitMs) {
    uint8_t buffer[kNetDatagramSize];
    int length = 0;
    SysNetAddress source;
    if (!socket.Pending(waitMs) || !socket.Receive(buffer, &length, &source)) {
        return {};
    }
    if (from) {
        *from = source;
    }
    return std::vector<uint8_t>(buffer, buffer + length);
}

void RawSend(UdpSocket& socket, int port, std::vector<uint8_t> bytes) {
    ASSERT_EQ(socket.SendTo(Loopback(port), bytes.data(), static_cast<int>(bytes.size())), 1);
}

// Receives on an endpoint once a datagram has arrived: the endpoint's own result.
int EndpointReceive(NetEndpoint& endpoint, NetPacket& out) {
    if (!endpoint.udp.Pending(kArrivalWaitMs)) {
        return -1;
    }
    return endpoint.Receive(out);
}

void SendText(NetEndpoint& endpoint, int port, const char* text, uint8_t flags) {
    NetPacket packet;
    packet.WriteBytes(text, static_cast<uint32_t>(strlen(text)));
    packet.address = Loopback(port);
    packet.flags = flags;
    endpoint.Send(packet);
}

class NetTransport : public ::testing::Test {
protected:
    NetEndpoint host{NetEndpoint::kHost};
    NetEndpoint peer{NetEndpoint::kPeer};
    UdpSocket probe;
    int hostPort = 0;
    int probePort = 0;

    void SetUp() override {
        s_nowMs = 100000;
        SysTestClock clock = {1000, TestCounter};
        Sys_SetTestClock(&clock);
        ASSERT_EQ(host.Open(0), 1);
        hostPort = host.udp.LocalPort();
        ASSERT_GT(hostPort, 0);
        ASSERT_EQ(peer.Open("127.0.0.1", hostPort), 1);
        ASSERT_EQ(probe.Open(0), 1);
        probePort = probe.LocalPort();
        ASSERT_GT(probePort, 0);
    }
    void TearDown() override { Sys_SetTestClock(nullptr); }

    // Gives the peer endpoint a local port (its first send binds it) and returns it.
    int PeerPort() {
        SendText(peer, hostPort, "hello", 0);
        NetPacket ignored;
        EXPECT_EQ(EndpointReceive(host, ignored), 1);
        return peer.udp.LocalPort();
    }
};

}  // namespace

TEST_F(NetTransport, PlainDatagramCarriesSequenceFlagsAndPayload) {
    SendText(host, probePort, "abc", 0);
    SendText(host, probePort, "de", 4);
    EXPECT_EQ(RawReceive(probe), (std::vector<uint8_t>{0, 0, 'a', 'b', 'c'}));
    EXPECT_EQ(RawReceive(probe), (std::vector<uint8_t>{0, 4, 'd', 'e'}));

    // The peer numbers everything it sends from its one counter.
    SendText(peer, probePort, "p", 0);
    SendText(peer, probePort, "q", 0);
    EXPECT_EQ(RawReceive(probe), (std::vector<uint8_t>{0, 0, 'p'}));
    EXPECT_EQ(RawReceive(probe), (std::vector<uint8_t>{1, 0, 'q'}));

    // An empty packet is not sent at all.
    NetPacket empty;
    empty.address = Loopback(probePort);
    host.Send(empty);
    EXPECT_TRUE(RawReceive(probe, nullptr, kSilenceWaitMs).empty());
}

TEST_F(NetTransport, ReliableSendToUnknownAddressIsAnsweredWithThreeByteAck) {
    SendText(host, probePort, "hi", 1);
    EXPECT_EQ(RawReceive(probe), (std::vector<uint8_t>{0, 1, 'h', 'i'}));
    EXPECT_EQ(host.PendingCount(), 1);

    RawSend(probe, hostPort, {77, 1, 'z'});
    NetPacket got;
    ASSERT_EQ(EndpointReceive(host, got), 1);
    EXPECT_EQ(got.sequence, 77);
    EXPECT_EQ(got.flags, 1);
    ASSERT_EQ(got.size, 1u);
    EXPECT_EQ(got.data[0], 'z');
    EXPECT_TRUE(NetSameAddress(got.address, Loopback(probePort)));
    EXPECT_EQ(RawReceive(probe), (std::vector<uint8_t>{0, 2, 1}));
}

TEST_F(NetTransport, KnownPeersHaveTheirOwnCountersOnTheHost) {
    ASSERT_EQ(host.AddPeer(Loopback(probePort)), 0);
    SendText(host, probePort, "a", 0);
    SendText(host, probePort, "b", 1);
    SendText(host, hostPort, "c", 0);  // an address the host does not know
    EXPECT_EQ(RawReceive(probe), (std::vector<uint8_t>{0, 0, 'a'}));
    EXPECT_EQ(RawReceive(probe), (std::vector<uint8_t>{1, 1, 'b'}));
    NetPacket self;
    ASSERT_EQ(EndpointReceive(host, self), 1);
    EXPECT_EQ(self.sequence, 0);

    // The acknowledgement is numbered from the acknowledging side's counter for that peer.
    RawSend(probe, hostPort, {5, 1, 'r'});
    NetPacket got;
    ASSERT_EQ(EndpointReceive(host, got), 1);
    EXPECT_EQ(RawReceive(probe), (std::vector<uint8_t>{2, 2, 1}));
    EXPECT_EQ(host.FindPeer(Loopback(probePort))->inSequence, 5);
    host.Reset();
    EXPECT_EQ(host.FindPeer(Loopback(probePort)), nullptr);
}

TEST_F(NetTransport, PeerDropsStaleSequencesAroundTheWrap) {
    int peerPort = PeerPort();
    struct Step {
        uint8_t sequence;
        int delivered;
    };
    const Step steps[] = {{200, 1}, {150, 0}, {199, 0}, {200, 0}, {201, 1}, {255, 1}, {251, 0}, {252, 0},
                          {253, 0}, {254, 0}, {255, 0}, {3, 1},   {2, 1},   {9, 1},   {5, 0}};
    // Just after the wrap only the numbers just under 256 count as old, so 2 after 3 still passes;
    // from 10 on the plain comparison is back.
    for (const Step& step : steps) {
        RawSend(probe, peerPort, {step.sequence, 0, 'x'});
        NetPacket got;
        EXPECT_EQ(EndpointReceive(peer, got), step.delivered) << "sequence " << int(step.sequence);
    }
    EXPECT_EQ(peer.inSequence, 9);
}

TEST_F(NetTransport, AcknowledgementClearsEveryPendingMessageToItsSender) {
    UdpSocket other;
    ASSERT_EQ(other.Open(0), 1);
    SendText(host, probePort, "one", 1);
    s_nowMs += 10;
    SendText(host, probePort, "two", 1);
    SendText(host, other.LocalPort(), "else", 1);
    SendText(host, probePort, "three", 1);
    s_nowMs += 45;
    RawSend(probe, hostPort, {123, 2, 1});
    NetPacket got;
    EXPECT_EQ(EndpointReceive(host, got), 0);  // acknowledgements are not delivered
    EXPECT_EQ(host.stats.roundTripMs, 55u);  // timed from the oldest cleared message

    // The cleared messages are never sent again; the other one is.
    s_nowMs += 300;
    host.Update();
    EXPECT_EQ(RawReceive(other).size(), 6u);  // its first transmission
    EXPECT_EQ(RawReceive(other), (std::vector<uint8_t>{0, 0, 'e', 'l', 's', 'e'}));
    for (int i = 0; i < 3; i++) {
        RawReceive(probe);
    }
    EXPECT_TRUE(RawReceive(probe, nullptr, kSilenceWaitMs).empty());
}

TEST_F(NetTransport, UnacknowledgedMessageGoesOutThreeTimesThenIsForgotten) {
    SendText(peer, probePort, "rel", 1);
    EXPECT_EQ(RawReceive(probe), (std::vector<uint8_t>{0, 1, 'r', 'e', 'l'}));
    s_nowMs += 299;
    peer.Update();
    EXPECT_TRUE(RawReceive(probe, nullptr, kSilenceWaitMs).empty());
    s_nowMs += 1;
    peer.Update();
    EXPECT_EQ(RawReceive(probe), (std::vector<uint8_t>{1, 0, 'r', 'e', 'l'}));  // plain, fresh number
    s_nowMs += 300;
    peer.Update();
    EXPECT_EQ(RawReceive(probe), (std::vector<uint8_t>{2, 0, 'r', 'e', 'l'}));
    for (int i = 0; i < 4; i++) {
        s_nowMs += 300;
        peer.Update();
    }
    EXPECT_TRUE(RawReceive(probe, nullptr, kSilenceWaitMs).empty());
}
