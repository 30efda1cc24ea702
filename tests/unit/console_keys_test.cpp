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
#include "platform/sys_events.h"
#include "platform/sys_keys.h"

namespace {

std::string g_clipboard;
int g_clipboardReads;

int FakeClipboard(char* out, int outSize) {
    g_clipboardReads++;
    if (g_clipboard.empty()) {
        out[0] = 0;
        return 0;
    }
    snprintf(out, static_cast<size_t>(outSize), "%s", g_clipboard.c_str());
    return 1;
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
        g_clipboardReads = 0;
        highScore = 0;
        Sys_FlushMessages();
    }
    void TearDown() override {
        g_console.visible = 0;
        g_console.Clear();
        memset(g_window.keys, 0, sizeof(g_window.keys));
        Sys_FlushMessages();
    }

    // One key pressed and the frame step that follows.
    static void Press(int vk) {
        g_window.keys[vk] = 1;
        ConsoleKeys();
    }
    // Presses the keys that type text on a United Kingdom board, holding Shift for capitals.
    static void Type(const char* text) {
        for (const char* c = text; *c; c++) {
            int vk = *c;
            bool shift = false;
            if (*c >= 'a' && *c <= 'z') {
                vk = *c - 'a' + 'A';
            } else if (*c >= 'A' && *c <= 'Z') {
                shift = true;
            } else if (*c == '_') {
                vk = VK_OEM_MINUS;
                shift = true;
            } else if (*c == '.') {
                vk = VK_OEM_PERIOD;
            }
            g_window.keys[VK_SHIFT] = shift ? 1 : 0;
            Press(vk);
        }
        g_window.keys[VK_SHIFT] = 0;
    }
    static std::string Input() { return g_console.inputLine; }
};

TEST_F(ConsoleKeysTest, TheToggleKeyIsTheOneLeftOfOneOnEitherLayout) {
    g_console.visible = 0;
    // United Kingdom board: 0xDF opens; 0xC0 is an ordinary key there and does nothing while closed.
    Press(VK_OEM_3);
    EXPECT_EQ(g_console.visible, 0);
    Press(VK_OEM_8);
    EXPECT_EQ(g_console.visible, 1);
    EXPECT_EQ(g_window.keys[VK_OEM_8], 0);
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
    Press(VK_OEM_3);
    EXPECT_EQ(g_console.visible, 0);
}

TEST_F(ConsoleKeysTest, KeysTypeThroughTheTablesWithAndWithoutShift) {
    Type("abc xyz 0123456789");
    EXPECT_EQ(Input(), "abc xyz 0123456789");
    g_console.inputLine[0] = 0;

    g_window.keys[VK_SHIFT] = 1;
    for (int vk = '0'; vk <= '9'; vk++) {
        Press(vk);
    }
    EXPECT_EQ(Input(), ")!\"\xA3$%^&*(");  // Shift+3 is the pound sign of code page 1252
    g_console.inputLine[0] = 0;

    static const int kPunctuation[] = {VK_OEM_1,      VK_OEM_PLUS, VK_OEM_COMMA, VK_OEM_MINUS,
                                       VK_OEM_PERIOD, VK_OEM_2,    VK_OEM_3,     VK_OEM_4,
                                       VK_OEM_5,      VK_OEM_6,    VK_OEM_7};
    for (int vk : kPunctuation) {
        g_window.keys[VK_SHIFT] = 1;
        Press(vk);
    }
    EXPECT_EQ(Input(), ":+<_>?@{|}~");
    g_console.inputLine[0] = 0;
    g_window.keys[VK_SHIFT] = 0;
    for (int vk : kPunctuation) {
        Press(vk);
    }
    EXPECT_EQ(Input(), ";=,-./'[\\]#");
    // 0xDF is the toggle on a United Kingdom board; elsewhere it types a space.
    g_console.inputLine[0] = 0;
    g_window.layoutIsNotUK = 1;
    Press(VK_OEM_8);
    EXPECT_EQ(Input(), " ");
    EXPECT_EQ(g_console.visible, 1);
}

TEST_F(ConsoleKeysTest, OnlyTheListedKeysType) {
    int printable = 0;
    for (int vk = 0; vk < 256; vk++) {
        printable += g_consoleKeyTables.printable[vk];
    }
    EXPECT_EQ(printable, 1 + 10 + 26 + 6 + 1 + 5);  // space, digits, letters, the OEM keys
    // Keys held together type in the order of their codes; keys that type nothing stay set
    // for the scenes to see.
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
    // Auto-repeat sets the key again: each frame step types it once more.
    Press('A');
    Press('A');
    EXPECT_EQ(Input(), "abaa");
    // A held key that nobody sets again types once.
    ConsoleKeys();
    EXPECT_EQ(Input(), "abaa");
}

