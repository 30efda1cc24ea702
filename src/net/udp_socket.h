// A UDP socket as the transport uses it. With no notification window the
// socket is simply polled; with one, Windows would post a message to that
// window whenever data arrived. On this platform both come to the same thing:
// the socket is non-blocking and Pending() is the poll that stands in for the
// message. The notification window is still remembered, because "VID_RESTART"
// moves it to the new window. Also here: the start-up of the socket layer,
// whose result the start-up log reports.
#pragma once

#include "platform/sys_socket.h"

// The port both endpoints use: the host binds it, the peer sends to it.
const int kNetPort = 37491;
// Datagram size limit: two header bytes and up to 8190 payload bytes.
const int kNetDatagramSize = 8192;

class UdpSocket {
public:
    int socket;          // the system handle, -1 when closed
    void* notifyWindow;  // window told about arriving data, null for plain polling

    UdpSocket();
    ~UdpSocket();

    // Creates the socket with its options but binds nothing; 1 or 0 (an option failure leaves it open).
    int Create();
    // Create, then bind to every local address on port (0: any free port); 1 or 0 (closed again).
    int Open(int port);
    // Registers the socket again for arrival notification (after the window changed); 1 or 0.
    int RegisterNotify();
    // Sends n bytes as one datagram; 1 unless the send failed.
    int SendTo(const SysNetAddress& address, const void* bytes, int n);
    // Reads one datagram of 1 to 8192 bytes into buffer; 1 with *length and *address set, else 0
    // (nothing waiting, an error, an empty or an over-long datagram).
    int Receive(uint8_t* buffer, int* length, SysNetAddress* address);
    // 1 when a datagram is waiting (the stand-in for the arrival message), else 0; waits up to
    // waitMs for one, never when 0.
    int Pending(int waitMs = 0) const;
    // The local port in host order, 0 when closed or unbound.
    int LocalPort() const;
    // Closes the socket.
    void Close();
};

// Starts the socket layer; 1 when datagram sockets can be used, else 0.
int NetStartup();
