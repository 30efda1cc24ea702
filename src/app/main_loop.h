// The spine of the program: start-up in its fixed order, the single-threaded
// main loop of fixed 20 ms ticks, and the orderly shutdown that writes
// config.vbt. One pass of the loop either handles one window message or, when
// the queue is empty, does the frame work: console keys, Alt+Enter, the 100 ms
// debug refresh, every whole tick that has passed (at most 100, the rest of a
// longer stall is lost) and, only after a tick, one drawn frame.
#pragma once

// Removes at most one message: WM_QUIT sets g_quit, a message for g_window's window is
// dispatched, any other is dropped. 0 when the queue was empty.
int PumpMessage();
// One pass of the main loop.
void MainLoopPass();
// One 20 ms tick: console slide, music, joystick, mouse, menus, then the current scene.
void RunTick();
// Snaps a size to the standard mode for its width (Alt+Enter): 320 x 240 up to 1280 x 960.
void SnapWindowSize(int* width, int* height);
// Alt+Enter: leaves or enters full-screen at the snapped size and recreates the window.
void ToggleFullScreen();
// The whole program: start-up, the loop until quit, shutdown. Returns the exit status: 0,
// or 1 when the installed game finds no data.
int VantleMain();
