#include "platform/sys_window.h"

#include <SDL.h>

#include <cstdio>

#include "platform/sys_events_local.h"
#include "platform/sys_input.h"
#include "platform/sys_text.h"
#include "platform/sys_x11_local.h"

// The platform's handles are SDL's own, under opaque names.
static SDL_Window* ToSdl(SysWindow* window) {
    return reinterpret_cast<SDL_Window*>(window);
}

static SDL_DisplayMode s_fullScreenMode;

static int s_failStep = SysStepNone;

void Sys_FailWindowStep(int step) {
    s_failStep = step;
}

static int Fails(int step) {
    return s_failStep == step;
}

// The "class" is registered while a window may exist. The display connection itself
// is opened once and kept to the end of the process: closing and reopening it for
// every re-created window ("VID_RESTART") costs time and can fail under load.
static int s_classRegistered;

int Sys_InitVideo() {
    if (Fails(SysStepInitVideo)) {
        return 0;
    }
    if (!SDL_WasInit(SDL_INIT_VIDEO)) {
        // Closing the last window is the engine's decision (WM_CLOSE), not SDL's.
        SDL_SetHint(SDL_HINT_QUIT_ON_LAST_WINDOW_CLOSE, "0");
        SDL_SetHint(SDL_HINT_VIDEO_MINIMIZE_ON_FOCUS_LOSS, "0");
        if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) {
            fprintf(stderr, "video: %s\n", SDL_GetError());
            return 0;
        }
        // With no display SDL falls back to an invisible back-end; a game nobody can see is
        // a failure unless someone asked for that back-end by name.
        const char* driver = SDL_GetCurrentVideoDriver();
        int invisible = driver && (!SDL_strcmp(driver, "offscreen") || !SDL_strcmp(driver, "dummy"));
        if (invisible && !SDL_getenv("SDL_VIDEODRIVER")) {
            SDL_QuitSubSystem(SDL_INIT_VIDEO);
            fprintf(stderr, "video: no display\n");
            return 0;
        }
        Sys_X11Install();
    }
    Sys_RefreshKeyboardLayout();
    s_classRegistered = 1;
    return 1;
}

int Sys_ShutdownVideo() {
    if (!s_classRegistered) {
        return 0;
    }
    s_classRegistered = 0;
    return !Fails(SysStepShutdownVideo);
}

int Sys_ChangeDisplayMode(int width, int height, int colourBits) {
    if (!SDL_WasInit(SDL_INIT_VIDEO)) {
        return 0;
    }
    int count = SDL_GetNumDisplayModes(0);
    for (int i = 0; i < count; i++) {
        SDL_DisplayMode mode;
        if (SDL_GetDisplayMode(0, i, &mode) != 0) {
            continue;
        }
        if (mode.w == width && mode.h == height &&
            static_cast<int>(SDL_BITSPERPIXEL(mode.format)) >= (colourBits > 24 ? 24 : colourBits)) {
            s_fullScreenMode = mode;
            return 1;
        }
    }
    return 0;
}

void Sys_RestoreDisplayMode(SysWindow* window) {
    if (window) {
        SDL_SetWindowFullscreen(ToSdl(window), 0);
    }
}

void Sys_DesktopSize(int* width, int* height) {
    SDL_DisplayMode mode;
    if (SDL_GetDesktopDisplayMode(0, &mode) == 0) {
        *width = mode.w;
        *height = mode.h;
    } else {
        *width = 0;
        *height = 0;
    }
}

static int s_formatAccepted;

static void SetPixelFormat(const SysPixelFormat* format) {
    int channel = format->colourBits >= 24 ? 8 : 5;
    int ok = SDL_GL_SetAttribute(SDL_GL_RED_SIZE, channel) == 0;
    ok &= SDL_GL_SetAttribute(SDL_GL_GREEN_SIZE, format->colourBits >= 24 ? 8 : 6) == 0;
    ok &= SDL_GL_SetAttribute(SDL_GL_BLUE_SIZE, channel) == 0;
    ok &= SDL_GL_SetAttribute(SDL_GL_ALPHA_SIZE, 0) == 0;
    ok &= SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, format->depthBits) == 0;
    ok &= SDL_GL_SetAttribute(SDL_GL_STENCIL_SIZE, format->stencilBits) == 0;
    ok &= SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, format->doubleBuffer) == 0;
    // A fixed-function program: ask for a compatibility (legacy) context.
    ok &= SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, 0) == 0;
    s_formatAccepted = ok;
}

