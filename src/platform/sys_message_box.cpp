#include "platform/sys_message_box.h"

#include <SDL.h>

#include <cstdio>
#include <cstdlib>

#include "platform/sys_text.h"

static SysMessageBoxHook s_hook;

void Sys_SetMessageBoxHook(SysMessageBoxHook hook) {
    s_hook = hook;
}

int Sys_MessageBox(const char* text, const char* caption, unsigned int flags) {
    fprintf(stderr, "%s: %s\n", caption ? caption : "", text ? text : "");
    fflush(stderr);
    if (s_hook) {
        s_hook(text, caption, flags);
        return 1;
    }
    // A box waits for a click nobody gives in an automated run; the variable lets such
    // runs keep only the stderr copy.
    if (getenv("VANTLE_NO_MESSAGE_BOX")) {
        return 1;
    }
    char utf8Text[2048];
    char utf8Caption[512];
    Sys_Utf8From1252(text ? text : "", utf8Text, sizeof(utf8Text));
    Sys_Utf8From1252(caption ? caption : "", utf8Caption, sizeof(utf8Caption));
    Uint32 kind = (flags & 0xF0) == MB_ICONEXCLAMATION ? SDL_MESSAGEBOX_WARNING : SDL_MESSAGEBOX_INFORMATION;
    SDL_ShowSimpleMessageBox(kind, utf8Caption, utf8Text, nullptr);
    return 1;
}
