#include "ui/debug_menu.h"

#include <cmath>
#include <cstring>

#include "app/console.h"
#include "app/gl_window.h"
#include "app/input.h"
#include "app/scene_hooks.h"

uint8_t g_menuKind;

static const char* const kEngineItems[] = {"Preview   lightmaps", "Build  1x lightmaps",
                                           "Build  4x lightmaps", "Build  8x lightmaps",
                                           "Build 16x lightmaps", "Quit to desktop"};
static const char* const kStatsItems[] = {"General", "Camera", "Mouse", "Player", "Lighting"};
// The lightmap quality each bake item sets before "LMAP_BUILD".
static const char* const kQualityLines[] = {"LMAP_QUALITY 0", "LMAP_QUALITY 1", "LMAP_QUALITY 4",
                                            "LMAP_QUALITY 8", "LMAP_QUALITY 16"};

DebugMenu::DebugMenu() : itemCount(0), hover(0), x(0), y(0), z(0), width(140), height(0), open(0) {
    memset(title, 0, sizeof(title));
    text.AddEntry("Menu", 0, -17, 140, 14, 1.0f, 0);
}

void DebugMenu::Reset() {
    memset(title, 0, sizeof(title));
    text.Reset();
    itemCount = 0;
    hover = 0;
    x = y = z = 0;
    width = 300;
    height = 0;
    open = 0;
    text.AddEntry("Menu", 0, -17, 300, 14, 1.0f, 0);
}

void DebugMenu::SetTitle(const char* newTitle) {
    if (!newTitle || strlen(newTitle) >= 49) {
        return;
    }
    strcpy(title, newTitle);
    text.SetText(0, title);
    text.Build();
}

void DebugMenu::AddItem(const char* label) {
    text.AddEntry(label, 0, static_cast<float>(kItemHeight * itemCount + 2), width, 10, 1.0f, 0);
    height += kItemHeight;
    text.Build();
    itemCount++;
}

void DebugMenu::OpenAtPointer() {
    Reset();
    float px = g_window.mouse2D[0];
    float py = g_window.mouse2D[1];
    x = px;
    y = py + 10;
    z = 0;
    if (g_debug && px < 140 && py < 30) {
        g_menuKind = MenuKindDebugStats;
        SetTitle("Debug stats");
        width = 140;
        for (const char* item : kStatsItems) {
            AddItem(item);
        }
    } else {
        g_menuKind = MenuKindEngine;
        SetTitle("Vantle 2");
        width = 160;
        for (const char* item : kEngineItems) {
            AddItem(item);
        }
    }
    if (y + kItemHeight * itemCount >= 590) {
        y = 590.0f - kItemHeight * itemCount;
    }
    if (x + width >= 790) {
        x = 790 - width;
    }
    open = 1;
}

void DebugMenu::Choose(int item) {
    if (g_menuKind == MenuKindDebugStats) {
        g_debugMode = static_cast<uint8_t>(item);
        return;
    }
    if (g_menuKind != MenuKindEngine) {
        return;
    }
    if (item >= 0 && item < 5) {
        ExecuteCommand(kQualityLines[item]);
        ExecuteCommand("LMAP_BUILD");
    } else if (item == 5) {
        ExecuteCommand("QUIT");
    }
}

void DebugMenu::Update() {
    // A right click: the right drag ended without the mouse moving.
    if (g_dragState == 2 && g_dragMoved == 0 && g_window.mouseButtons == 0) {
        if (open) {
            open = 0;
        } else {
            OpenAtPointer();
        }
        return;
    }
    if (!open) {
        return;
    }
    float px = g_window.mouse2D[0];
    float py = g_window.mouse2D[1];
    if (g_window.mouseButtons == 0) {
        bool inside = px >= x && px < x + width && py >= y && py < y + height;
        hover = inside ? static_cast<uint32_t>(floorf((py - y) / kItemHeight)) + 1 : 0;
        return;
    }
    if (g_window.mouseButtons == 1 && px >= x && px <= x + width && py >= y && py <= y + height) {
        Choose(static_cast<int>(floorf((py - y) / kItemHeight)));
        g_window.mouseButtons = 0;
    }
    open = 0;
}

void UpdateDebugMenu() {
    g_debugMenu.Update();
}