TEST_F(ConsoleKeysTest, AClosedConsoleLeavesTheKeysToTheScenes) {
    g_console.visible = 0;
    Press('A');
    Press(VK_RETURN);
    EXPECT_EQ(Input(), "");
    EXPECT_EQ(g_window.keys['A'], 1);
    EXPECT_EQ(g_window.keys[VK_RETURN], 1);
}

TEST_F(ConsoleKeysTest, EnterLogsAndRunsTheLineAndUpBringsItBack) {
    Type("HIGHSCORE 777");
    EXPECT_EQ(Input(), "HIGHSCORE 777");
    Press(VK_RETURN);
    EXPECT_EQ(highScore, 777u);
    EXPECT_STREQ(g_console.lines[0], "HIGHSCORE 777");
    EXPECT_EQ(Input(), "");
    EXPECT_EQ(g_window.keys[VK_RETURN], 0);

    Type("nonsense");
    Press(VK_F3);
    EXPECT_EQ(Input(), "HIGHSCORE 777");  // replaces what was typed
    EXPECT_EQ(g_window.keys[VK_F3], 0);
    g_console.inputLine[0] = 0;
    g_window.keys[VK_F3] = 1;
    Press(VK_UP);
    EXPECT_EQ(Input(), "HIGHSCORE 777");
    EXPECT_EQ(g_window.keys[VK_F3], 0);
    EXPECT_EQ(g_window.keys[VK_UP], 0);

    // An unknown command answers in the log after the echoed line.
    g_console.inputLine[0] = 0;
    Type("bogus");
    Press(VK_RETURN);
    EXPECT_STREQ(g_console.lines[1], "bogus");
    EXPECT_STREQ(g_console.lines[0], "Unknown Command \"bogus\"");
}

TEST_F(ConsoleKeysTest, EnterOnAnEmptyLineDoesNothing) {
    Press(VK_RETURN);
    EXPECT_EQ(g_window.keys[VK_RETURN], 1);
    EXPECT_STREQ(g_console.lines[0], "");
    EXPECT_STREQ(g_console.historyLine, "");
    Press(VK_BACK);
    EXPECT_EQ(g_window.keys[VK_BACK], 1);
}

TEST_F(ConsoleKeysTest, AFullLineTakesNothingUntilBackspaceMakesRoom) {
    memset(g_console.inputLine, 'x', 255);
    g_console.inputLine[255] = 0;
    Press('A');
    EXPECT_EQ(strlen(g_console.inputLine), 255u);
    EXPECT_EQ(g_window.keys['A'], 1);  // still pending
    Press(VK_BACK);
    // Backspace runs after typing in the same step, so the pending key lands one step later.
    EXPECT_EQ(strlen(g_console.inputLine), 254u);
    EXPECT_EQ(g_window.keys[VK_BACK], 0);
    ConsoleKeys();
    EXPECT_EQ(strlen(g_console.inputLine), 255u);
    EXPECT_EQ(g_console.inputLine[254], 'a');
    EXPECT_EQ(g_window.keys['A'], 0);
}

TEST_F(ConsoleKeysTest, PasteAppendsTheFirstLineOfTheClipboard) {
    Type("VID_FOV ");
    g_clipboard = "45\r\nQUIT\n";
    g_window.keys[VK_CONTROL] = 1;
    Press('V');
    EXPECT_EQ(Input(), "VID_FOV 45");  // no 'v' typed: the paste used the key
    EXPECT_EQ(g_window.keys[VK_CONTROL], 0);
    EXPECT_EQ(g_window.keys['V'], 0);

    g_clipboard = "0";
    g_window.keys[VK_SHIFT] = 1;
    Press(VK_INSERT);
    EXPECT_EQ(Input(), "VID_FOV 450");
    EXPECT_EQ(g_window.keys[VK_SHIFT], 0);
    EXPECT_EQ(g_window.keys[VK_INSERT], 0);

    // A line of 256 characters or more is not pasted at all.
    g_clipboard = std::string(256, 'z');
    g_window.keys[VK_CONTROL] = 1;
    Press('V');
    EXPECT_EQ(Input(), "VID_FOV 450");
    // A shorter one that does not fit is cut at the line's end.
    g_clipboard = std::string(255, 'z');
    g_window.keys[VK_CONTROL] = 1;
    Press('V');
    EXPECT_EQ(strlen(g_console.inputLine), 255u);
    EXPECT_EQ(g_console.inputLine[254], 'z');
    // Shift alone or Ctrl with another key does not paste.
    int reads = g_clipboardReads;
    g_console.inputLine[0] = 0;
    g_window.keys[VK_CONTROL] = 1;
    Press('C');
    EXPECT_EQ(g_clipboardReads, reads);
    EXPECT_EQ(Input(), "c");
}

TEST_F(ConsoleKeysTest, QuitFromTheLinePostsTheQuitMessage) {
    Type("QUIT");
    Press(VK_RETURN);
    SysMessage message;
    ASSERT_EQ(Sys_PeekMessage(&message), 1);
    EXPECT_EQ(message.message, static_cast<unsigned int>(WM_QUIT));
}

}  // namespace
