// Shared inside the platform layer only.
#pragma once

struct SysWindow;

// Calls the window procedure with WM_CREATE, as window creation does on Windows.
void Sys_SendCreateMessage(SysWindow* window);
