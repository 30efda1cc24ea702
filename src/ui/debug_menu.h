// The developer menu: a small pop-up that a right click (press and release
// without moving, so not a camera drag) opens 10 units below the pointer,
// kept on screen. It offers the lightmap bakes and "Quit to desktop", or,
// with the debug panel showing and the click in the panel's corner, the
// choice of panel ("Debug stats"). Hovering tints an item; a left click on
// it runs the item through the console, as if it had been typed, and closes
// the menu; any other press closes it. Runs once per tick after the click
// bookkeeping and before the dialog window.
//
// One text batch holds everything: entry 0 the title, 17 units above the
// item box, and entry k + 1 item k, 15 units per item.
#pragma once

#include <cstdint>

#include "ui/text_batch.h"

// Which menu is open.
enum { MenuKindEngine = 1, MenuKindDebugStats = 255 };

class DebugMenu {
public:
    static const int kItemHeight = 15;

    char title[50];
    TextBatch text;
    uint32_t itemCount;
    uint32_t hover;  // 1-based item under the pointer, 0 for none
    float x, y, z;   // top-left corner of the item box
    float width;
    float height;
    uint8_t open;

    // Width 140, closed and empty, title entry "Menu".
    DebugMenu();

    // Empties the menu (width 300) and closes it.
    void Reset();
    // Sets the title (48 characters at most; longer ones are ignored) and rebuilds the text.
    void SetTitle(const char* newTitle);
    // Adds an item below the others and rebuilds the text.
    void AddItem(const char* label);
    // Once per tick: open, hover, choose, close.
    void Update();

private:
    void OpenAtPointer();
    void Choose(int item);
};

extern DebugMenu g_debugMenu;
// MenuKindEngine or MenuKindDebugStats: the kind of the menu last opened.
extern uint8_t g_menuKind;

// The tick hook: g_debugMenu.Update().
void UpdateDebugMenu();
