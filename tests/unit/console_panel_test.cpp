// The console panel's text: input line with its bullet cursor on the bottom
// row, log lines upward from it, at most 19 of them, gaps for empty lines.
#include "render/console_panel.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "app/console.h"
#include "text_shown.h"
#include "ui/text_batch.h"

namespace {

using test::Shown;

TEST(ConsolePanelText, InputOnTheBottomRowAndNineteenLogLinesAboveNewestLowest) {
    std::unique_ptr<Console> console(new Console);
    for (int i = 0; i < 40; i++) {
        console->Print("line %d", i);
    }
    snprintf(console->inputLine, sizeof(console->inputLine), "LOAD");
    TextBatch batch;
    FillConsoleText(batch, *console);
    ASSERT_EQ(batch.count, 20);
    EXPECT_FLOAT_EQ(batch.entries[0].y, 228.0f);
    EXPECT_EQ(Shown(batch, 0), "LOAD\x95");  // the bullet is the cursor
    EXPECT_EQ(Shown(batch, 1), "line 39");
    EXPECT_FLOAT_EQ(batch.entries[19].y, 0.0f);
    EXPECT_EQ(Shown(batch, 19), "line 21");
}

TEST(ConsolePanelText, EmptyLogLineLeavesAGapRow) {
    std::unique_ptr<Console> console(new Console);
    console->AddLine("older");
    console->AddLine("");
    console->AddLine("newest");
    TextBatch batch;
    FillConsoleText(batch, *console);
    ASSERT_EQ(batch.count, 3);
    EXPECT_FLOAT_EQ(batch.entries[2].y, 192.0f);
    EXPECT_EQ(Shown(batch, 2), "older");
}

}  // namespace
