#include "platform/sys_socket.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

static_assert(sizeof(sockaddr_in) == sizeof(SysNetAddress), "both are the 16-byte IPv4 address");

static sockaddr_in ToSockaddr(const SysNetAddress& address) {
    sockaddr_in out;
    memset(&out, 0, sizeof(out));
    out.sin_family = AF_INET;
    memcpy(&out.sin_port, address.port, 2);
    memcpy(&out.sin_addr, address.address, 4);
    return out;
}

static SysNetAddress FromSockaddr(const sockaddr_in& address) {
    SysNetAddress out;
    memset(&out, 0, sizeof(out));
    out.family = AF_INET;
    memcpy(out.port, &address.sin_port, 2);
    memcpy(out.address, &address.sin_addr, 4);
    return out;
}

SysNetAddress Sys_NetAddress(uint8_t a, uint8_t b, uint8_t c, uint8_t d, int port) {
    SysNetAddress out;
    memset(&out, 0, sizeof(out));
    out.family = AF_INET;
    out.port[0] = static_cast<uint8_t>((port >> 8) & 0xFF);
    out.port[1] = static_cast<uint8_t>(port & 0xFF);
    out.address[0] = a;
    out.address[1] = b;
    out.address[2] = c;
    out.address[3] = d;
    return out;
}

int Sys_NetAddressPort(const SysNetAddress& address) {
    return (address.port[0] << 8) | address.port[1];
}

// There is no library to start on this platform; what Winsock's start-up proved
// (that datagram sockets can be made) is proved by making one.
int Sys_NetStartup() {
    int probe = socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP);
    if (probe < 0) {
        return 0;
    }
    close(probe);
    return 1;
}

int Sys_SocketOpenUdp() {
    int handle = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, IPPROTO_UDP);
    return handle < 0 ? -1 : handle;
}

int Sys_SocketSetNonBlocking(int socket) {
    if (socket < 0) {
        return 0;
    }
    int flags = fcntl(socket, F_GETFL, 0);
    if (flags < 0) {
        return 0;
    }
    return fcntl(socket, F_SETFL, flags | O_NONBLOCK) == 0 ? 1 : 0;
}

int Sys_SocketSetOptions(int socket) {
    int on = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof(on));
    return setsockopt(socket, SOL_SOCKET, SO_DONTROUTE, &on, sizeof(on)) == 0 ? 1 : 0;
}

int Sys_SocketBind(int socket, int port) {
    sockaddr_in address;
    memset(&address, 0, sizeof(address));
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_ANY);
    return bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0 ? 1 : 0;
}

int Sys_SocketLocalPort(int socket) {
    sockaddr_in address;
    socklen_t length = sizeof(address);
    if (socket < 0 || getsockname(socket, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
        return 0;
    }
    return ntohs(address.sin_port);
}

int Sys_SocketSendTo(int socket, const SysNetAddress& to, const void* bytes, int length) {
    if (socket < 0 || length < 0) {
        return 0;
    }
    sockaddr_in address = ToSockaddr(to);
    ssize_t sent = sendto(socket, bytes, static_cast<size_t>(length), MSG_NOSIGNAL,
                          reinterpret_cast<sockaddr*>(&address), sizeof(address));
    return sent < 0 ? 0 : 1;
}

// MSG_TRUNC makes the kernel report a datagram's true length, so one too long
// for the buffer is refused as a whole (Winsock reports it as an error) rather
// than handed on cut short.
int Sys_SocketReceive(int socket, void* buffer, int capacity, SysNetAddress* from) {
    if (socket < 0 || capacity < 0) {
        return -1;
    }
    sockaddr_in address;
    socklen_t addressLength = sizeof(address);
    memset(&address, 0, sizeof(address));
    ssize_t length = recvfrom(socket, buffer, static_cast<size_t>(capacity), MSG_DONTWAIT | MSG_TRUNC,
                              reinterpret_cast<sockaddr*>(&address), &addressLength);
    if (length < 0) {
        return -1;
    }
    if (from) {
        *from = FromSockaddr(address);
    }
    return length > capacity ? -2 : static_cast<int>(length);
}

int Sys_SocketReadable(int socket, int waitMs) {
    if (socket < 0) {
        return 0;
    }
    pollfd entry;
    entry.fd = socket;
    entry.events = POLLIN;
    entry.revents = 0;
    return poll(&entry, 1, waitMs < 0 ? 0 : waitMs) > 0 && (entry.revents & POLLIN) ? 1 : 0;
}

void Sys_SocketClose(int socket) {
    if (socket >= 0) {
        close(socket);
    }
}

int Sys_ResolveHost(const char* name, SysNetAddress* out) {
    if (!name || !out) {
        return 0;
    }
    addrinfo hints;
    memset(&hints, 0, sizeof(hints));
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_DGRAM;
    addrinfo* found = nullptr;
    if (getaddrinfo(name, nullptr, &hints, &found) != 0 || !found) {
        return 0;
    }
    sockaddr_in first;
    memcpy(&first, found->ai_addr, sizeof(first));
    freeaddrinfo(found);
    *out = FromSockaddr(first);
    memset(out->port, 0, 2);
    return 1;
}
