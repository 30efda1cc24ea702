// The platform's text services seen from the engine: Windows-1252 to UTF-8 and
// back (the game's own bytes, the code page's holes, small buffers, broken
// UTF-8), the clipboard with no video system, and message boxes on stderr.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "platform/sys_clipboard.h"
#include "platform/sys_message_box.h"
#include "platform/sys_text.h"

namespace {

std::string ToUtf8(const char* text) {
    char out[256];
    Sys_Utf8From1252(text, out, sizeof(out));
    return out;
}

std::string To1252(const char* text) {
    char out[256];
    Sys_1252FromUtf8(text, out, sizeof(out));
    return out;
}

bool IsHole(int byte) {
    return byte == 0x81 || byte == 0x8D || byte == 0x8F || byte == 0x90 || byte == 0x9D;
}

TEST(PlatformText, TheGamesOwnBytesBecomeTheirUtf8) {
    EXPECT_EQ(ToUtf8("Vantle2\x99"), "Vantle2\xE2\x84\xA2");  // trade-mark sign of the title
    EXPECT_EQ(ToUtf8("\x95"), "\xE2\x80\xA2");                // the console cursor
    EXPECT_EQ(ToUtf8("\xA3"
                     "5"),
              "\xC2\xA3"
              "5");
    EXPECT_EQ(ToUtf8("\x80"), "\xE2\x82\xAC");
    EXPECT_EQ(ToUtf8("\xFF"), "\xC3\xBF");
    EXPECT_EQ(ToUtf8("plain ASCII"), "plain ASCII");
}

TEST(PlatformText, EveryDefinedByteSurvivesTheRoundTrip) {
    for (int byte = 1; byte < 256; byte++) {
        char text[2] = {static_cast<char>(byte), 0};
        std::string back = To1252(ToUtf8(text).c_str());
        EXPECT_EQ(back, IsHole(byte) ? std::string("?") : std::string(text)) << "byte " << byte;
    }
}

TEST(PlatformText, SmallBuffersKeepWholeCharactersAndTheTerminator) {
    char out[8];
    memset(out, '#', sizeof(out));
    Sys_Utf8From1252("ab\x99", out, 5);  // the 3-byte sign does not fit after "ab"
    EXPECT_STREQ(out, "ab");
    Sys_Utf8From1252("abc", out, 1);
    EXPECT_STREQ(out, "");
    memset(out, '#', sizeof(out));
    Sys_Utf8From1252("abc", out, 0);
    EXPECT_EQ(out[0], '#');
    Sys_1252FromUtf8("abcd", out, 3);
    EXPECT_STREQ(out, "ab");
    Sys_1252FromUtf8("\xE2\x84\xA2\xE2\x84\xA2", out, 2);
    EXPECT_STREQ(out, "\x99");
}

TEST(PlatformText, BrokenUtf8BecomesOneQuestionMarkEach) {
    EXPECT_EQ(To1252("\xE2\x84\xA2"), "\x99");
    EXPECT_EQ(To1252("\xA3"), "?");  // a continuation byte on its own
    EXPECT_EQ(To1252("\xC2"), "?");  // cut off at the end
    EXPECT_EQ(To1252("\xC2"
                     "A"),
              "?A");
    EXPECT_EQ(To1252("\xE2\x82"
                     "A"),
              "?A");
    EXPECT_EQ(To1252("\xC0\xA3"), "?");          // overlong form of '#'
    EXPECT_EQ(To1252("\xE0\x80\x8A"), "?");      // overlong line feed
    EXPECT_EQ(To1252("\xF0\x9F\x98\x80"), "?");  // outside the code page
    EXPECT_EQ(To1252("\xFF\xFE"), "??");
    EXPECT_EQ(To1252("\xF4\x90\x80\x80"), "?");  // beyond U+10FFFF
}

TEST(PlatformClipboard, WithoutVideoThereIsNoClipboard) {
    char out[16];
    memset(out, '#', sizeof(out));
    EXPECT_EQ(Sys_GetClipboardText(out, sizeof(out)), 0);
    EXPECT_STREQ(out, "");
    EXPECT_EQ(Sys_SetClipboardText("text"), 0);
}

struct Box {
    std::string text;
    std::string caption;
    unsigned int flags;
    int count;
};
Box g_box;

TEST(PlatformMessageBox, EveryBoxIsAlsoWrittenToStderr) {
    g_box = Box{"", "", 0, 0};
    Sys_SetMessageBoxHook([](const char* text, const char* caption, unsigned int flags) {
        g_box.text = text;
        g_box.caption = caption;
        g_box.flags = flags;
        g_box.count++;
    });
    testing::internal::CaptureStderr();
    int result =
        Sys_MessageBox("halix_Renderer : Window Creation Error.", "ERROR", MB_OK | MB_ICONEXCLAMATION);
    std::string err = testing::internal::GetCapturedStderr();
    Sys_SetMessageBoxHook(nullptr);
    EXPECT_EQ(result, 1);
    EXPECT_EQ(err, "ERROR: halix_Renderer : Window Creation Error.\n");
    EXPECT_EQ(g_box.count, 1);
    EXPECT_EQ(g_box.text, "halix_Renderer : Window Creation Error.");
    EXPECT_EQ(g_box.caption, "ERROR");
    EXPECT_EQ(g_box.flags, static_cast<unsigned int>(MB_ICONEXCLAMATION));
}

}  // namespace
