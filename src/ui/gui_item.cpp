#include "ui/gui_item.h"

#include <cstring>

// Texture rows of the widget image: a text field's bar, a button's bar, the check box and its
// mark; v runs from the top of each picture down to its bottom.
static const float kFieldTop = 1.0f - 0.1171875f;
static const float kButtonTop = 1.0f - 0.4375f;
static const float kBarRows = 0.140625f;
static const float kBoxTop = 0.4140625f;
static const float kBoxBottom = 0.2890625f;

GuiItem::GuiItem(uint32_t newKind, float newX, float newY, float newWidth, float newHeight)
    : x(newX),
      y(newY),
      z(0),
      width(newWidth < 8 ? 8 : newWidth),
      height(newKind == GuiColourSwatch ? newHeight : kHeight),
      kind(newKind),
      vertices(nullptr),
      triangleCount(0),
      floatValue(0),
      intValue(0) {
    colour[0] = colour[1] = colour[2] = 1.0f;
    memset(caption, 0, sizeof(caption));
}

GuiItem::~GuiItem() {
    delete[] vertices;
}

int GuiItem::SetCaption(const char* newCaption) {
    if (!newCaption || strlen(newCaption) >= sizeof(caption)) {
        return 0;
    }
    strcpy(caption, newCaption);
    return 1;
}

int GuiItem::Contains(float px, float py) const {
    return px > x && px <= x + width && py > y && py <= y + height;
}

static float* PutCorner(float* out, float px, float py, float u, float v) {
    out[0] = px;
    out[1] = py;
    out[2] = 0.0f;
    out[3] = 0.0f;
    out[4] = 0.0f;
    out[5] = 1.0f;
    out[6] = u;
    out[7] = v;
    return out + TextBatch::kVertexFloats;
}

// Two triangles in the text batches' order: counter-clockwise once the canvas flips y.
static float* PutQuad(float* out, float x0, float y0, float x1, float y1, float u0, float vTop, float u1,
                      float vBottom) {
    out = PutCorner(out, x0, y0, u0, vTop);
    out = PutCorner(out, x0, y1, u0, vBottom);
    out = PutCorner(out, x1, y1, u1, vBottom);
    out = PutCorner(out, x1, y1, u1, vBottom);
    out = PutCorner(out, x1, y0, u1, vTop);
    return PutCorner(out, x0, y0, u0, vTop);
}

void GuiItem::Build() {
    text.ClearEntry(-1);
    switch (kind) {
        case GuiLabel:
            text.AddEntry(caption, 0, 4, width, 10, 1.0f, 0);
            break;
        case GuiTextField:
            text.AddEntry(caption, 4, 4, width - 8, 10, 1.0f, 0);
            break;
        case GuiButton:
            text.AddEntry(caption, 4, 4, width - 8, 10, 1.0f, 1);
            break;
        case GuiCheckBox:
            text.AddEntry(caption, 16, 4, width - 16, 10, 1.0f, 0);
            break;
    }
    text.Build();

    delete[] vertices;
    vertices = nullptr;
    triangleCount = 0;
    float* out = nullptr;
    if (kind == GuiTextField || kind == GuiButton) {
        float top = kind == GuiTextField ? kFieldTop : kButtonTop;
        float bottom = top - kBarRows;
        out = vertices = new float[18 * TextBatch::kVertexFloats];
        out = PutQuad(out, 0, 0, 4, kHeight, 0.03125f, top, 0.15625f, bottom);
        out = PutQuad(out, 4, 0, width - 4, kHeight, 0.15625f, top, 0.84375f, bottom);
        PutQuad(out, width - 4, 0, width, kHeight, 0.84375f, top, 0.96875f, bottom);
        triangleCount = 6;
    } else if (kind == GuiCheckBox) {
        out = vertices = new float[12 * TextBatch::kVertexFloats];
        out = PutQuad(out, 0, 0, 14, kHeight, 0.03125f, kBoxTop, 0.46875f, kBoxBottom);
        triangleCount = 2;
        if (intValue) {
            PutQuad(out, 2, 4, 14, 14, 0.5f, kBoxTop, 1.0f, kBoxBottom);
            triangleCount = 4;
        }
    } else if (kind == GuiColourSwatch) {
        vertices = new float[6 * TextBatch::kVertexFloats];
        PutQuad(vertices, 0, 0, width, height, 0.0f, 1.0f, 1.0f, 0.0f);
        triangleCount = 2;
    }
}
