// The message queue of the platform layer. The engine reads its input as
// Windows messages, one per call, in the Windows vocabulary below: the window
// procedure it registers turns them into key-table and mouse state. Platform
// events are translated here one at a time; a posted message (PostQuitMessage,
// tests) joins the same queue.
#pragma once

#include <cstdint>

struct SysWindow;

enum {
    WM_CREATE = 0x0001,
    WM_DESTROY = 0x0002,
    WM_SIZE = 0x0005,
    WM_ACTIVATE = 0x0006,
    WM_PAINT = 0x000F,
    WM_CLOSE = 0x0010,
    WM_QUIT = 0x0012,
    WM_KEYDOWN = 0x0100,
    WM_KEYUP = 0x0101,
    WM_SYSKEYDOWN = 0x0104,
    WM_SYSKEYUP = 0x0105,
    WM_MOUSEMOVE = 0x0200,
    WM_LBUTTONDOWN = 0x0201,
    WM_LBUTTONUP = 0x0202,
    WM_RBUTTONDOWN = 0x0204,
    WM_RBUTTONUP = 0x0205,
    WM_MBUTTONDOWN = 0x0207,
    WM_MBUTTONUP = 0x0208,
    WM_MOUSEWHEEL = 0x020A,
    WM_USER = 0x0400,
};

// Mouse-message key flags (wParam of the mouse messages).
enum { MK_LBUTTON = 0x01, MK_RBUTTON = 0x02, MK_SHIFT = 0x04, MK_CONTROL = 0x08, MK_MBUTTON = 0x10 };
// WM_ACTIVATE low word.
enum { WA_INACTIVE = 0, WA_ACTIVE = 1, WA_CLICKACTIVE = 2 };
// Window show states (placement).
enum { SW_SHOWNORMAL = 1, SW_SHOWMINIMIZED = 2, SW_SHOWMAXIMIZED = 3 };
// WM_SIZE wParam.
enum { SIZE_RESTORED = 0, SIZE_MINIMIZED = 1, SIZE_MAXIMIZED = 2 };
// One wheel notch.
enum { WHEEL_DELTA = 120 };

struct SysMessage {
    SysWindow* window;  // null for a thread message (WM_QUIT)
    unsigned int message;
    uintptr_t wParam;
    intptr_t lParam;
};

typedef intptr_t (*SysWindowProc)(SysWindow* window, unsigned int message, uintptr_t wParam, intptr_t lParam);

// Sets the window procedure every window of the program uses (the class registration).
void Sys_SetWindowProc(SysWindowProc proc);
// Removes the oldest message into out; 0 when the queue is empty.
int Sys_PeekMessage(SysMessage* out);

// Modifier bits for Sys_InjectKey.
enum { SysModAlt = 1, SysModCtrl = 2, SysModShift = 4 };
// Hands the platform a key event as the keyboard would (scancode as the platform numbers
// physical keys, repeat for auto-repeat), so it goes through the same translation into
// messages as a real key; for tests and for anything that drives the game without a
// keyboard. The message it becomes has no window. 1 or 0.
int Sys_InjectKey(int scancode, int down, int repeat, int modifiers);
// Calls the window procedure with the message and returns its result.
intptr_t Sys_DispatchMessage(const SysMessage* message);
// The default processing of a message nobody handled: nothing, result 0.
intptr_t Sys_DefWindowProc(SysWindow* window, unsigned int message, uintptr_t wParam, intptr_t lParam);
// Appends a message to the queue; 0 when the queue is full.
int Sys_PostMessage(SysWindow* window, unsigned int message, uintptr_t wParam, intptr_t lParam);
// Appends WM_QUIT with the exit code.
void Sys_PostQuitMessage(int exitCode);
// Drops every queued message, pending platform events included.
void Sys_FlushMessages();

inline unsigned int Sys_LoWord(uintptr_t value) {
    return static_cast<unsigned int>(value & 0xFFFF);
}
inline unsigned int Sys_HiWord(uintptr_t value) {
    return static_cast<unsigned int>((value >> 16) & 0xFFFF);
}
inline intptr_t Sys_MakeLParam(int low, int high) {
    return static_cast<intptr_t>(static_cast<uint32_t>((low & 0xFFFF) | ((high & 0xFFFF) << 16)));
}
