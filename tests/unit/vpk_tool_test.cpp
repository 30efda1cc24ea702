// The vpk tool's commands end to end on real files: create, list, add, remove,
// extract, and the errors that must leave packages untouched.
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "resources/package.h"
#include "test_support.h"
#include "vpk_commands.h"

namespace {

struct VpkRun {
    int status;
    std::string out;
    std::string err;
};

std::string Drain(FILE* file) {
    std::string text;
    rewind(file);
    char chunk[4096];
    size_t got;
    while ((got = fread(chunk, 1, sizeof(chunk), file)) > 0) {
        text.append(chunk, got);
    }
    fclose(file);
    return text;
}

VpkRun Vpk(std::vector<std::string> args) {
    args.insert(args.begin(), "vpk");
    std::vector<char*> argv;
    for (std::string& a : args) {
        argv.push_back(&a[0]);
    }
    FILE* out = tmpfile();
    FILE* err = tmpfile();
    VpkRun run;
    run.status = VpkMain(static_cast<int>(argv.size()), argv.data(), out, err);
    run.out = Drain(out);
    run.err = Drain(err);
    return run;
}

std::string Text(const std::vector<unsigned char>& bytes) {
    return std::string(bytes.begin(), bytes.end());
}

struct VpkTool : ::testing::Test {
    std::string dir;
    void SetUp() override {
        dir = test::ScratchDir(::testing::UnitTest::GetInstance()->current_test_info()->name());
        ASSERT_EQ(chdir(dir.c_str()), 0);
        ASSERT_EQ(system("mkdir -p src/levels"), 0);
        test::WriteText("src/levels/01.vlc", "level one");
        test::WriteText("src/logo.tga", "logo bytes");
        test::WriteText("extra.txt", "extra");
    }
    void TearDown() override { ASSERT_EQ(chdir(VANTLE_BINARY_DIR), 0); }
};

}  // namespace

TEST_F(VpkTool, CreateListAddRemoveExtract) {
    VpkRun run = Vpk({"create", "game.vpk", "--name", "Game Data", "--author", "Team", "src/levels/01.vlc",
                      "src/logo.tga=logo\\logo.tga"});
    ASSERT_EQ(run.status, 0) << run.err;

    std::unique_ptr<Package> package(new Package);
    ASSERT_EQ(package->Load("game.vpk"), 1);
    EXPECT_STREQ(package->name, "Game Data");
    EXPECT_STREQ(package->author, "Team");
    ASSERT_EQ(package->count, 2u);
    EXPECT_STREQ(package->entries[0].name, "src\\levels\\01.vlc");  // '/' became '\'
    EXPECT_STREQ(package->entries[1].name, "logo\\logo.tga");

    run = Vpk({"list", "game.vpk"});
    ASSERT_EQ(run.status, 0);
    EXPECT_EQ(run.out,
              "name: Game Data\nauthor: Team\nversion: 1\nentries: 2\n"
              "         9  src\\levels\\01.vlc\n        10  logo\\logo.tga\n");

    ASSERT_EQ(Vpk({"add", "game.vpk", "extra.txt=notes\\extra.txt", "src/logo.tga=LOGO\\LOGO.TGA"}).status,
              0);
    ASSERT_EQ(package->Load("game.vpk"), 1);
    ASSERT_EQ(package->count, 3u);
    EXPECT_STREQ(package->entries[1].name, "LOGO\\LOGO.TGA");  // replaced in its slot
    EXPECT_STREQ(package->entries[2].name, "notes\\extra.txt");

    ASSERT_EQ(Vpk({"remove", "game.vpk", "SRC\\LEVELS\\01.VLC"}).status, 0);
    ASSERT_EQ(package->Load("game.vpk"), 1);
    ASSERT_EQ(package->count, 2u);
    EXPECT_STREQ(package->entries[0].name, "LOGO\\LOGO.TGA");

    run = Vpk({"extract", "game.vpk", "-C", "out"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(Text(test::ReadFile("out/LOGO/LOGO.TGA")), "logo bytes");
    EXPECT_EQ(Text(test::ReadFile("out/notes/extra.txt")), "extra");

    ASSERT_EQ(Vpk({"extract", "game.vpk", "notes\\EXTRA.txt", "-C", "one"}).status, 0);
    EXPECT_EQ(Text(test::ReadFile("one/notes/extra.txt")), "extra");
    EXPECT_TRUE(test::ReadFile("one/LOGO/LOGO.TGA").empty());
}

TEST_F(VpkTool, ErrorsSayWhyAndChangeNothing) {
    ASSERT_EQ(Vpk({"create", "p.vpk", "extra.txt"}).status, 0);
    std::vector<unsigned char> before = test::ReadFile("p.vpk");

    test::WriteText("bad.vpk",
                    "PKZIP and something longer than a header ........................................");
    std::vector<unsigned char> cut(before.begin(), before.end() - 1);
    test::WriteFile("cut.vpk", cut.data(), cut.size());
    struct Case {
        std::vector<std::string> args;
        const char* why;
    } cases[] = {{{"add", "p.vpk", "src/logo.tga", "no-such-file"}, "cannot read 'no-such-file'"},
                 {{"remove", "p.vpk", "extra.txt", "absent"}, "no entry 'absent'"},
                 {{"list", "bad.vpk"}, "bad magic"},
                 {{"extract", "cut.vpk", "-C", "x"}, "damaged"},
                 {{"list", "missing.vpk"}, "cannot read 'missing.vpk'"}};
    for (const Case& c : cases) {
        VpkRun run = Vpk(c.args);
        EXPECT_EQ(run.status, 1) << c.why;
        EXPECT_NE(run.err.find(c.why), std::string::npos) << run.err;
        EXPECT_EQ(test::ReadFile("p.vpk"), before) << c.why;
    }
    EXPECT_EQ(Vpk({"frobnicate"}).status, 2);
    EXPECT_EQ(Vpk({"create"}).status, 2);
    EXPECT_EQ(Vpk({"create", "q.vpk", "--name", std::string(32, 'n')}).status, 1);
    EXPECT_TRUE(test::ReadFile("q.vpk").empty());
}

TEST_F(VpkTool, FullPackageAndUnsafeNamesAreRefused) {
    std::unique_ptr<Package> package(new Package);
    for (int i = 0; i < 4096; i++) {
        package->AddData(("e" + std::to_string(i)).c_str(), "", 0);
    }
    package->Save("full.vpk");
    std::vector<unsigned char> before = test::ReadFile("full.vpk");
    VpkRun run = Vpk({"add", "full.vpk", "extra.txt"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("full"), std::string::npos);
    EXPECT_EQ(test::ReadFile("full.vpk"), before);
    EXPECT_EQ(Vpk({"add", "full.vpk", "extra.txt=E7"}).status, 0);  // replacing still works

    package->Clear();
    package->AddData("..\\escape.txt", "x", 1);
    package->Save("evil.vpk");
    run = Vpk({"extract", "evil.vpk", "-C", "inside"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(test::ReadFile("escape.txt").empty());
}
