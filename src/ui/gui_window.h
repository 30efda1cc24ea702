// The dialog window: one movable window with a title bar and up to 32 items,
// operated with the mouse and keyboard state of g_window and reporting to an
// optional callback that may refuse what is about to happen. The engine makes
// it empty and hidden; nothing in the game fills or shows it. It is the base
// on which a tool screen is built.
//
// Mouse: dragging the title bar (the 18 units above the body) moves the window
// without turning the camera; a click outside drops the focus; a click on an
// item focuses it, or toggles a check box (which keeps the focus). Keyboard:
// with no focus, Enter is reported as item 6666, event 1, value 13; a focused
// text field types through the console's key tables, with paste, Backspace
// and Enter (which drops the focus).
#pragma once

#include <cstdint>

#include "ui/gui_item.h"
#include "ui/text_batch.h"

// Callback events.
enum {
    GuiEventActivate = 0,  // a button or check box is about to act; 0 refuses
    GuiEventType = 1,      // a key (value) or a paste (value 0) is about to enter a field; 0 refuses
    GuiEventClick = 2,     // an item is about to be clicked; 0 refuses
    GuiEventToggled = 3,   // a check box has been toggled; the result is ignored
};
// The item index reported for Enter while nothing has the focus.
const uint32_t kGuiNoItem = 6666;

typedef int (*GuiCallback)(uint32_t item, uint32_t event, uint32_t value);

class GuiWindow {
public:
    static const int kMaxItems = 32;
    static const int kTitleHeight = 18;

    uint8_t visible;
    char title[50];
    uint32_t focus;  // 1-based item with the focus, 0 for none
    float x, y, z;   // top-left corner of the body
    float width, height;
    TextBatch titleText;
    GuiItem* items[kMaxItems];
    GuiCallback callback;

    // Empty and hidden, 300 x 100 with its corner at (400, 282).
    GuiWindow();
    ~GuiWindow();
    GuiWindow(const GuiWindow&) = delete;
    GuiWindow& operator=(const GuiWindow&) = delete;

    // Deletes every item and returns to 300 x 100, hidden, no title, focus or callback; stays put.
    void Clear();
    // Centres the window on the 800 x 600 screen, title bar included.
    void Centre();
    // Sets the title (48 characters at most; longer ones are ignored).
    void SetTitle(const char* newTitle);
    // Adds an item captioned text in the first free slot; its index, or 32 when all are taken.
    uint32_t AddTextItem(uint32_t kind, const char* text, float itemX, float itemY, float itemWidth,
                         float itemHeight);
    // Adds an item captioned "%i" of value; its index, or 32.
    uint32_t AddIntItem(uint32_t kind, int32_t value, float itemX, float itemY, float itemWidth,
                        float itemHeight);
    // Adds an item captioned "%.2f" of value; its index, or 32.
    uint32_t AddFloatItem(uint32_t kind, float value, float itemX, float itemY, float itemWidth,
                          float itemHeight);
    // Replaces an item's caption when text is shorter than 256 characters.
    void SetCaption(uint32_t item, const char* text);
    // Rebuilds every item and the title; a focused text field shows the cursor after its caption.
    void Build();
    // Once per tick while visible: dragging, clicks, Enter and typing into the focused field.
    void Update();

private:
    uint8_t dragging;
    float dragOffset[2];

    uint32_t AddItem(GuiItem* item);
    int DragTitleBar();
    int Click();
    void TypeIntoField();
};

extern GuiWindow g_gui;

// The tick hook: g_gui.Update().
void UpdateGuiWindow();
