#include "render/console_panel.h"

#include <GL/gl.h>

#include <cstdio>

#include "app/console.h"
#include "app/gl_window.h"
#include "render/overlay_draw.h"
#include "resources/texture_manager.h"
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

void DrawConsole(const Console& console, float x, float y, float z, float rotX, float rotY, float rotZ) {
    // Built afresh each frame the panel shows: the log changes under it at any time.
    TextBatch text;
    glPushMatrix();
    glTranslatef(x, y, z);
    glRotatef(rotX, 1.0f, 0.0f, 0.0f);
    glRotatef(rotY, 0.0f, 1.0f, 0.0f);
    glRotatef(rotZ, 0.0f, 0.0f, 1.0f);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    g_textures.Bind(nullptr);

    glColor4f(0.0f, 0.0f, 0.0f, 0.5f);
    DrawOverlayQuad(0.0f, 0.0f, 800.0f, 242.0f);
    glLineWidth(1.0f);
    glColor4f(0.7f, 0.7f, 0.7f, 0.5f);
    glBegin(GL_LINES);
    glVertex2f(0.0f, 243.0f);
    glVertex2f(800.0f, 243.0f);
    glEnd();

    FillConsoleText(text, console);
    g_textures.Bind("gui_font.tga");
    glColor4f(0.7f, 0.7f, 0.7f, 1.0f);
    g_window.polyCount += text.Build();
    DrawTextBatch(text);
    glDisable(GL_BLEND);
    glPopMatrix();
}
