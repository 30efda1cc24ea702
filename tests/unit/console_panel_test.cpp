// The console panel's text: input line with its bullet cursor on the bottom
// row, log lines upward from it, at most 19 of them, gaps for empty lines.
#include "render/console_panel.h"

#include <gtest/gtest.h>

#include <memory>

#include "app/console.h"
#include "ui/text_batch.h"

TEST(ConsolePanelText, InputLineEndsInTheCursorOnRow228) {
    std::unique_ptr<Console> console(new Console);
    snprintf(console->inputLine, sizeof(console->inputLine), "LOAD");
    TextBatch batch;
    FillConsoleText(batch, *console);
    ASSERT_EQ(batch.count, 1);
    const TextEntry& entry = batch.entries[0];
    EXPECT_FLOAT_EQ(entry.y, 228.0f);
    EXPECT_FLOAT_EQ(entry.x, 0.0f);
    EXPECT_FLOAT_EQ(entry.size, 12.0f);
    EXPECT_EQ(entry.align, 0u);
    ASSERT_EQ(entry.length, 5);
    EXPECT_EQ(entry.glyphs[0], TextBatch::GlyphIndex('L'));
    EXPECT_EQ(entry.glyphs[4], 73);  // the bullet
}

TEST(ConsolePanelText, AtMostNineteenLogLinesShowNewestLowest) {
    std::unique_ptr<Console> console(new Console);
    for (int i = 0; i < 40; i++) {
        console->Print("line %d", i);
    }
    TextBatch batch;
    FillConsoleText(batch, *console);
    ASSERT_EQ(batch.count, 20);
    // Entry 1 is the newest line, one row above the input line.
    EXPECT_FLOAT_EQ(batch.entries[1].y, 216.0f);
    EXPECT_EQ(batch.entries[1].glyphs[5], TextBatch::GlyphIndex('3'));
    EXPECT_EQ(batch.entries[1].glyphs[6], TextBatch::GlyphIndex('9'));
    // The nineteenth shown is "line 21", on the top row.
    EXPECT_FLOAT_EQ(batch.entries[19].y, 0.0f);
    EXPECT_EQ(batch.entries[19].glyphs[5], TextBatch::GlyphIndex('2'));
    EXPECT_EQ(batch.entries[19].glyphs[6], TextBatch::GlyphIndex('1'));
}

TEST(ConsolePanelText, EmptyLogLineLeavesAGapRow) {
    std::unique_ptr<Console> console(new Console);
    console->AddLine("older");
    console->AddLine("");
    console->AddLine("newest");
    TextBatch batch;
    FillConsoleText(batch, *console);
    ASSERT_EQ(batch.count, 3);
    EXPECT_FLOAT_EQ(batch.entries[1].y, 216.0f);
    EXPECT_FLOAT_EQ(batch.entries[2].y, 192.0f);
    EXPECT_EQ(batch.entries[2].length, 5);
}
