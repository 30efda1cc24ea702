// Clipboard text for the console input line.
#pragma once

// Copies the clipboard's text as Windows-1252 into out (size outSize, terminated);
// 1 when there was text, else 0 (out left empty).
int Sys_GetClipboardText(char* out, int outSize);
// Puts 1252 text on the clipboard; 1 or 0.
int Sys_SetClipboardText(const char* text);
