#include <GL/gl.h>
#include <GL/glu.h>

#include "app/gl_window.h"
#include "app/input.h"
#include "app/key_bindings.h"
#include "platform/sys_events.h"
#include "platform/sys_joystick.h"
#include "platform/sys_window.h"

// Client pixels to the 800 x 600 virtual screen, y down, over the part of the window the
// picture takes.
static void SetMouse2D(GlWindow* w, intptr_t lParam) {
    int x = static_cast<int16_t>(Sys_LoWord(static_cast<uintptr_t>(lParam)));
    int y = static_cast<int16_t>(Sys_HiWord(static_cast<uintptr_t>(lParam)));
    int32_t view[4];
    w->ViewRect(view);
    int top = w->height - view[1] - view[3];
    w->mouse2D[0] = static_cast<float>(x - view[0]) / static_cast<float>(view[2]) * 800.0f;
    w->mouse2D[1] = static_cast<float>(y - top) / static_cast<float>(view[3]) * 600.0f;
}

// The world point under the cursor: one depth read, unprojected with the matrices the
// last camera setup saved. Skipped until a frame has set a viewport.
static void UnprojectCursor(GlWindow* w) {
    if (!w->renderContext || w->viewport[2] == 0 || w->viewport[3] == 0) {
        return;
    }
    int x = 0, y = 0;
    Sys_CursorClientPos(w->window, &x, &y);
    int windowY = w->height - y;
    float depth = 0.0f;
    glReadPixels(x, windowY, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
    double wx = 0.0, wy = 0.0, wz = 0.0;
    gluUnProject(x, windowY, depth, w->modelview, w->projection, w->viewport, &wx, &wy, &wz);
    w->mouse3D[0] = static_cast<float>(wx);
    w->mouse3D[1] = static_cast<float>(wy);
    w->mouse3D[2] = static_cast<float>(wz);
}

// The button code compares the whole flag word: a button together with Shift, Ctrl or
// another button counts as none.
static uint8_t ButtonCode(uintptr_t flags) {
    switch (flags) {
        case MK_LBUTTON:
            return 1;
        case MK_MBUTTON:
            return 4;
        case MK_RBUTTON:
            return 2;
    }
    return 0;
}

static void Activate(GlWindow* w, SysWindow* window, uintptr_t wParam) {
    int normal = Sys_WindowShowState(window) == SW_SHOWNORMAL;
    w->active = normal && Sys_LoWord(wParam) >= 1 ? 1 : 0;
}

static void CaptureJoystick(GlWindow* w) {
    if (!Sys_JoystickCapture()) {
        return;
    }
    SysJoystickState state;
    Sys_JoystickGetPos(&state);
    w->joystickFound = 1;
}

intptr_t WindowProc(SysWindow* window, unsigned int message, uintptr_t wParam, intptr_t lParam) {
    GlWindow* w = g_activeWindow;
    if (!w) {
        return 0;
    }
    switch (message) {
        case WM_CREATE:
            CaptureJoystick(w);
            return 0;
        case WM_CLOSE:
            // The loop shuts down in order; the window stays until then.
            Sys_PostQuitMessage(0);
            return 0;
        case WM_SIZE:
            // A display mode's window keeps its size; the desktop's follows the desktop.
            if (w->fullScreen != 1) {
                w->Resize(static_cast<int>(Sys_LoWord(static_cast<uintptr_t>(lParam))),
                          static_cast<int>(Sys_HiWord(static_cast<uintptr_t>(lParam))));
            }
            return 0;
        case WM_ACTIVATE:
            Activate(w, window, wParam);
            return 0;
        case WM_PAINT:
            w->BeginFrame();
            w->Present();
            return Sys_DefWindowProc(window, message, wParam, lParam);
        case WM_KEYDOWN:
            KeyDown(w->keys, static_cast<int>(wParam & 0xFF));
            return 0;
        case WM_KEYUP:
            KeyUp(w->keys, static_cast<int>(wParam & 0xFF));
            return 0;
        case WM_MOUSEMOVE:
            SetMouse2D(w, lParam);
            w->mouseButtons = ButtonCode(wParam);
            UnprojectCursor(w);
            return 0;
        case WM_LBUTTONDOWN:
            w->mouseButtons = 1;
            SetMouse2D(w, lParam);
            return 0;
        case WM_RBUTTONDOWN:
            w->mouseButtons = 2;
            SetMouse2D(w, lParam);
            return 0;
        case WM_MBUTTONDOWN:
            w->mouseButtons = 4;
            SetMouse2D(w, lParam);
            return 0;
        case WM_LBUTTONUP:
        case WM_RBUTTONUP:
        case WM_MBUTTONUP:
            w->mouseButtons = 0;
            return 0;
        case WM_MOUSEWHEEL:
            if (static_cast<int32_t>(static_cast<uint32_t>(wParam)) > 0) {
                w->fov -= 5.0f;
            } else if (static_cast<int32_t>(static_cast<uint32_t>(wParam)) < 0) {
                w->fov += 5.0f;
            }
            return 0;
    }
    return Sys_DefWindowProc(window, message, wParam, lParam);
}
