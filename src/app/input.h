// Window messages and input: the window procedure that turns messages into the
// plain input state of g_window (key table, mouse in the 800 x 600 virtual
// screen and in the world, button code, wheel), the joystick poll that mirrors
// pad buttons into the key table, and the developer's mouse control of
// g_camera. Nothing queues events: input is state, sampled by the 20 ms ticks.
#pragma once

#include <cstdint>

struct SysWindow;

// Which drag is running: 0 none, 1 left, 2 right, 4 middle.
extern uint8_t g_dragState;
// 1 once the current press has moved the mouse; a press that ends with 0 is a click.
extern uint8_t g_dragMoved;
// mouse2D at the end of the previous tick.
extern float g_lastMouse[2];

// The window procedure of every window of the program; does nothing while g_activeWindow is null.
intptr_t WindowProc(SysWindow* window, unsigned int message, uintptr_t wParam, intptr_t lParam);
// Once per tick: follows pads plugged in and out (logging each), then mirrors joystick
// buttons 1, 7, 8 and 12 into the key table.
void PollJoystick();
// Adds the pad mappings of a gamecontrollerdb.txt file (silent when there is none).
void LoadPadMappings(const char* path);
// Once per tick: a left click that ended without movement resets the drag state.
void EndClick();
// Once per tick: right drag looks around, left drag flies, middle drag rises and sinks.
void MouseCamera();
