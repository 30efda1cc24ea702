// The developer surface's places in the main loop: the console toggle and
// input line on every frame step, the debug panel on the 100 ms channel, and
// the developer menu and the dialog window on every tick, in that order; and
// their draws in the scenes' developer step.
#pragma once

// Sets g_hooks.consoleKeys, refreshDebugPanel, debugMenuUpdate and guiUpdate, and the draws.
void InstallDeveloperHooks();
