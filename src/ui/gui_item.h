// One item of the dialog window: a label, a text field, a button, a check box
// or a colour swatch, placed relative to the window body. Build() makes its
// caption text and its background: bars, boxes and marks cut from the widget
// image "gui_controls.tga" (a swatch shows the texture its caption names).
// Background vertices have the 32-byte layout of the text batches.
#pragma once

#include <cstdint>

#include "ui/text_batch.h"

enum {
    GuiLabel = 0,
    GuiTextField = 1,
    GuiButton = 2,
    GuiCheckBox = 4,
    GuiColourSwatch = 6,
};

class GuiItem {
public:
    static const int kHeight = 18;

    float x, y, z;
    float width, height;
    float colour[3];
    TextBatch text;
    uint32_t kind;
    float* vertices;  // owned, null for labels
    uint16_t triangleCount;
    char caption[256];
    float floatValue;
    int32_t intValue;  // a check box: checked when not 0

    // A white item of kind at (x, y); width at least 8, height 18 except for a swatch.
    GuiItem(uint32_t kind, float x, float y, float width, float height);
    ~GuiItem();
    GuiItem(const GuiItem&) = delete;
    GuiItem& operator=(const GuiItem&) = delete;

    // Copies text into caption when it is shorter than 256 characters; 1 or 0.
    int SetCaption(const char* newCaption);
    // Makes the caption batch and the background geometry again.
    void Build();
    // 1 when (px, py), relative to the window body, lies inside: left and top edges excluded.
    int Contains(float px, float py) const;
};
