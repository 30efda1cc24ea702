// Feeds byte strings to the transport's receive path as arriving datagrams.
// The whole input first goes to both endpoints as one datagram; then it is read
// as a script of records [control][length low][length high][bytes], each one
// datagram from one of three sources (one a known peer of the host), with
// control bits that also queue reliable sends and step the clock for resends.
// No socket is open, so every send fails harmlessly; nothing leaves the process.
#include <cstring>

#include "fuzz_seeds.h"
#include "net/net_endpoint.h"
#include "platform/sys_clock.h"

static int64_t s_nowMs = 0;
static int64_t FuzzCounter() {
    return s_nowMs;
}

static void Deliver(NetEndpoint& endpoint, const uint8_t* bytes, int length, const SysNetAddress& from) {
    NetPacket out;
    if (endpoint.HandleDatagram(bytes, length, from, out)) {
        uint32_t value = 0;
        while (out.ReadUInt32(&value)) {
        }
        uint8_t last = 0;
        while (out.ReadUInt8(&last)) {
        }
        if (out.size < 64) {
            DumpIncoming(out);
        }
    }
}

static void QueueReliable(NetEndpoint& endpoint, const SysNetAddress& to, uint8_t value) {
    NetPacket packet;
    packet.WriteUInt8(value);
    packet.address = to;
    packet.flags = 1;
    endpoint.Send(packet);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    SysTestClock clock = {1000, FuzzCounter};
    Sys_SetTestClock(&clock);
    s_nowMs = 0;
    NetEndpoint host(NetEndpoint::kHost);
    NetEndpoint peer(NetEndpoint::kPeer);
    const SysNetAddress sources[3] = {Sys_NetAddress(127, 0, 0, 1, 5000), Sys_NetAddress(127, 0, 0, 1, 5001),
                                      Sys_NetAddress(10, 1, 2, 3, 37491)};
    host.AddPeer(sources[0]);
    int whole = size > 65536 ? 65536 : static_cast<int>(size);
    Deliver(host, data, whole, sources[0]);
    Deliver(peer, data, whole, sources[1]);

    size_t at = 0;
    while (at + 3 <= size) {
        uint8_t control = data[at];
        size_t length = data[at + 1] | (data[at + 2] << 8);
        at += 3;
        if (length > size - at) {
            length = size - at;
        }
        NetEndpoint& endpoint = (control & 1) ? peer : host;
        const SysNetAddress& from = sources[(control >> 1) % 3];
        if (control & 0x10) {
            QueueReliable(endpoint, from, control);
        }
        if (control & 0x20) {
            s_nowMs += 150 * ((control >> 6) + 1);
            endpoint.Update();
        }
        Deliver(endpoint, data + at, static_cast<int>(length), from);
        at += length;
    }
    Sys_SetTestClock(nullptr);
    return 0;
}

static void AddRecord(std::vector<uint8_t>& script, uint8_t control, const NetPacket& packet) {
    uint32_t length = packet.size + 2;
    script.push_back(control);
    script.push_back(static_cast<uint8_t>(length & 0xFF));
    script.push_back(static_cast<uint8_t>(length >> 8));
    script.push_back(packet.sequence);
    script.push_back(packet.flags);
    script.insert(script.end(), packet.data, packet.data + packet.size);
}

void VantleFuzzSeeds(FuzzSeedList& seeds) {
    NetPacket message;
    message.WriteUInt32(0x01020304);
    message.WriteFloat(2.5f);
    message.WriteUInt16(7);
    message.WriteBytes("payload", 7);
    message.sequence = 3;
    message.flags = 1;
    NetPacket ack;
    ack.WriteUInt8(1);
    ack.flags = 2;

    std::vector<uint8_t> single = {message.sequence, message.flags};
    single.insert(single.end(), message.data, message.data + message.size);
    AddSeed(seeds, single.data(), single.size());

    // Reliable sends, an acknowledgement, resends, and sequences around the wrap.
    std::vector<uint8_t> script;
    AddRecord(script, 0x10, message);
    AddRecord(script, 0x11 | 0x20, message);
    AddRecord(script, 0x00, ack);
    message.flags = 0;
    for (int sequence : {200, 150, 255, 251, 3}) {
        message.sequence = static_cast<uint8_t>(sequence);
        AddRecord(script, 0x01, message);
        AddRecord(script, 0x02, message);
    }
    AddRecord(script, 0xE0, ack);
    AddSeed(seeds, script.data(), script.size());
}
