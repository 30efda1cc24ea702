#include "platform/sys_clipboard.h"

#include <SDL.h>

#include "platform/sys_text.h"

int Sys_GetClipboardText(char* out, int outSize) {
    if (outSize > 0) {
        out[0] = 0;
    }
    if (!SDL_WasInit(SDL_INIT_VIDEO) || !SDL_HasClipboardText()) {
        return 0;
    }
    char* text = SDL_GetClipboardText();
    if (!text) {
        return 0;
    }
    Sys_1252FromUtf8(text, out, outSize);
    SDL_free(text);
    return 1;
}

int Sys_SetClipboardText(const char* text) {
    if (!SDL_WasInit(SDL_INIT_VIDEO) || !text) {
        return 0;
    }
    char utf8[4096];
    Sys_Utf8From1252(text, utf8, sizeof(utf8));
    return SDL_SetClipboardText(utf8) == 0;
}
