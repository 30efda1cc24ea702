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
