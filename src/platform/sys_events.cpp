#include "platform/sys_events.h"

#include <SDL.h>

#include "platform/sys_events_local.h"
#include "platform/sys_input.h"
#include "platform/sys_keys.h"
#include "platform/sys_x11_local.h"

// One platform event can become several messages (a wheel turn over a moved
// cursor, say), so translated messages wait in a small ring and leave it one
// per Sys_PeekMessage.
static const int kQueueSize = 256;
static SysMessage s_queue[kQueueSize];
static int s_head;
static int s_count;
static SysWindowProc s_proc;

void Sys_SetWindowProc(SysWindowProc proc) {
    s_proc = proc;
}

int Sys_PostMessage(SysWindow* window, unsigned int message, uintptr_t wParam, intptr_t lParam) {
    if (s_count == kQueueSize) {
        return 0;
    }
    SysMessage& slot = s_queue[(s_head + s_count) % kQueueSize];
    slot.window = window;
    slot.message = message;
    slot.wParam = wParam;
    slot.lParam = lParam;
    s_count++;
    return 1;
}

void Sys_PostQuitMessage(int exitCode) {
    Sys_PostMessage(nullptr, WM_QUIT, static_cast<uintptr_t>(exitCode), 0);
}

intptr_t Sys_DefWindowProc(SysWindow*, unsigned int, uintptr_t, intptr_t) {
    return 0;
}

intptr_t Sys_DispatchMessage(const SysMessage* message) {
    if (!s_proc || !message) {
        return 0;
    }
    return s_proc(message->window, message->message, message->wParam, message->lParam);
}

void Sys_SendCreateMessage(SysWindow* window) {
    if (s_proc) {
        s_proc(window, WM_CREATE, 0, 0);
    }
}

static SysWindow* WindowOf(Uint32 windowId) {
    return reinterpret_cast<SysWindow*>(SDL_GetWindowFromID(windowId));
}

static uintptr_t MouseKeyFlags(Uint32 buttons) {
    uintptr_t flags = 0;
    if (buttons & SDL_BUTTON_LMASK) {
        flags |= MK_LBUTTON;
    }
    if (buttons & SDL_BUTTON_RMASK) {
        flags |= MK_RBUTTON;
    }
    if (buttons & SDL_BUTTON_MMASK) {
        flags |= MK_MBUTTON;
    }
    SDL_Keymod mod = SDL_GetModState();
    if (mod & KMOD_SHIFT) {
        flags |= MK_SHIFT;
    }
    if (mod & KMOD_CTRL) {
        flags |= MK_CONTROL;
    }
    return flags;
}

// Windows sends Alt combinations (but not AltGr, which is Ctrl+Alt), Alt itself
// and F10 as system keys, which the engine's key table never sees.
static int IsSystemKey(int vk, Uint16 mod) {
    int alt = (mod & KMOD_ALT) != 0;
    int ctrl = (mod & KMOD_CTRL) != 0;
    return vk == VK_F10 || ((alt || vk == VK_MENU) && !ctrl);
}

static void TranslateKey(const SDL_KeyboardEvent& key) {
    int vk = Sys_VirtualKeyFromScancode(key.keysym.scancode, Sys_KeyboardIsUK());
    if (!vk) {
        return;
    }
    int down = key.type == SDL_KEYDOWN;
    int system = IsSystemKey(vk, key.keysym.mod);
    unsigned int message = down ? (system ? WM_SYSKEYDOWN : WM_KEYDOWN) : (system ? WM_SYSKEYUP : WM_KEYUP);
    // lParam as Windows builds it: repeat count 1, scan code, previous state, transition.
    uint32_t lParam = 1 | ((key.keysym.scancode & 0xFF) << 16);
    if (key.repeat || !down) {
        lParam |= 1u << 30;
    }
    if (!down) {
        lParam |= 1u << 31;
    }
    Sys_PostMessage(WindowOf(key.windowID), message, static_cast<uintptr_t>(vk),
                    static_cast<intptr_t>(lParam));
}

static void TranslateWindowEvent(const SDL_WindowEvent& event) {
    SysWindow* window = WindowOf(event.windowID);
    switch (event.event) {
        case SDL_WINDOWEVENT_SIZE_CHANGED:
            Sys_PostMessage(window, WM_SIZE, SIZE_RESTORED, Sys_MakeLParam(event.data1, event.data2));
            break;
        case SDL_WINDOWEVENT_FOCUS_GAINED:
        case SDL_WINDOWEVENT_RESTORED:
        case SDL_WINDOWEVENT_MAXIMIZED:
            Sys_PostMessage(window, WM_ACTIVATE, WA_ACTIVE, 0);
            break;
        case SDL_WINDOWEVENT_FOCUS_LOST:
            Sys_PostMessage(window, WM_ACTIVATE, WA_INACTIVE, 0);
            break;
        case SDL_WINDOWEVENT_MINIMIZED:
            Sys_PostMessage(window, WM_ACTIVATE, WA_INACTIVE | (1u << 16), 0);
            break;
        case SDL_WINDOWEVENT_EXPOSED:
            Sys_PostMessage(window, WM_PAINT, 0, 0);
            break;
        case SDL_WINDOWEVENT_CLOSE:
            Sys_PostMessage(window, WM_CLOSE, 0, 0);
            break;
    }
}

