// The replay text format: writing and reading back, byte-exact output, key
// names, defaults, and clean errors with line numbers for broken files.
#include "game/replay.h"

#include <gtest/gtest.h>

#include <string>

#include "app/random.h"

namespace {

std::string Write(const Replay& replay) {
    std::string text(replay.Size(), '\0');
    int n = replay.Serialise(&text[0], static_cast<unsigned int>(text.size()));
    EXPECT_GT(n, 0);
    text.resize(static_cast<size_t>(n));
    return text;
}

std::string ParseError(const std::string& text) {
    Replay replay;
    if (replay.Parse(text.data(), static_cast<unsigned int>(text.size())) != 0) {
        return "parsed";
    }
    return replay.error;
}

const char kHeader[] = "vantle2-replay 1\nticks 100\n";

}  // namespace

TEST(ReplayFormat, WritesTheDocumentedTextExactly) {
    Replay replay;
    replay.level = 2;
    replay.lives = 1;
    replay.score = 1350;
    replay.highScore = 4410;
    replay.randState = 3735928559u;
    replay.debug = 1;
    replay.length = 2310;
    replay.AddEvent(0, ReplayKeyDown, 0x26, 0, 0);
    replay.AddEvent(12, ReplayKeyDown, 0x20, 0, 0);
    replay.AddEvent(12, ReplayKeyUp, 'G', 0, 0);
    replay.AddEvent(40, ReplayJoystick, 0, 32767, 65535);
    replay.AddEvent(90, ReplayJoystickOff, 0, 0, 0);
    replay.AddEvent(91, ReplayKeyUp, 0xBA, 0, 0);
    EXPECT_EQ(Write(replay),
              "vantle2-replay 1\nlevel 2\nlives 1\nscore 1350\nhighscore 4410\nrand 3735928559\ndebug 1\n"
              "ticks 2310\n0 down UP\n12 down SPACE\n12 up G\n40 joy 32767 65535\n90 joy off\n91 up 0xBA\n");
}

TEST(ReplayFormat, HandEditedFilesMayCommentOmitDefaultsAndUseCrLf) {
    const std::string text =
        "# a jump on the spot\r\n\r\nvantle2-replay 1\r\n  ticks   60  # one second\r\n"
        "5\tdown SPACE\r\n6 up 0x20\r\n7 down 32\r\n8 up 7\r\n";
    Replay replay;
    ASSERT_GT(replay.Parse(text.data(), static_cast<unsigned int>(text.size())), 0) << replay.error;
    EXPECT_EQ(replay.level, 1);
    EXPECT_EQ(replay.lives, 3);
    EXPECT_EQ(replay.randState, 1u);
    ASSERT_EQ(replay.eventCount, 4);
    EXPECT_EQ(replay.events[1].key, 0x20);
    EXPECT_EQ(replay.events[2].key, 32);
    EXPECT_EQ(replay.events[3].key, '7');  // a lone digit names the digit key
}

TEST(ReplayFormat, BrokenFilesFailWithTheLineNumber) {
    std::string h = kHeader;
    struct {
        std::string text;
        const char* error;
    } cases[] = {
        {"", "line 0: empty file, not a replay"},
        {"vantle2-replay 2\n", "line 1: unsupported replay version '2'"},
        {"vantle2-replay 1\n", "missing \"ticks\" line"},
        {"vantle2-replay 1\nlevel 0\n", "line 2: levels are numbered from 1"},
        {"vantle2-replay 1\nscore 4294967296\n", "line 2: bad value for 'score'"},
        {"vantle2-replay 1\nlevel 2\nlevel 3\n", "line 3: field given twice: 'level'"},
        {"vantle2-replay 1\n5 down UP\n", "line 2: unknown field or event before \"ticks\""},
        {h + "5 down UP\n4 up UP\n", "line 4: tick goes backwards '4'"},
        {h + "100 down UP\n", "line 3: tick is not below the replay's length '100'"},
        {h + "5 down FOO\n", "line 3: unknown key 'FOO'"},
        {h + "5 down\n", "line 3: a key event takes one key:"},
        {h + "5 joy 1 65536\n", "line 3: joy takes"},
        {h + "5 down UP\nlevel 3\n", "line 4: bad tick or unknown field 'level'"},
        {h + "1 2 3 4 5 6 7 8 9\n", "line 3: too many words"},
        {h + std::string(300, 'a') + "\n", "line 3: line longer than 256 characters"},
        {h + std::string("5 down U\0P\n", 11), "line 3: unexpected NUL byte"},
    };
    for (const auto& c : cases) {
        std::string error = ParseError(c.text);
        EXPECT_NE(error.find(c.error), std::string::npos) << "got: " << error << "\nfor: " << c.text;
    }
}

// Replays carry the generator's state; recorded games repeat only with the classic sequence.
TEST(ReplayRandomState, TheClassicGeneratorFromSeedOne) {
    ResetRand();
    EXPECT_EQ(Rand(), 41);
    EXPECT_EQ(Rand(), 18467);
}
