// The first joystick, read the way the engine's WinMM code read it: three axes
// scaled to 0..65535 (centre about 32767) and a mask of up to 32 buttons where
// bit 0 is button 1.
//
// A pad that SDL's game-controller database knows is read through its mapping
// and handed over in that same numbering, so the engine keeps one vocabulary:
// the left stick and the D-pad are x and y, the right stick's x is z, the south
// button is button 1, Back button 7, the north button button 8 and Start button
// 12. A device with no mapping is read raw, axis by axis and button by button.
// Pads come and go while the program runs: Sys_JoystickRefresh follows them.
#pragma once

struct SysJoystickState {
    unsigned int x;
    unsigned int y;
    unsigned int z;
    unsigned int buttons;  // JOY_BUTTON1 = 1, JOY_BUTTON2 = 2, ... JOY_BUTTON32 = 1 << 31
};

// What Sys_JoystickRefresh saw happen.
enum { SysPadUnchanged = 0, SysPadArrived = 1, SysPadLeft = 2 };

// Opens the first joystick (again, if the one held was unplugged); 1 when one is there.
int Sys_JoystickCapture();
// Follows hot-plugging: lets go of a pad that was unplugged, or captures the first one when
// none is held. SysPadLeft, SysPadArrived or SysPadUnchanged.
int Sys_JoystickRefresh();
// The name of the pad captured last (kept after it leaves, for the log line); "" before any.
const char* Sys_JoystickName();
// 1 while the captured pad is read through a game-controller mapping.
int Sys_JoystickIsMapped();
// Reads the captured joystick; 0 when there is none or it was unplugged.
int Sys_JoystickGetPos(SysJoystickState* out);
// Closes the joystick.
void Sys_JoystickRelease();

// Adds the mappings of a gamecontrollerdb.txt text (length bytes, no terminator needed):
// one pad a line, '#' comments, lines for another platform skipped. Returns how many lines
// were taken; *rejected (may be null) gets how many were broken.
int Sys_JoystickAddMappings(const char* text, int length, int* rejected);

// A virtual pad (3 axes, 32 buttons) that Sys_JoystickCapture finds like a real one, for
// tests and for driving the game without hardware; gamepad 1 types it as a game controller
// (SDL's own layout: buttons south, east, west, north, Back, Guide, Start, ...; axes left x,
// left y, right x), 0 as a device without a mapping. 1 or 0.
int Sys_JoystickAttachVirtual(int gamepad);
// Presses (1) or releases (0) button index (0-based, the device's own) of the virtual pad.
int Sys_JoystickSetVirtualButton(int index, int down);
// Sets axis index (0-2) of the virtual pad, -32768..32767; 1 or 0.
int Sys_JoystickSetVirtualAxis(int index, int value);
// Unplugs the virtual pad; the capture notices at its next refresh or read.
void Sys_JoystickDetachVirtual();
