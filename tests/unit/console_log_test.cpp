// The console log: line cutting at 83 characters, scrolling, and the limits on input.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "app/console.h"

TEST(ConsoleLog, LongTextIsCutInto83CharacterPiecesFirstOnTop) {
    Console console;
    std::string text(200, 'a');
    text[83] = 'b';
    text[166] = 'c';
    console.AddLine(text.c_str());
    EXPECT_EQ(strlen(console.lines[2]), 83u);
    EXPECT_EQ(strlen(console.lines[1]), 83u);
    EXPECT_EQ(strlen(console.lines[0]), 34u);
    EXPECT_EQ(console.lines[1][0], 'b');
    EXPECT_EQ(console.lines[0][0], 'c');
}

TEST(ConsoleLog, ExactlyOneLineWidthLeavesAnEmptySecondPiece) {
    Console console;
    console.AddLine("first");
    std::string text(83, '=');
    console.AddLine(text.c_str());
    EXPECT_STREQ(console.lines[0], "");
    EXPECT_EQ(std::string(console.lines[1]), text);
    EXPECT_STREQ(console.lines[2], "first");
}

TEST(ConsoleLog, The257thLinePushesTheOldestOut) {
    Console console;
    for (int i = 0; i < 257; i++) {
        console.Print("line %d", i);
    }
    EXPECT_STREQ(console.lines[0], "line 256");
    EXPECT_STREQ(console.lines[255], "line 1");
}

TEST(ConsoleLog, NullAndOverlongTextsAreIgnored) {
    Console console;
    console.AddLine(nullptr);
    console.AddLine(std::string(257, 'x').c_str());
    console.Print(nullptr);
    console.Print("%s", std::string(300, 'y').c_str());  // only the format is limited
    EXPECT_EQ(console.lines[0][0], 'y');
    EXPECT_EQ(console.lines[4][0], 0);
    EXPECT_EQ(console.lines[3][0], 'y');
}

TEST(ConsoleLog, ClearEmptiesLogAndInputLine) {
    Console console;
    console.AddLine("hello");
    strcpy(console.inputLine, "typing");
    console.Clear();
    EXPECT_STREQ(console.lines[0], "");
    EXPECT_STREQ(console.inputLine, "");
}
