// The developer's layers on top of every scene, skipped by the post-effect's
// capture pass so they never glow: the debug panel's values and titles with
// the engine mark (while DEBUG is on), the sliding console panel, the movable
// GUI window and the right-click debug menu.
//
// The GUI window and the debug menu belong to the developer surface; it
// plugs its draws in here. Each is called every frame the overlays are drawn,
// on the 2D canvas, and decides for itself whether it shows (the window when
// shown, the menu when open); a null entry draws nothing.
#pragma once

struct DeveloperDraws {
    void (*guiWindow)();  // the GUI window, when shown
    void (*debugMenu)();  // the debug menu, when open
};

extern DeveloperDraws g_developerDraws;

// Debug panel, console panel, GUI window and debug menu, in that order (after Begin2D).
void DrawDeveloperOverlays();
