#include <SDL.h>
#include <SDL_syswm.h>

#include <cstdio>

#include "platform/sys_x11_local.h"

static const int kMaxWindows = 4;
static SysWindow* s_windows[kMaxWindows];

// An X error about a window that is already gone is expected after the window was
// destroyed from outside: report it once and carry on to an orderly shutdown.
static int IgnoreError(Display*, XErrorEvent* error) {
    static int reported;
    if (!reported) {
        fprintf(stderr, "X error %d (request %d) ignored\n", error->error_code, error->request_code);
        reported = 1;
    }
    return 0;
}

void Sys_X11Install() {
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (SDL_strcmp(SDL_GetCurrentVideoDriver() ? SDL_GetCurrentVideoDriver() : "", "x11") != 0) {
        return;
    }
    XSetErrorHandler(IgnoreError);
    SDL_EventState(SDL_SYSWMEVENT, SDL_ENABLE);
}

void Sys_X11TrackWindow(SysWindow* window, int live) {
    for (int i = 0; i < kMaxWindows; i++) {
        if (live && !s_windows[i]) {
            s_windows[i] = window;
            return;
        }
        if (!live && s_windows[i] == window) {
            s_windows[i] = nullptr;
            return;
        }
    }
}

SysWindow* Sys_X11DestroyedWindow(const SDL_Event& event) {
    if (event.type != SDL_SYSWMEVENT || !event.syswm.msg || event.syswm.msg->subsystem != SDL_SYSWM_X11) {
        return nullptr;
    }
    const XEvent& x = event.syswm.msg->msg.x11.event;
    if (x.type != DestroyNotify) {
        return nullptr;
    }
    for (int i = 0; i < kMaxWindows; i++) {
        if (!s_windows[i]) {
            continue;
        }
        SDL_SysWMinfo info;
        SDL_VERSION(&info.version);
        SDL_Window* window = reinterpret_cast<SDL_Window*>(s_windows[i]);
        if (SDL_GetWindowWMInfo(window, &info) && info.subsystem == SDL_SYSWM_X11 &&
            info.info.x11.window == x.xdestroywindow.window) {
            return s_windows[i];
        }
    }
    return nullptr;
}

void Sys_X11DestroyWindow(SDL_Window* window) {
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    Display* display = nullptr;
    if (SDL_GetWindowWMInfo(window, &info) && info.subsystem == SDL_SYSWM_X11) {
        display = info.info.x11.display;
        // Something (the GL driver, SDL itself) may have put its own handler in since.
        XSetErrorHandler(IgnoreError);
    }
    SDL_DestroyWindow(window);
    if (display) {
        XSync(display, False);
    }
}
