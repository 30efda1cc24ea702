#include "render/console_panel.h"

#include <cstdio>

#include "app/console.h"
#include "ui/text_batch.h"

static const float kGlyphSize = 12.0f;
static const float kInputRow = 240.0f - kGlyphSize;

void FillConsoleText(TextBatch& batch, const Console& console) {
    // 0x95 is the bullet that serves as the cursor.
    char input[sizeof(console.inputLine) + 2];
    snprintf(input, sizeof(input), "%s\x95", console.inputLine);
    batch.AddEntry(input, 0.0f, kInputRow, 0.0f, kGlyphSize, 1.0f, 0);
    float y = kInputRow;
    for (int i = 0; i < Console::kLineCount; i++) {
        y -= kGlyphSize;
        if (y < 0.0f) {
            break;
        }
        if (console.lines[i][0]) {
            batch.AddEntry(console.lines[i], 0.0f, y, 0.0f, kGlyphSize, 1.0f, 0);
        }
    }
}
