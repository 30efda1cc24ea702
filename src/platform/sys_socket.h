// IPv4 datagram sockets for the network transport: the one place that knows
// about the operating system's socket interface. The engine was built around
// Winsock's non-blocking UDP sockets and a window message announcing pending
// data; here sockets are plain non-blocking BSD sockets and the announcement
// is replaced by Sys_SocketReadable, a zero-wait poll the main loop may call.
//
// Addresses travel as SysNetAddress, the 16-byte IPv4 socket address (family,
// port in network order, address bytes, eight zero bytes), so the rest of the
// engine can compare two of them byte for byte without a socket header.
// A socket handle is a small integer; -1 means "no socket".
#pragma once

#include <cstdint>

struct SysNetAddress {
    uint16_t family;     // 2 (IPv4) when set, 0 when empty
    uint8_t port[2];     // network (big-endian) order
    uint8_t address[4];  // a.b.c.d in that order
    uint8_t zero[8];
};
static_assert(sizeof(SysNetAddress) == 16, "the socket address is 16 bytes");

// Fills an IPv4 address from its four bytes and a port in host order.
SysNetAddress Sys_NetAddress(uint8_t a, uint8_t b, uint8_t c, uint8_t d, int port);
// The port of an address in host order.
int Sys_NetAddressPort(const SysNetAddress& address);

// Makes sure the socket layer works (the counterpart of starting Winsock); 1 or 0.
int Sys_NetStartup();
// Creates an IPv4 UDP socket; the handle, or -1 on failure.
int Sys_SocketOpenUdp();
// Switches a socket to non-blocking mode; 1 or 0.
int Sys_SocketSetNonBlocking(int socket);
// Sets SO_REUSEADDR (first) and SO_DONTROUTE (second); 0 when the second fails.
int Sys_SocketSetOptions(int socket);
// Binds to every local address on the port (0 lets the system choose); 1 or 0.
int Sys_SocketBind(int socket, int port);
// The local port the socket is bound to in host order, 0 when unbound or unknown.
int Sys_SocketLocalPort(int socket);
// Sends one datagram; 1 unless the send failed.
int Sys_SocketSendTo(int socket, const SysNetAddress& to, const void* bytes, int length);
// Reads one waiting datagram into buffer (capacity bytes). Returns its length (0 for an empty
// datagram), -1 when nothing is waiting or on an error, or -2 when the datagram was longer than
// capacity (it is consumed and dropped). from receives the source address.
int Sys_SocketReceive(int socket, void* buffer, int capacity, SysNetAddress* from);
// 1 when a datagram is waiting on the socket, else 0; waits up to waitMs for one (0: never blocks).
int Sys_SocketReadable(int socket, int waitMs);
// Closes a socket; ignores -1.
void Sys_SocketClose(int socket);
// Resolves a host name or dotted address to its first IPv4 address (port left 0); 1 or 0.
int Sys_ResolveHost(const char* name, SysNetAddress* out);
