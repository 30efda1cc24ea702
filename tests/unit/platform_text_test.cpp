// The platform's text services seen from the engine: Windows-1252 to UTF-8 and
// back (the game's own bytes, the code page's holes, broken UTF-8), and message
// boxes on stderr.
#include <gtest/gtest.h>

#include <string>

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
    EXPECT_EQ(ToUtf8("\xA3\x80\xFF"), "\xC2\xA3\xE2\x82\xAC\xC3\xBF");
}

TEST(PlatformText, EveryDefinedByteSurvivesTheRoundTrip) {
    for (int byte = 1; byte < 256; byte++) {
        char text[2] = {static_cast<char>(byte), 0};
        std::string back = To1252(ToUtf8(text).c_str());
        EXPECT_EQ(back, IsHole(byte) ? std::string("?") : std::string(text)) << "byte " << byte;
    }
}

// A short buffer takes whole characters only and always keeps its terminator.
TEST(PlatformText, AShortBufferTakesWholeCharactersAndKeepsItsEnd) {
    char out[8];
    Sys_Utf8From1252("ab\x80" "c", out, 6);  // the euro sign is three bytes
    EXPECT_STREQ(out, "ab\xE2\x82\xAC");
    Sys_Utf8From1252("abc\x80", out, 6);
    EXPECT_STREQ(out, "abc");
}

TEST(PlatformText, BrokenUtf8BecomesOneQuestionMarkEach) {
    const char* const cases[][2] = {
        {"\xA3", "?"},                  // a continuation byte on its own
        {"\xC2", "?"},                  // cut off at the end
        {"\xE2\x82" "A", "?A"},         // cut off before another character
        {"\xC0\xA3", "?"},              // overlong form of '#'
        {"\xE0\x80\x8A", "?"},          // overlong line feed
        {"\xF0\x9F\x98\x80", "?"},      // outside the code page
        {"\xF4\x90\x80\x80", "?"},      // beyond U+10FFFF
        {"\xFF\xFE", "??"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(To1252(c[0]), c[1]) << c[1];
    }
}

TEST(PlatformMessageBox, EveryBoxIsAlsoWrittenToStderr) {
    static std::string shown;
    Sys_SetMessageBoxHook([](const char* text, const char* caption, unsigned int) { shown = std::string(caption) + text; });
    testing::internal::CaptureStderr();
    int result = Sys_MessageBox("halix_Renderer : Window Creation Error.", "ERROR", MB_OK | MB_ICONEXCLAMATION);
    std::string err = testing::internal::GetCapturedStderr();
    Sys_SetMessageBoxHook(nullptr);
    EXPECT_EQ(result, 1);
    EXPECT_EQ(err, "ERROR: halix_Renderer : Window Creation Error.\n");
    EXPECT_EQ(shown, "ERRORhalix_Renderer : Window Creation Error.");
}

}  // namespace
