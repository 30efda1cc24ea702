// Packet payloads: byte layout of the writers, the 8192-byte buffer that never
// takes its last byte, reads that stop at the payload's end, and the panel figures.
#include "net/net_packet.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "net/net_stats.h"

TEST(NetPacket, WritersAppendNativeOrderBytesAndReadBackInOrder) {
    NetPacket packet;
    ASSERT_NE(packet.WriteUInt8(0xAB), nullptr);
    ASSERT_NE(packet.WriteUInt16(0x1234), nullptr);
    ASSERT_NE(packet.WriteUInt32(0xDEADBEEF), nullptr);
    ASSERT_NE(packet.WriteInt32(-2), nullptr);
    ASSERT_NE(packet.WriteFloat(1.5f), nullptr);
    const char tail[3] = {'x', 'y', 'z'};
    uint8_t* at = packet.WriteBytes(tail, 3);
    ASSERT_EQ(at, packet.data + 15);
    ASSERT_EQ(packet.size, 18u);
    const uint8_t expected[18] = {0xAB, 0x34, 0x12, 0xEF, 0xBE, 0xAD, 0xDE, 0xFE, 0xFF,
                                  0xFF, 0xFF, 0x00, 0x00, 0xC0, 0x3F, 'x',  'y',  'z'};
    EXPECT_EQ(0, memcmp(packet.data, expected, 18));

    uint8_t u8 = 0;
    uint16_t u16 = 0;
    uint32_t u32 = 0;
    int32_t i32 = 0;
    float f = 0;
    char rest[3];
    ASSERT_TRUE(packet.ReadUInt8(&u8) && packet.ReadUInt16(&u16) && packet.ReadUInt32(&u32));
    ASSERT_TRUE(packet.ReadInt32(&i32) && packet.ReadFloat(&f) && packet.ReadBytes(rest, 3));
    EXPECT_EQ(u8, 0xAB);
    EXPECT_EQ(u16, 0x1234);
    EXPECT_EQ(u32, 0xDEADBEEFu);
    EXPECT_EQ(i32, -2);
    EXPECT_EQ(f, 1.5f);
    EXPECT_EQ(0, memcmp(rest, tail, 3));
    EXPECT_EQ(packet.ReadUInt8(&u8), 0);
}

TEST(NetPacket, ReadsPastThePayloadFailWithoutMovingTheCursor) {
    NetPacket empty;
    uint32_t value = 7;
    EXPECT_EQ(empty.ReadUInt32(&value), 0);
    EXPECT_EQ(value, 7u);

    NetPacket packet;
    packet.WriteUInt16(5);
    packet.WriteUInt8(9);
    EXPECT_EQ(packet.ReadUInt32(&value), 0);
    uint16_t first = 0;
    uint8_t second = 0;
    EXPECT_EQ(packet.ReadUInt16(&first), 1);
    EXPECT_EQ(packet.ReadUInt16(&first), 0);
    EXPECT_EQ(packet.ReadUInt8(&second), 1);
    EXPECT_EQ(second, 9);
}

TEST(NetPacket, AWriteThatWouldReachCapacityWritesNothing) {
    NetPacket packet;
    std::vector<uint8_t> bulk(8188, 0x11);
    ASSERT_NE(packet.WriteBytes(bulk.data(), 8188), nullptr);
    EXPECT_EQ(packet.WriteUInt32(0xFFFFFFFF), nullptr);  // 8192 would be the full buffer
    EXPECT_NE(packet.WriteUInt16(0x2222), nullptr);
    EXPECT_EQ(packet.WriteUInt16(0x3333), nullptr);
    EXPECT_NE(packet.WriteUInt8(0x44), nullptr);
    EXPECT_EQ(packet.WriteUInt8(0x55), nullptr);
    EXPECT_EQ(packet.size, 8191u);
    EXPECT_EQ(packet.data[8190], 0x44);
}

TEST(NetStats, PanelLinesShowCountsRateAndRoundTrip) {
    NetStats stats;
    stats.Reset(5000);
    for (int i = 0; i < 10; i++) {
        stats.CountSent(static_cast<uint8_t>(i), 102, 5000 + i * 50);
    }
    stats.CountReceived(42, 2028, 5900);
    stats.roundTripMs = 37;
    char lines[5][32];
    stats.FormatLines(lines);
    EXPECT_STREQ(lines[0], "Seq. in: 42");
    EXPECT_STREQ(lines[1], "Seq.out: 9");
    EXPECT_STREQ(lines[2], "Packets: 11");
    EXPECT_STREQ(lines[3], "KB/sec : 0.0");  // the first second is not over yet
    EXPECT_STREQ(lines[4], "Ping   : 37");
    stats.Tick(6000);  // 1020 + 2028 bytes in one second
    stats.FormatLines(lines);
    EXPECT_STREQ(lines[3], "KB/sec : 3.0");
    stats.Tick(8000);  // two quiet seconds
    EXPECT_EQ(stats.kilobytesPerSecond, 0.0f);
}
