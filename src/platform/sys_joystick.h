// The first joystick, read the way the engine's WinMM code read it: three axes
// scaled to 0..65535 (centre about 32767) and a mask of up to 32 buttons where
// bit 0 is button 1.
#pragma once

struct SysJoystickState {
    unsigned int x;
    unsigned int y;
    unsigned int z;
    unsigned int buttons;  // JOY_BUTTON1 = 1, JOY_BUTTON2 = 2, ... JOY_BUTTON32 = 1 << 31
};

// Opens the first joystick; 1 when one is there.
int Sys_JoystickCapture();
// Reads the captured joystick; 0 when there is none or it was unplugged.
int Sys_JoystickGetPos(SysJoystickState* out);
// Closes the joystick.
void Sys_JoystickRelease();

// A virtual pad (3 axes, 32 buttons) that Sys_JoystickCapture finds like a real one, for
// tests and for driving the game without hardware; 1 or 0.
int Sys_JoystickAttachVirtual();
// Presses (1) or releases (0) button index (0-based) of the captured virtual pad; 1 or 0.
int Sys_JoystickSetVirtualButton(int index, int down);
// Sets axis index (0-2) of the captured virtual pad, -32768..32767; 1 or 0.
int Sys_JoystickSetVirtualAxis(int index, int value);
// Releases the joystick and unplugs the virtual pad.
void Sys_JoystickDetachVirtual();
