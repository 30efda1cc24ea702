#!/usr/bin/env python3
"""Asks an X window to close the way a window manager does when the user clicks
its close button: a WM_PROTOCOLS client message carrying WM_DELETE_WINDOW.
Usage: x_close_window.py WINDOW_ID   (the display comes from $DISPLAY)."""
import ctypes
import ctypes.util
import sys


class ClientMessage(ctypes.Structure):
    _fields_ = [
        ("type", ctypes.c_int),
        ("serial", ctypes.c_ulong),
        ("send_event", ctypes.c_int),
        ("display", ctypes.c_void_p),
        ("window", ctypes.c_ulong),
        ("message_type", ctypes.c_ulong),
        ("format", ctypes.c_int),
        ("data", ctypes.c_long * 5),
    ]


class Event(ctypes.Union):
    _fields_ = [("xclient", ClientMessage), ("pad", ctypes.c_long * 24)]


def main():
    if len(sys.argv) != 2:
        print("usage: x_close_window.py WINDOW_ID", file=sys.stderr)
        return 2
    window = int(sys.argv[1], 0)
    xlib = ctypes.CDLL(ctypes.util.find_library("X11") or "libX11.so.6")
    xlib.XOpenDisplay.restype = ctypes.c_void_p
    xlib.XOpenDisplay.argtypes = [ctypes.c_char_p]
    xlib.XInternAtom.restype = ctypes.c_ulong
    xlib.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
    xlib.XSendEvent.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_long,
                                ctypes.POINTER(Event)]
    xlib.XFlush.argtypes = [ctypes.c_void_p]
    xlib.XCloseDisplay.argtypes = [ctypes.c_void_p]
    display = xlib.XOpenDisplay(None)
    if not display:
        print("x_close_window.py: cannot open the display", file=sys.stderr)
        return 1
    event = Event()
    event.xclient.type = 33  # ClientMessage
    event.xclient.window = window
    event.xclient.message_type = xlib.XInternAtom(display, b"WM_PROTOCOLS", 0)
    event.xclient.format = 32
    event.xclient.data[0] = xlib.XInternAtom(display, b"WM_DELETE_WINDOW", 0)
    event.xclient.data[1] = 0  # CurrentTime
    sent = xlib.XSendEvent(display, window, 0, 0, ctypes.byref(event))
    xlib.XFlush(display)
    xlib.XCloseDisplay(display)
    return 0 if sent else 1


if __name__ == "__main__":
    sys.exit(main())
