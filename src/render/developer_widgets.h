// The drawing of the developer menu and the dialog window on the 2D canvas
// (Begin2D first). The scenes' developer step reaches them through
// g_developerDraws, which InstallDeveloperDraws fills: each draws only while
// its widget shows (the menu while open, the window while visible).
#pragma once

class DebugMenu;
class GuiWindow;

// The menu box, title bar, frame, text and the red band under the hovered item.
void DrawDebugMenu(const DebugMenu& menu);
// The window body, title bar, frame, title and every item with its widget image.
void DrawGuiWindow(const GuiWindow& window);
// Plugs the two draws into the scenes' developer step (g_developerDraws).
void InstallDeveloperDraws();
