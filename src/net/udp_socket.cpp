#include "net/udp_socket.h"

UdpSocket::UdpSocket() : socket(-1), notifyWindow(nullptr) {}

UdpSocket::~UdpSocket() {
    Close();
}

// Reporting of ICMP port-unreachable as a receive error, which Winsock has to be
// told to stop, never happens for unconnected datagram sockets here, so there
// is nothing to switch off.
int UdpSocket::Create() {
    Close();
    socket = Sys_SocketOpenUdp();
    if (socket < 0) {
        return 0;
    }
    if (!notifyWindow && !Sys_SocketSetNonBlocking(socket)) {
        return 0;
    }
    if (notifyWindow && !RegisterNotify()) {
        return 0;
    }
    return Sys_SocketSetOptions(socket);
}

int UdpSocket::Open(int port) {
    if (!Create()) {
        return 0;
    }
    if (!Sys_SocketBind(socket, port)) {
        Close();
        return 0;
    }
    return 1;
}

// Arrival is announced by polling (Pending), never by a message, so registering
// means keeping the socket non-blocking for whoever polls it.
int UdpSocket::RegisterNotify() {
    return Sys_SocketSetNonBlocking(socket);
}

int UdpSocket::SendTo(const SysNetAddress& address, const void* bytes, int n) {
    return Sys_SocketSendTo(socket, address, bytes, n);
}

int UdpSocket::Receive(uint8_t* buffer, int* length, SysNetAddress* address) {
    if (!buffer || !length || !address) {
        return 0;
    }
    int got = Sys_SocketReceive(socket, buffer, kNetDatagramSize, address);
    if (got < 1) {
        return 0;
    }
    *length = got;
    return 1;
}

int UdpSocket::Pending(int waitMs) const {
    return Sys_SocketReadable(socket, waitMs);
}

int UdpSocket::LocalPort() const {
    return Sys_SocketLocalPort(socket);
}

void UdpSocket::Close() {
    Sys_SocketClose(socket);
    socket = -1;
}

int NetStartup() {
    return Sys_NetStartup();
}
