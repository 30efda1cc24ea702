// Text conversion between the engine's Windows-1252 bytes and the UTF-8 the
// platform speaks (window titles, clipboard).
#pragma once

// Converts 1252 text to UTF-8 into out (size outSize, always terminated).
void Sys_Utf8From1252(const char* text, char* out, int outSize);
// Converts UTF-8 text to 1252 into out (size outSize, always terminated); characters
// 1252 cannot hold become '?'.
void Sys_1252FromUtf8(const char* text, char* out, int outSize);
