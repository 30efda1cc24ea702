#include "app/console.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

static void (*s_echo)(const char* line) = nullptr;

void Console_SetEcho(void (*echo)(const char* line)) {
    s_echo = echo;
}

Console::Console() {
    memset(lines, 0, sizeof(lines));
    memset(inputLine, 0, sizeof(inputLine));
    memset(historyLine, 0, sizeof(historyLine));
    visible = 0;
    slide = -240.0f;
}

static void ScrollAndPut(char (*lines)[256], const char* piece, int length) {
    memmove(lines[1], lines[0], sizeof(lines[0]) * (Console::kLineCount - 1));
    memset(lines[0], 0, sizeof(lines[0]));
    memcpy(lines[0], piece, length);
}

// Pieces are taken in order, so the first piece of a long text ends up above
// the later ones; a text of exactly 83 characters leaves an empty last piece.
static void AppendText(char (*lines)[256], const char* text, size_t length) {
    size_t pieces = length / Console::kLineWidth + 1;
    for (size_t i = 0; i < pieces; i++) {
        size_t start = i * Console::kLineWidth;
        size_t count = length - start;
        if (count > static_cast<size_t>(Console::kLineWidth)) {
            count = Console::kLineWidth;
        }
        ScrollAndPut(lines, text + start, static_cast<int>(count));
        if (s_echo) {
            s_echo(lines[0]);
        }
    }
}

void Console::AddLine(const char* text) {
    if (!text) {
        return;
    }
    size_t length = strlen(text);
    if (length > 256) {
        return;
    }
    AppendText(lines, text, length);
}

void Console::Print(const char* format, ...) {
    if (!format || strlen(format) > 256) {
        return;
    }
    char buffer[4096];
    va_list args;
    va_start(args, format);
    vsnprintf(buffer, sizeof(buffer), format, args);
    va_end(args);
    AppendText(lines, buffer, strlen(buffer));
}

void Console::Clear() {
    memset(lines, 0, sizeof(lines));
    memset(inputLine, 0, sizeof(inputLine));
}
