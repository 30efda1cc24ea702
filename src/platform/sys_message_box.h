// Message boxes. Every box is also written to stderr, so a run without a
// display (or a test) still shows what went wrong; a test may catch boxes
// instead of showing them.
#pragma once

enum { MB_OK = 0x00, MB_ICONEXCLAMATION = 0x30, MB_ICONINFORMATION = 0x40 };

// Shows a modal box with an OK button (text and caption in Windows-1252); always returns 1 (IDOK).
int Sys_MessageBox(const char* text, const char* caption, unsigned int flags);

// With a hook set, boxes go to it (and stderr) instead of the screen; null restores the screen.
typedef void (*SysMessageBoxHook)(const char* text, const char* caption, unsigned int flags);
void Sys_SetMessageBoxHook(SysMessageBoxHook hook);
