// The console input line as a user drives it: keys land in g_window's key
// table the way the window procedure puts them there, and ConsoleKeys runs
// once per frame step.
#include "ui/console_keys.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "app/console.h"
#include "app/gl_window.h"
#include "game/game_state.h"
#include "platform/sys_clipboard.h"
#include "platform/sys_events.h"
#include "platform/sys_keys.h"

namespace {

std::string g_clipboard;

int FakeClipboard(char* out, int outSize) {
    snprintf(out, static_cast<size_t>(outSize), "%s", g_clipboard.c_str());
    return g_clipboard.empty() ? 0 : 1;
}

class ConsoleKeysTest : public ::testing::Test {
protected:
    void SetUp() override {
        memset(g_window.keys, 0, sizeof(g_window.keys));
        g_window.layoutIsNotUK = 0;
        g_console.Clear();
        g_console.historyLine[0] = 0;
        g_console.visible = 1;
        g_readClipboard = FakeClipboard;
        g_clipboard.clear();
        highScore = 0;
        Sys_FlushMessages();
    }
    void TearDown() override {
        g_console.visible = 0;
        g_console.Clear();
        memset(g_window.keys, 0, sizeof(g_window.keys));
        g_readClipboard = Sys_GetClipboardText;
        Sys_FlushMessages();
    }

    // One key pressed and the frame step that follows.
    static void Press(int vk) {
        g_window.keys[vk] = 1;
        ConsoleKeys();
    }
    // Presses the keys that type lower-case letters, digits and blanks.
    static void Type(const char* text) {
        for (const char* c = text; *c; c++) {
            Press(*c >= 'a' && *c <= 'z' ? *c - 'a' + 'A' : *c);
        }
    }
    static std::string Input() { return g_console.inputLine; }
};

TEST_F(ConsoleKeysTest, TheToggleKeyIsTheOneLeftOfOneOnEitherLayout) {
    g_console.visible = 0;
    // United Kingdom board: 0xDF toggles; 0xC0 is an ordinary key there and does nothing while closed.
    Press(VK_OEM_3);
    EXPECT_EQ(g_console.visible, 0);
    Press(VK_OEM_8);
    EXPECT_EQ(g_console.visible, 1);
    EXPECT_EQ(g_window.keys[VK_OEM_3], 0);  // both entries are cleared
    EXPECT_EQ(Input(), "");                 // and the toggle types nothing
    Press(VK_OEM_8);
    EXPECT_EQ(g_console.visible, 0);
    g_window.layoutIsNotUK = 1;
    Press(VK_OEM_8);
    EXPECT_EQ(g_console.visible, 0);
    g_window.keys[VK_OEM_8] = 0;
    Press(VK_OEM_3);
    EXPECT_EQ(g_console.visible, 1);
    EXPECT_EQ(Input(), "");
    // 0xDF types a space on other boards.
    Press(VK_OEM_8);
    EXPECT_EQ(Input(), " ");
}

TEST_F(ConsoleKeysTest, KeysTypeThroughTheTablesWithAndWithoutShift) {
    Type("abc xyz 0123456789");
    EXPECT_EQ(Input(), "abc xyz 0123456789");
    g_console.inputLine[0] = 0;
    static const int kShifted[] = {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9', VK_OEM_1,
                                   VK_OEM_PLUS, VK_OEM_COMMA, VK_OEM_MINUS, VK_OEM_PERIOD, VK_OEM_2,
                                   VK_OEM_3, VK_OEM_4, VK_OEM_5, VK_OEM_6, VK_OEM_7};
    for (int vk : kShifted) {
        g_window.keys[VK_SHIFT] = 1;
        Press(vk);
    }
    // Shift+3 is the pound sign of code page 1252.
    EXPECT_EQ(Input(), ")!\"\xA3$%^&*(:+<_>?@{|}~");
    g_console.inputLine[0] = 0;
    g_window.keys[VK_SHIFT] = 0;
    for (int vk : kShifted) {
        Press(vk);
    }
    EXPECT_EQ(Input(), "0123456789;=,-./'[\\]#");
}

TEST_F(ConsoleKeysTest, HeldKeysTypeInCodeOrderAndOthersStayForTheScenes) {
    g_window.keys['B'] = 1;
    g_window.keys['A'] = 1;
    g_window.keys[VK_LEFT] = 1;
    g_window.keys[VK_NUMPAD1] = 1;
    g_window.keys[VK_OEM_102] = 1;
    ConsoleKeys();
    EXPECT_EQ(Input(), "ab");
    EXPECT_EQ(g_window.keys['A'], 0);
    EXPECT_EQ(g_window.keys[VK_LEFT], 1);
    EXPECT_EQ(g_window.keys[VK_NUMPAD1], 1);
    EXPECT_EQ(g_window.keys[VK_OEM_102], 1);
    // Auto-repeat sets the key again: each frame step types it once more; a key nobody sets
    // again types once.
    Press('A');
    ConsoleKeys();
    EXPECT_EQ(Input(), "aba");
    // A closed console leaves every key to the scenes.
    g_console.visible = 0;
    Press('A');
    Press(VK_RETURN);
    EXPECT_EQ(Input(), "aba");
    EXPECT_EQ(g_window.keys['A'], 1);
    EXPECT_EQ(g_window.keys[VK_RETURN], 1);
}

TEST_F(ConsoleKeysTest, EnterLogsAndRunsTheLineAndUpBringsItBack) {
    Press(VK_RETURN);  // on an empty line Enter does nothing and stays for the scenes
    EXPECT_EQ(g_window.keys[VK_RETURN], 1);
    g_window.keys[VK_RETURN] = 0;
    Type("highscore 777");
    Press(VK_RETURN);
    EXPECT_EQ(highScore, 777u);
    EXPECT_STREQ(g_console.lines[0], "highscore 777");
    EXPECT_EQ(Input(), "");
    EXPECT_EQ(g_window.keys[VK_RETURN], 0);
    Type("nonsense");
    Press(VK_F3);
    EXPECT_EQ(Input(), "highscore 777");  // replaces what was typed
    g_console.inputLine[0] = 0;
    Press(VK_UP);
    EXPECT_EQ(Input(), "highscore 777");
    EXPECT_EQ(g_window.keys[VK_UP], 0);
    // An unknown command answers in the log after the echoed line.
    g_console.inputLine[0] = 0;
    Type("bogus");
    Press(VK_RETURN);
    EXPECT_STREQ(g_console.lines[1], "bogus");
    EXPECT_STREQ(g_console.lines[0], "Unknown Command \"bogus\"");
}

TEST_F(ConsoleKeysTest, PasteAppendsTheFirstLineOfTheClipboard) {
    Type("highscore ");
    g_clipboard = "45\r\nQUIT\n";
    g_window.keys[VK_CONTROL] = 1;
    Press('V');
    EXPECT_EQ(Input(), "highscore 45");  // no 'v' typed: the paste used the key
    EXPECT_EQ(g_window.keys[VK_CONTROL], 0);
    g_clipboard = "0";
    g_window.keys[VK_SHIFT] = 1;
    Press(VK_INSERT);
    EXPECT_EQ(Input(), "highscore 450");
    EXPECT_EQ(g_window.keys[VK_SHIFT], 0);
    EXPECT_EQ(g_window.keys[VK_INSERT], 0);
    // Ctrl with another key does not paste.
    g_window.keys[VK_CONTROL] = 1;
    Press('C');
    EXPECT_EQ(Input(), "highscore 450c");
}

}  // namespace
