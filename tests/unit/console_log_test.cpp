// The console log: line cutting at 83 characters, and scrolling.
#include <gtest/gtest.h>

#include <string>

#include "app/console.h"

TEST(ConsoleLog, LongTextIsCutInto83CharacterPiecesFirstOnTop) {
    Console console;
    console.AddLine("first");
    std::string text(200, 'a');
    text[83] = 'b';
    text[166] = 'c';
    console.AddLine(text.c_str());
    EXPECT_EQ(std::string(console.lines[2]), text.substr(0, 83));
    EXPECT_EQ(std::string(console.lines[1]), text.substr(83, 83));
    EXPECT_EQ(std::string(console.lines[0]), text.substr(166));
    // Exactly one line's width leaves an empty second piece.
    console.AddLine(std::string(83, '=').c_str());
    EXPECT_STREQ(console.lines[0], "");
    EXPECT_EQ(std::string(console.lines[1]), std::string(83, '='));
    EXPECT_STREQ(console.lines[5], "first");
}

TEST(ConsoleLog, The257thLinePushesTheOldestOut) {
    Console console;
    for (int i = 0; i < 257; i++) {
        console.Print("line %d", i);
    }
    EXPECT_STREQ(console.lines[0], "line 256");
    EXPECT_STREQ(console.lines[255], "line 1");
}