SysWindow* Sys_CreateWindow(const char* title, int width, int height, int fullScreen,
                            const SysPixelFormat* format) {
    if (!SDL_WasInit(SDL_INIT_VIDEO) || Fails(SysStepCreateWindow)) {
        return nullptr;
    }
    SetPixelFormat(format);
    char utf8[1024];
    Sys_Utf8From1252(title ? title : "", utf8, sizeof(utf8));
    Uint32 flags = SDL_WINDOW_OPENGL | SDL_WINDOW_HIDDEN;
    if (fullScreen == 2) {
        flags |= SDL_WINDOW_FULLSCREEN_DESKTOP;
        // Made at the desktop's size too: with no window manager to honour the full-screen
        // request (a bare X server) the window still covers the screen.
        SDL_Rect bounds;
        if (SDL_GetDisplayBounds(0, &bounds) == 0) {
            width = bounds.w;
            height = bounds.h;
        }
    } else {
        flags |= fullScreen ? SDL_WINDOW_FULLSCREEN : SDL_WINDOW_RESIZABLE;
    }
    SDL_Window* window = SDL_CreateWindow(utf8, 0, 0, width, height, flags);
    if (!window) {
        return nullptr;
    }
    if (fullScreen == 1) {
        SDL_SetWindowDisplayMode(window, &s_fullScreenMode);
    }
    SysWindow* handle = reinterpret_cast<SysWindow*>(window);
    Sys_X11TrackWindow(handle, 1);
    Sys_SendCreateMessage(handle);
    return handle;
}

int Sys_DestroyWindow(SysWindow* window) {
    if (!window) {
        return 0;
    }
    Sys_X11TrackWindow(window, 0);
    Sys_X11DestroyWindow(ToSdl(window));
    return !Fails(SysStepDestroyWindow);
}

void Sys_MoveWindow(SysWindow* window, int x, int y) {
    SDL_SetWindowPosition(ToSdl(window), x, y);
}

void Sys_ShowWindow(SysWindow* window) {
    SDL_ShowWindow(ToSdl(window));
    SDL_RaiseWindow(ToSdl(window));
}

int Sys_WindowShowState(SysWindow* window) {
    Uint32 flags = window ? SDL_GetWindowFlags(ToSdl(window)) : 0;
    if (flags & SDL_WINDOW_MINIMIZED) {
        return 2;
    }
    if (flags & SDL_WINDOW_MAXIMIZED) {
        return 3;
    }
    return 1;
}

void Sys_WindowSize(SysWindow* window, int* width, int* height) {
    SDL_GetWindowSize(ToSdl(window), width, height);
}

void Sys_CursorClientPos(SysWindow* window, int* x, int* y) {
    int gx = 0, gy = 0, wx = 0, wy = 0;
    SDL_GetGlobalMouseState(&gx, &gy);
    if (window) {
        SDL_GetWindowPosition(ToSdl(window), &wx, &wy);
    }
    *x = gx - wx;
    *y = gy - wy;
}

SysWindow* Sys_GetDeviceContext(SysWindow* window) {
    return Fails(SysStepDeviceContext) ? nullptr : window;
}

int Sys_ReleaseDeviceContext(SysWindow* window, SysWindow* deviceContext) {
    return window && deviceContext == window && !Fails(SysStepReleaseDeviceContext);
}

int Sys_ChoosePixelFormat(SysWindow* window) {
    return window && s_formatAccepted && !Fails(SysStepChoosePixelFormat);
}

int Sys_SetPixelFormat(SysWindow* window) {
    return window && (SDL_GetWindowFlags(ToSdl(window)) & SDL_WINDOW_OPENGL) && !Fails(SysStepSetPixelFormat);
}

SysGlContext* Sys_CreateContext(SysWindow* window) {
    if (Fails(SysStepCreateContext)) {
        return nullptr;
    }
    return reinterpret_cast<SysGlContext*>(SDL_GL_CreateContext(ToSdl(window)));
}

int Sys_MakeCurrent(SysWindow* window, SysGlContext* context) {
    if (context && Fails(SysStepMakeCurrent)) {
        return 0;
    }
    int made = SDL_GL_MakeCurrent(ToSdl(window), reinterpret_cast<SDL_GLContext>(context)) == 0;
    return made && !(context == nullptr && Fails(SysStepReleaseCurrent));
}

int Sys_DeleteContext(SysGlContext* context) {
    if (!context) {
        return 0;
    }
    SDL_GL_DeleteContext(reinterpret_cast<SDL_GLContext>(context));
    return !Fails(SysStepDeleteContext);
}

int Sys_SwapBuffers(SysWindow* window) {
    if (!window) {
        return 0;
    }
    SDL_GL_SwapWindow(ToSdl(window));
    return 1;
}

int Sys_SwapIntervalSupported() {
    return SDL_GL_GetCurrentContext() != nullptr;
}

void Sys_SetSwapInterval(int interval) {
    SDL_GL_SetSwapInterval(interval);
}

void* Sys_GetProcAddress(const char* name) {
    if (!name || !SDL_GL_GetCurrentContext()) {
        return nullptr;
    }
    return SDL_GL_GetProcAddress(name);
}
