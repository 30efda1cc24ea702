#include "ui/gui_window.h"

#include <cstdio>
#include <cstring>

#include "app/gl_window.h"
#include "app/input.h"
#include "platform/sys_keys.h"
#include "ui/console_keys.h"

GuiWindow::GuiWindow()
    : visible(0), focus(0), x(0), y(0), z(0), width(0), height(0), callback(nullptr), dragging(0) {
    memset(title, 0, sizeof(title));
    memset(items, 0, sizeof(items));
    dragOffset[0] = dragOffset[1] = 0;
    // Centred while the size is still 0; Clear then sets the size without moving it.
    Centre();
    Clear();
}

GuiWindow::~GuiWindow() {
    Clear();
}

void GuiWindow::Clear() {
    for (GuiItem*& item : items) {
        delete item;
        item = nullptr;
    }
    memset(title, 0, sizeof(title));
    width = 300;
    height = 100;
    z = 0;
    focus = 0;
    visible = 0;
    callback = nullptr;
    dragging = 0;
}

void GuiWindow::Centre() {
    x = 400 - width / 2;
    y = 300 - height / 2 - kTitleHeight;
}

void GuiWindow::SetTitle(const char* newTitle) {
    if (!newTitle || strlen(newTitle) >= 49) {
        return;
    }
    strcpy(title, newTitle);
}

uint32_t GuiWindow::AddItem(GuiItem* item) {
    for (uint32_t i = 0; i < kMaxItems; i++) {
        if (!items[i]) {
            items[i] = item;
            item->Build();
            return i;
        }
    }
    delete item;
    return kMaxItems;
}

uint32_t GuiWindow::AddTextItem(uint32_t kind, const char* text, float itemX, float itemY, float itemWidth,
                                float itemHeight) {
    GuiItem* item = new GuiItem(kind, itemX, itemY, itemWidth, itemHeight);
    item->SetCaption(text);
    return AddItem(item);
}

uint32_t GuiWindow::AddIntItem(uint32_t kind, int32_t value, float itemX, float itemY, float itemWidth,
                               float itemHeight) {
    GuiItem* item = new GuiItem(kind, itemX, itemY, itemWidth, itemHeight);
    item->intValue = value;
    snprintf(item->caption, sizeof(item->caption), "%i", value);
    return AddItem(item);
}

uint32_t GuiWindow::AddFloatItem(uint32_t kind, float value, float itemX, float itemY, float itemWidth,
                                 float itemHeight) {
    GuiItem* item = new GuiItem(kind, itemX, itemY, itemWidth, itemHeight);
    item->floatValue = value;
    snprintf(item->caption, sizeof(item->caption), "%.2f", value);
    return AddItem(item);
}

void GuiWindow::SetCaption(uint32_t item, const char* text) {
    if (item >= kMaxItems || !items[item]) {
        return;
    }
    if (items[item]->SetCaption(text)) {
        items[item]->Build();
    }
}

void GuiWindow::Build() {
    for (uint32_t i = 0; i < kMaxItems; i++) {
        GuiItem* item = items[i];
        if (!item) {
            continue;
        }
        // The focused field shows the bullet cursor (0x95) only in its built text.
        size_t length = strlen(item->caption);
        bool cursor = item->kind == GuiTextField && focus == i + 1 && length + 1 < sizeof(item->caption);
        if (cursor) {
            item->caption[length] = '\x95';
            item->caption[length + 1] = 0;
        }
        item->Build();
        if (cursor) {
            item->caption[length] = 0;
        }
    }
    titleText.ClearEntry(-1);
    titleText.AddEntry(title, 0, -14, width, 10, 1.0f, 0);
    titleText.Build();
}

// Step 1: the title bar drag. 1 when it used the tick.
int GuiWindow::DragTitleBar() {
    float px = g_window.mouse2D[0];
    float py = g_window.mouse2D[1];
    if (!dragging && g_window.mouseButtons == 1 && px >= x && px <= x + width && py > y - kTitleHeight &&
        py < y) {
        dragging = 1;
        dragOffset[0] = px - x;
        dragOffset[1] = py - y;
    }
    if (!dragging) {
        return 0;
    }
    if (g_window.mouseButtons == 0) {
        dragging = 0;
        return 0;
    }
    if (!g_window.active) {
        return 0;
    }
    x = px - dragOffset[0];
    y = py - dragOffset[1];
    // The camera sees no movement and the press is no click.
    g_lastMouse[0] = px;
    g_lastMouse[1] = py;
    g_dragMoved = 1;
    return 1;
}

// Steps 2 and 3: a press outside drops the focus, a press inside goes to the items under it.
// 1 when the update ends here.
int GuiWindow::Click() {
    if (g_window.mouseButtons == 0) {
        return 0;
    }
    float px = g_window.mouse2D[0];
    float py = g_window.mouse2D[1];
    if (px < x || px > x + width || py < y - kTitleHeight || py > y + height) {
        focus = 0;
        Build();
        return 1;
    }
    for (uint32_t i = 0; i < kMaxItems; i++) {
        GuiItem* item = items[i];
        if (!item || !item->Contains(px - x, py - y)) {
            continue;
        }
        if (callback && !callback(i, GuiEventClick, 0)) {
            break;
        }
        bool acts = item->kind == GuiButton || item->kind == GuiCheckBox;
        if (acts && callback && !callback(i, GuiEventActivate, 0)) {
            break;
        }
        if (item->kind != GuiCheckBox) {
            focus = i + 1;
            g_window.mouseButtons = 0;
            Build();
            return 1;
        }
        item->intValue = !item->intValue;
        Build();
        if (callback) {
            callback(i, GuiEventToggled, 0);
        }
    }
    // The click is used up whatever it hit.
    g_window.mouseButtons = 0;
    return 0;
}

struct FieldFilter {
    GuiCallback callback;
    uint32_t item;
};

static int AskCallback(int key, void* context) {
    const FieldFilter* filter = static_cast<const FieldFilter*>(context);
    return !filter->callback || filter->callback(filter->item, GuiEventType, static_cast<uint32_t>(key));
}

// Step 5: the focused text field takes keys as the console's input line does.
void GuiWindow::TypeIntoField() {
    uint32_t index = focus - 1;
    GuiItem* item = index < kMaxItems ? items[index] : nullptr;
    if (!item || item->kind != GuiTextField) {
        return;
    }
    uint8_t* keys = g_window.keys;
    FieldFilter filter = {callback, index};
    int changed = KeyLine_Paste(item->caption, 254, 255, AskCallback, &filter);
    changed += KeyLine_Type(item->caption, 253, AskCallback, &filter);
    if (keys[VK_BACK] && item->caption[0]) {
        keys[VK_BACK] = 0;
        item->caption[strlen(item->caption) - 1] = 0;
        changed = 1;
    }
    // Enter is left set for whoever else wants to see it.
    if (keys[VK_RETURN]) {
        focus = 0;
        changed = 1;
    }
    if (changed) {
        Build();
    }
}

void GuiWindow::Update() {
    if (!visible) {
        return;
    }
    if (DragTitleBar() || Click()) {
        return;
    }
    if (focus == 0) {
        if (g_window.keys[VK_RETURN]) {
            g_window.keys[VK_RETURN] = 0;
            if (callback) {
                callback(kGuiNoItem, GuiEventType, 13);
            }
        }
        return;
    }
    TypeIntoField();
}

void UpdateGuiWindow() {
    g_gui.Update();
}
