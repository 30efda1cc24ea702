// How the program starts: its command line, and where the installed game puts
// each player's folder by the XDG rules.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/command_line.h"
#include "platform/sys_folders.h"

TEST(ProgramStart, CommandLineWordsBecomeConsoleLinesOrAreRefused) {
    const std::string longWord(250, 'x');
    struct Case {
        std::vector<const char*> words;
        int action;
        std::vector<std::string> lines;
    } cases[] = {
        {{}, CommandLineRun, {}},
        {{"--help"}, CommandLineHelp, {}},
        {{"--version"}, CommandLineVersion, {}},
        {{"+VID_SIZE", "1024,768", "+DEMO_PLAY", "/home/p/run.replay"},
         CommandLineRun,
         {"VID_SIZE 1024,768", "DEMO_PLAY /home/p/run.replay"}},
        {{"+QUIT"}, CommandLineRun, {"QUIT"}},
        {{"+LOCATION_LOAD", "a b", "c"}, CommandLineRun, {"LOCATION_LOAD a b c"}},
        {{"--help", "+QUIT"}, CommandLineBad, {}},
        {{"QUIT"}, CommandLineBad, {}},
        {{"-v"}, CommandLineBad, {}},
        {{"+"}, CommandLineBad, {}},
        {{"+VID_FOV", longWord.c_str(), "2"}, CommandLineBad, {}},
    };
    for (const Case& c : cases) {
        std::vector<const char*> argv = {"vantle2"};
        argv.insert(argv.end(), c.words.begin(), c.words.end());
        SCOPED_TRACE(argv.size() > 1 ? argv[1] : "(none)");
        StartCommands commands;
        EXPECT_EQ(ParseCommandLine(static_cast<int>(argv.size()), argv.data(), &commands), c.action);
        if (c.action == CommandLineRun) {
            ASSERT_EQ(commands.count, static_cast<int>(c.lines.size()));
            for (int i = 0; i < commands.count; i++) {
                EXPECT_EQ(commands.lines[i], c.lines[i]);
            }
        }
    }
    std::vector<const char*> many(StartCommands::kMaxLines + 2, "+CLS");
    StartCommands commands;
    EXPECT_EQ(ParseCommandLine(StartCommands::kMaxLines + 1, many.data(), &commands), CommandLineRun);
    EXPECT_EQ(ParseCommandLine(StartCommands::kMaxLines + 2, many.data(), &commands), CommandLineBad);
}

TEST(ProgramStart, PlayerFolderFollowsTheXdgRulesAndNeverARelativePath) {
    struct Case {
        const char* xdg;
        const char* home;
        const char* account;
        const char* folder;
    } cases[] = {
        {"/x/data", "/home/p", "/home/acct", "/x/data/vantle2"},
        {nullptr, "/home/p", "/home/acct", "/home/p/.local/share/vantle2"},
        {"", "/home/p", nullptr, "/home/p/.local/share/vantle2"},
        {"rel/data", "/home/p", nullptr, "/home/p/.local/share/vantle2"},
        {nullptr, nullptr, "/home/acct", "/home/acct/.local/share/vantle2"},
        {nullptr, "home/p", "/home/acct", "/home/acct/.local/share/vantle2"},
        {"rel", "", nullptr, ""},
        {nullptr, nullptr, nullptr, ""},
    };
    for (const Case& c : cases) {
        char out[kSysPathSize] = "stale";
        int found = Sys_PlayerFolderFor(c.xdg, c.home, c.account, out, sizeof(out));
        EXPECT_STREQ(out, c.folder) << (c.xdg ? c.xdg : "-") << " " << (c.home ? c.home : "-");
        EXPECT_EQ(found, c.folder[0] != 0);
    }
    char small[16];
    EXPECT_EQ(Sys_PlayerFolderFor("/a/very/long/data/home", nullptr, nullptr, small, sizeof(small)), 0);
    EXPECT_STREQ(small, "");
}