static void TranslateButton(const SDL_MouseButtonEvent& button) {
    int down = button.type == SDL_MOUSEBUTTONDOWN;
    unsigned int message;
    switch (button.button) {
        case SDL_BUTTON_LEFT:
            message = down ? WM_LBUTTONDOWN : WM_LBUTTONUP;
            break;
        case SDL_BUTTON_RIGHT:
            message = down ? WM_RBUTTONDOWN : WM_RBUTTONUP;
            break;
        case SDL_BUTTON_MIDDLE:
            message = down ? WM_MBUTTONDOWN : WM_MBUTTONUP;
            break;
        default:
            return;
    }
    Sys_PostMessage(WindowOf(button.windowID), message, MouseKeyFlags(SDL_GetMouseState(nullptr, nullptr)),
                    Sys_MakeLParam(button.x, button.y));
}

static void TranslateWheel(const SDL_MouseWheelEvent& wheel) {
    int notches = wheel.y;
    if (wheel.direction == SDL_MOUSEWHEEL_FLIPPED) {
        notches = -notches;
    }
    if (notches == 0) {
        return;
    }
    int x = 0, y = 0;
    SDL_GetGlobalMouseState(&x, &y);
    // High word: the signed wheel distance; low word: the key flags.
    uint32_t wParam = (static_cast<uint32_t>(notches * WHEEL_DELTA) << 16) |
                      static_cast<uint32_t>(MouseKeyFlags(SDL_GetMouseState(nullptr, nullptr)));
    Sys_PostMessage(WindowOf(wheel.windowID), WM_MOUSEWHEEL, wParam, Sys_MakeLParam(x, y));
}

static void TranslateEvent(const SDL_Event& event) {
    switch (event.type) {
        case SDL_QUIT:
            // Only a signal gets here (closing the window is WM_CLOSE): end the run the same way.
            Sys_PostQuitMessage(0);
            break;
        case SDL_WINDOWEVENT:
            TranslateWindowEvent(event.window);
            break;
        case SDL_KEYDOWN:
        case SDL_KEYUP:
            TranslateKey(event.key);
            break;
        case SDL_KEYMAPCHANGED:
            Sys_RefreshKeyboardLayout();
            break;
        case SDL_MOUSEMOTION:
            Sys_PostMessage(WindowOf(event.motion.windowID), WM_MOUSEMOVE, MouseKeyFlags(event.motion.state),
                            Sys_MakeLParam(event.motion.x, event.motion.y));
            break;
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
            TranslateButton(event.button);
            break;
        case SDL_MOUSEWHEEL:
            TranslateWheel(event.wheel);
            break;
        case SDL_SYSWMEVENT:
            // A window destroyed from outside is closed like a user closing it.
            if (SysWindow* gone = Sys_X11DestroyedWindow(event)) {
                Sys_PostMessage(gone, WM_CLOSE, 0, 0);
            }
            break;
    }
}

int Sys_InjectKey(int scancode, int down, int repeat, int modifiers) {
    if (!SDL_WasInit(SDL_INIT_EVENTS) && SDL_InitSubSystem(SDL_INIT_EVENTS) != 0) {
        return 0;
    }
    SDL_Event event;
    SDL_zero(event);
    event.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    event.key.state = down ? SDL_PRESSED : SDL_RELEASED;
    event.key.repeat = repeat ? 1 : 0;
    event.key.keysym.scancode = static_cast<SDL_Scancode>(scancode);
    Uint16 mod = KMOD_NONE;
    mod |= (modifiers & SysModAlt) ? KMOD_LALT : 0;
    mod |= (modifiers & SysModCtrl) ? KMOD_LCTRL : 0;
    mod |= (modifiers & SysModShift) ? KMOD_LSHIFT : 0;
    event.key.keysym.mod = mod;
    return SDL_PushEvent(&event) == 1;
}

static int PlatformEventsRunning() {
    return SDL_WasInit(SDL_INIT_VIDEO | SDL_INIT_EVENTS) != 0;
}

int Sys_PeekMessage(SysMessage* out) {
    if (s_count == 0 && PlatformEventsRunning()) {
        SDL_Event event;
        while (s_count == 0 && SDL_PollEvent(&event)) {
            TranslateEvent(event);
        }
    }
    if (s_count == 0) {
        return 0;
    }
    *out = s_queue[s_head];
    s_head = (s_head + 1) % kQueueSize;
    s_count--;
    return 1;
}

void Sys_FlushMessages() {
    s_head = 0;
    s_count = 0;
    if (PlatformEventsRunning()) {
        SDL_PumpEvents();
        SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    }
}
