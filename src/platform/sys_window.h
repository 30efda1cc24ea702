// The window and GL context of the platform layer. The engine creates its one
// window in the steps a Windows program would take (register the class,
// change the display mode, create the window, make a context current), so each
// step is its own call here and can fail on its own; the handles are opaque.
#pragma once

struct SysWindow;
struct SysGlContext;

// What the window's framebuffer must offer.
struct SysPixelFormat {
    int colourBits;    // 16, 24 or 32
    int depthBits;     // 16
    int stencilBits;   // 1
    int doubleBuffer;  // 1
};

// Brings up the video system (the window-class registration); 1 or 0.
int Sys_InitVideo();
// Shuts the video system down again; 1 or 0.
int Sys_ShutdownVideo();
// 1 when the display offers exactly width x height at colourBits or more (the mode is used
// by the next full-screen window), else 0.
int Sys_ChangeDisplayMode(int width, int height, int colourBits);
// Gives the desktop its own mode back (a full-screen window becomes a window).
void Sys_RestoreDisplayMode(SysWindow* window);
// Desktop size in pixels.
void Sys_DesktopSize(int* width, int* height);

// Creates a hidden window with a client area of width x height and the given pixel format;
// the title is Windows-1252. fullScreen 1 takes the mode Sys_ChangeDisplayMode found; 2
// covers the desktop in its own mode, whatever width and height say. Calls the window procedure with WM_CREATE before returning.
SysWindow* Sys_CreateWindow(const char* title, int width, int height, int fullScreen,
                            const SysPixelFormat* format);
// Destroys a window; 1 or 0.
int Sys_DestroyWindow(SysWindow* window);
// Moves a window's top-left corner to (x, y) in desktop pixels.
void Sys_MoveWindow(SysWindow* window, int x, int y);
// Shows the window, raises it and gives it the keyboard focus.
void Sys_ShowWindow(SysWindow* window);
// SW_SHOWNORMAL (1), SW_SHOWMINIMIZED (2) or SW_SHOWMAXIMIZED (3).
int Sys_WindowShowState(SysWindow* window);
// Client size of a window in pixels.
void Sys_WindowSize(SysWindow* window, int* width, int* height);
// The cursor position relative to the window's client area.
void Sys_CursorClientPos(SysWindow* window, int* x, int* y);

// The window's drawable (the window itself here), or null.
SysWindow* Sys_GetDeviceContext(SysWindow* window);
// Gives the drawable back; 1 or 0.
int Sys_ReleaseDeviceContext(SysWindow* window, SysWindow* deviceContext);
// 1 when the pixel format asked for at creation is one the driver offers.
int Sys_ChoosePixelFormat(SysWindow* window);
// 1 when the window's framebuffer carries that format (fixed when the window was created).
int Sys_SetPixelFormat(SysWindow* window);
// Creates a GL context for the window, or null.
SysGlContext* Sys_CreateContext(SysWindow* window);
// Makes the context current on the window (both null: none current); 1 or 0.
int Sys_MakeCurrent(SysWindow* window, SysGlContext* context);
// Deletes a context; 1 or 0.
int Sys_DeleteContext(SysGlContext* context);
// Shows the back buffer; 1 or 0.
int Sys_SwapBuffers(SysWindow* window);
// 1 when the driver can set a swap interval.
int Sys_SwapIntervalSupported();
// Sets the swap interval of the current context (0 free running, 1 wait for retrace).
void Sys_SetSwapInterval(int interval);
// The address of a GL entry point of the current context (ARB extensions), or null.
void* Sys_GetProcAddress(const char* name);

// The steps above that can fail one by one. Sys_FailWindowStep(step) makes that step
// report failure every time until it is called with SysStepNone, so the engine's
// failure paths can be walked on a real display. A teardown step still does its work
// and only reports the failure, as a driver that fails to release does.
enum SysWindowStep {
    SysStepNone,
    SysStepInitVideo,
    SysStepCreateWindow,
    SysStepDeviceContext,
    SysStepChoosePixelFormat,
    SysStepSetPixelFormat,
    SysStepCreateContext,
    SysStepMakeCurrent,
    SysStepReleaseCurrent,
    SysStepDeleteContext,
    SysStepReleaseDeviceContext,
    SysStepDestroyWindow,
    SysStepShutdownVideo
};
void Sys_FailWindowStep(int step);
