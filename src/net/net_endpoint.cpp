#include "net/net_endpoint.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "app/console.h"
#include "platform/sys_clock.h"

// Datagrams older than the last accepted one are stale; near the wrap (the next
// expected number below 10) the old ones are those just under 256.
static const int kWrapWindow = 10;
static const int kWrapStale = 250;

int NetSameAddress(const SysNetAddress& a, const SysNetAddress& b) {
    return memcmp(&a, &b, sizeof(SysNetAddress)) == 0 ? 1 : 0;
}

NetEndpoint::NetEndpoint(Role endpointRole)
    : outSequence(0), inSequence(0), connected(0), role(endpointRole) {
    memset(peers, 0, sizeof(peers));
    memset(&serverAddress, 0, sizeof(serverAddress));
}

NetEndpoint::~NetEndpoint() {
    Reset();
    udp.Close();
}

int NetEndpoint::Open(int port) {
    udp.Close();
    stats.Reset(Sys_TickCount());
    return udp.Open(port);
}

int NetEndpoint::Open(const char* hostName, int port) {
    stats.Reset(Sys_TickCount());
    if (!udp.Create()) {
        return 0;
    }
    SysNetAddress resolved;
    if (!Sys_ResolveHost(hostName, &resolved)) {
        return 0;
    }
    serverAddress = Sys_NetAddress(resolved.address[0], resolved.address[1], resolved.address[2],
                                   resolved.address[3], port);
    connected = 1;
    inSequence = 0;
    return 1;
}

void NetEndpoint::Close() {
    udp.Close();
}

void NetEndpoint::Reset() {
    for (int i = 0; i < kPeerCount; i++) {
        delete peers[i];
        peers[i] = nullptr;
    }
    for (int i = 0; i < kPendingCount; i++) {
        pending[i].Clear();
    }
}

int NetEndpoint::AddPeer(const SysNetAddress& address) {
    for (int i = 0; i < kPeerCount; i++) {
        if (!peers[i]) {
            peers[i] = new NetPeer();
            peers[i]->address = address;
            peers[i]->inSequence = 0;
            peers[i]->outSequence = 0;
            peers[i]->lastHeard = Sys_TickCount();
            return i;
        }
    }
    return -1;
}

NetPeer* NetEndpoint::FindPeer(const SysNetAddress& address) {
    for (int i = 0; i < kPeerCount; i++) {
        if (peers[i] && NetSameAddress(peers[i]->address, address)) {
            return peers[i];
        }
    }
    return nullptr;
}

int NetEndpoint::PendingCount() const {
    int busy = 0;
    for (int i = 0; i < kPendingCount; i++) {
        busy += pending[i].size != 0;
    }
    return busy;
}

int NetEndpoint::Poll() const {
    return udp.Pending();
}

uint8_t NetEndpoint::NextSequence(const SysNetAddress& to) {
    if (role == kPeer) {
        return outSequence++;
    }
    NetPeer* peer = FindPeer(to);
    return peer ? peer->outSequence++ : 0;
}

void NetEndpoint::Send(NetPacket& packet) {
    if (!packet.data || packet.size == 0 || packet.size >= NetPacket::kCapacity) {
        return;
    }
    uint32_t now = Sys_TickCount();
    packet.sequence = NextSequence(packet.address);
    if (packet.flags & 1) {
        for (int i = 0; i < kPendingCount; i++) {
            if (pending[i].size == 0) {
                pending[i].CopyFrom(packet);
                pending[i].sentTime = now;
                break;
            }
        }
    }
    uint8_t datagram[NetPacket::kCapacity + 2];
    datagram[0] = packet.sequence;
    datagram[1] = packet.flags;
    memcpy(datagram + 2, packet.data, packet.size);
    if (udp.SendTo(packet.address, datagram, static_cast<int>(packet.size + 2))) {
        stats.CountSent(packet.sequence, packet.size + 2, now);
    }
}

int NetEndpoint::Receive(NetPacket& out) {
    uint8_t buffer[kNetDatagramSize];
    int length = 0;
    SysNetAddress from;
    if (!udp.Receive(buffer, &length, &from)) {
        return 0;
    }
    return HandleDatagram(buffer, length, from, out);
}

// The host filters only remotes it knows; the peer filters everything against
// its one counter, whoever sent it.
uint8_t* NetEndpoint::LastAccepted(const SysNetAddress& from, NetPeer** peer) {
    *peer = nullptr;
    if (role == kPeer) {
        return &inSequence;
    }
    *peer = FindPeer(from);
    return *peer ? &(*peer)->inSequence : nullptr;
}

