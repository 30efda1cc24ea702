// The datagram transport: every datagram carries a sequence byte and a flags
// byte ahead of its payload. The sequence lets a receiver drop datagrams older
// than the last one it accepted from the same remote (with a window around the
// wrap from 255 to 0); flags 1 asks the receiver for an acknowledgement
// (flags 2, one payload byte 1), and until it comes the sender keeps a copy in
// one of 64 pending slots, sending it again as a plain datagram after 300 ms
// and 600 ms and forgetting it at the third timeout. An acknowledgement frees
// every pending message to the address it came from.
//
// Two endpoints exist. g_netHost binds the fixed port and keeps a table of up
// to 32 known peers, each with its own sequence counters; datagrams from
// addresses it does not know pass unfiltered and its replies to them carry
// sequence 0. g_netPeer talks to one resolved host on the fixed port with a
// single pair of counters. Nothing sends or receives unless asked to: the
// owner calls Receive until it returns 0 and Update regularly for the resends.
#pragma once

#include <cstdint>

#include "net/net_packet.h"
#include "net/net_stats.h"
#include "net/udp_socket.h"

// A remote known to the host endpoint.
struct NetPeer {
    SysNetAddress address;
    uint8_t inSequence;   // last accepted
    uint8_t outSequence;  // next to send
    uint32_t lastHeard;   // tick count of the last accepted datagram
};

class NetEndpoint {
public:
    static const int kPendingCount = 64;
    static const int kPeerCount = 32;
    static const uint32_t kResendMs = 300;
    static const int kTimeouts = 3;

    enum Role { kHost, kPeer };

    NetPacket pending[kPendingCount];  // reliable messages awaiting acknowledgement; size 0 = free
    UdpSocket udp;
    // Host: known peers, null entries empty.
    NetPeer* peers[kPeerCount];
    // Peer: its single remote.
    uint8_t outSequence;
    SysNetAddress serverAddress;
    uint8_t inSequence;
    uint8_t connected;
    Role role;
    NetStats stats;

    explicit NetEndpoint(Role role);
    ~NetEndpoint();
    NetEndpoint(const NetEndpoint&) = delete;
    NetEndpoint& operator=(const NetEndpoint&) = delete;

    // Host: closes any old socket and binds port (the fixed port unless a test chooses); 1 or 0.
    int Open(int port = kNetPort);
    // Peer: opens an unbound socket and aims at hostName on port; 1 when the name resolved.
    int Open(const char* hostName, int port = kNetPort);
    // Closes the socket; pending messages and peers stay.
    void Close();
    // Sends a packet (sequence assigned here; flags bit 0 keeps a copy for resending).
    void Send(NetPacket& packet);
    // Reads one waiting datagram; 1 when a packet was delivered into out, else 0.
    int Receive(NetPacket& out);
    // Handles one datagram as Receive does once it has been read (the fuzzing entry).
    int HandleDatagram(const uint8_t* bytes, int length, const SysNetAddress& from, NetPacket& out);
    // Resends or forgets pending messages whose time is up; keeps the statistics current.
    void Update();
    // Frees every peer and every pending slot.
    void Reset();
    // Host: adds a peer with fresh counters; its index, or -1 when the table is full.
    int AddPeer(const SysNetAddress& address);
    // Host: the peer with this address, or null.
    NetPeer* FindPeer(const SysNetAddress& address);
    // Number of busy pending slots.
    int PendingCount() const;
    // 1 when a datagram is waiting to be received (the poll replacing arrival messages).
    int Poll() const;

private:
    uint8_t NextSequence(const SysNetAddress& to);
    uint8_t* LastAccepted(const SysNetAddress& from, NetPeer** peer);
    void Acknowledge(uint8_t sequence, const SysNetAddress& to);
    void ClearPendingTo(const SysNetAddress& from, uint32_t now);
};

extern NetEndpoint g_netHost;
extern NetEndpoint g_netPeer;

// 1 when a datagram waits on either endpoint: the main loop's stand-in for arrival messages.
int NetPoll();
// Moves the arrival notification of each endpoint that has a notification window to window.
void NetMoveNotifications(void* window);
// Writes "VIP_NON: Incoming ..." with the payload's byte values and the source to the console.
void DumpIncoming(const NetPacket& packet);
// 1 when the two socket addresses are equal byte for byte.
int NetSameAddress(const SysNetAddress& a, const SysNetAddress& b);
