// Platform services that need a display: the clipboard round trip through the
// X server, in the engine's Windows-1252 bytes.
#include <gtest/gtest.h>

#include "platform/sys_clipboard.h"
#include "platform/sys_window.h"

namespace {

TEST(PlatformClipboard, TextRoundTripsAsWindows1252) {
    ASSERT_EQ(Sys_InitVideo(), 1);
    const char* text =
        "LOCATION_LOAD \xA3"
        "5 \x95 Vantle2\x99";
    ASSERT_EQ(Sys_SetClipboardText(text), 1);
    char out[64];
    ASSERT_EQ(Sys_GetClipboardText(out, sizeof(out)), 1);
    EXPECT_STREQ(out, text);
    char small[6];
    ASSERT_EQ(Sys_GetClipboardText(small, sizeof(small)), 1);
    EXPECT_STREQ(small, "LOCAT");
    ASSERT_EQ(Sys_SetClipboardText("second"), 1);
    ASSERT_EQ(Sys_GetClipboardText(out, sizeof(out)), 1);
    EXPECT_STREQ(out, "second");
    Sys_ShutdownVideo();
}

}  // namespace
