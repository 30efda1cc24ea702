// X11 specifics, shared inside the platform layer only.
#pragma once

union SDL_Event;
struct SDL_Window;
struct SysWindow;

// Keeps an X error about a window destroyed behind SDL's back (a window manager or a tool
// closing it) from ending the process, and asks for the raw X events that reveal it.
void Sys_X11Install();
// When the event says one of our windows was destroyed from outside, returns it; else null.
SysWindow* Sys_X11DestroyedWindow(const SDL_Event& event);
// Bookkeeping of our live windows, so an X window id can be traced back to one.
void Sys_X11TrackWindow(SysWindow* window, int live);
// Destroys a window with X errors about it ignored and flushed at once: the X window
// may already be gone (destroyed from outside), and the error must not reach Xlib's
// default handler, which ends the process.
void Sys_X11DestroyWindow(SDL_Window* window);