static int IsStale(uint8_t last, uint8_t sequence) {
    int expected = (last + 1) & 0xFF;
    if (expected >= kWrapWindow) {
        return sequence < expected;
    }
    return sequence > kWrapStale;
}

// The acknowledgement's own sequence is whatever Send gives it, not the number
// it answers: the receiver of an acknowledgement only looks at its source.
void NetEndpoint::Acknowledge(uint8_t sequence, const SysNetAddress& to) {
    NetPacket ack;
    ack.WriteUInt8(1);
    ack.flags = 2;
    ack.sequence = sequence;
    ack.address = to;
    Send(ack);
}

// The round trip is timed only from first transmissions: resends go out as
// plain datagrams, so an acknowledgement always answers a first transmission.
void NetEndpoint::ClearPendingTo(const SysNetAddress& from, uint32_t now) {
    uint32_t longest = 0;
    int measured = 0;
    for (int i = 0; i < kPendingCount; i++) {
        NetPacket& slot = pending[i];
        if (slot.size == 0 || !NetSameAddress(slot.address, from)) {
            continue;
        }
        if (slot.tries == 0 && now - slot.sentTime >= longest) {
            longest = now - slot.sentTime;
            measured = 1;
        }
        slot.Clear();
    }
    if (measured) {
        stats.roundTripMs = longest;
    }
}

int NetEndpoint::HandleDatagram(const uint8_t* bytes, int length, const SysNetAddress& from, NetPacket& out) {
    if (!bytes || length < 2 || length > kNetDatagramSize) {
        return 0;
    }
    uint32_t now = Sys_TickCount();
    out.SetData(bytes + 2, static_cast<uint32_t>(length - 2));
    out.address = from;
    out.sequence = bytes[0];
    out.flags = bytes[1];
    NetPeer* peer = nullptr;
    uint8_t* last = LastAccepted(from, &peer);
    if (last) {
        if (IsStale(*last, out.sequence)) {
            return 0;
        }
        *last = out.sequence;
        if (peer) {
            peer->lastHeard = now;
        }
    }
    stats.CountReceived(out.sequence, static_cast<uint32_t>(length), now);
    if (out.flags == 1) {
        Acknowledge(out.sequence, from);
        return 1;
    }
    if (out.flags == 2) {
        ClearPendingTo(from, now);
        return 0;
    }
    return 1;
}

void NetEndpoint::Update() {
    uint32_t now = Sys_TickCount();
    stats.Tick(now);
    for (int i = 0; i < kPendingCount; i++) {
        NetPacket& slot = pending[i];
        if (slot.size == 0 || now - slot.sentTime < kResendMs) {
            continue;
        }
        slot.tries++;
        slot.sentTime = now;
        if (slot.tries >= kTimeouts) {
            slot.Clear();
            continue;
        }
        uint8_t flags = slot.flags;
        slot.flags = 0;
        Send(slot);
        slot.flags = flags;
    }
}

int NetPoll() {
    return g_netHost.Poll() || g_netPeer.Poll() ? 1 : 0;
}

void NetMoveNotifications(void* window) {
    NetEndpoint* endpoints[2] = {&g_netHost, &g_netPeer};
    for (int i = 0; i < 2; i++) {
        if (endpoints[i]->udp.notifyWindow) {
            endpoints[i]->udp.notifyWindow = window;
            endpoints[i]->udp.RegisterNotify();
        }
    }
}

void DumpIncoming(const NetPacket& packet) {
    // Up to four characters per byte ("255 ") and the terminator.
    size_t room = static_cast<size_t>(packet.size) * 4 + 1;
    char* list = static_cast<char*>(malloc(room));
    if (!list) {
        return;
    }
    size_t used = 0;
    list[0] = 0;
    for (uint32_t i = 0; i < packet.size && packet.data; i++) {
        used += static_cast<size_t>(snprintf(list + used, room - used, "%i ", packet.data[i]));
    }
    const SysNetAddress& a = packet.address;
    g_console.Print("VIP_NON: Incoming %i bytes, [%s] (%i.%i.%i.%i:%i)", static_cast<int>(packet.size), list,
                    a.address[0], a.address[1], a.address[2], a.address[3], Sys_NetAddressPort(a));
    free(list);
}
