// Resource lookup: the search order (loose file, then packages in listing
// order), the buffer rules of Open, and the package cache answering exactly
// as the plain walk from disk does, also after packages change on disk.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/sys_files.h"
#include "resources/package.h"
#include "resources/resource_manager.h"
#include "test_support.h"

namespace {

std::string Held(const ResourceManager& manager) {
    return std::string(reinterpret_cast<const char*>(manager.buffer), manager.bufferSize);
}

void SavePackage(const std::string& path, const std::vector<std::pair<std::string, std::string>>& entries) {
    std::unique_ptr<Package> package(new Package);
    for (const auto& e : entries) {
        ASSERT_EQ(package->AddData(e.first.c_str(), e.second.data(), e.second.size()), 1);
    }
    ASSERT_EQ(package->Save(path.c_str()), 1);
}

int CollectName(const char* name, void* context) {
    static_cast<std::vector<std::string>*>(context)->push_back(name);
    return 1;
}

std::vector<std::string> ListedPackages(const std::string& dir) {
    std::vector<std::string> names;
    Sys_ListFiles(dir.c_str(), ".vpk", CollectName, &names);
    return names;
}

struct LookupTest : ::testing::Test {
    std::string dir;
    ResourceManager manager;
    void SetUp() override {
        dir = test::ScratchDir(::testing::UnitTest::GetInstance()->current_test_info()->name());
        snprintf(manager.dataDirectory, sizeof(manager.dataDirectory), "%s", dir.c_str());
    }
};

}  // namespace

TEST_F(LookupTest, LooseFileWinsOverEveryPackage) {
    SavePackage(dir + "/a.vpk", {{"levels\\01.vlc", "from package"}});
    ASSERT_TRUE(Sys_MakeDirectory((dir + "/levels").c_str()));
    ASSERT_TRUE(test::WriteText(dir + "/levels/01.vlc", "loose"));
    ASSERT_NE(manager.Open("levels\\01.vlc"), nullptr);
    EXPECT_EQ(Held(manager), "loose");
}

TEST_F(LookupTest, PackageNamesFoldAsciiCaseOnly) {
    SavePackage(dir + "/a.vpk", {{"levels\\01.vlc", "level"}, {"caf\xe9.tga", "accent"}});
    ASSERT_NE(manager.Open("LEVELS\\01.VLC"), nullptr);
    EXPECT_EQ(Held(manager), "level");
    EXPECT_EQ(manager.Open("CAF\xc9.TGA"), nullptr);  // no folding outside A-Z
    EXPECT_NE(manager.Open("CAF\xe9.TGA"), nullptr);
}

TEST_F(LookupTest, FirstListedPackageSuppliesASharedName) {
    for (const char* name : {"p1.vpk", "p2.VPK", "p3.vpk"}) {
        SavePackage(dir + "/" + name, {{"shared.txt", name}, {std::string("only-") + name, "x"}});
    }
    ASSERT_TRUE(test::WriteText(dir + "/notes.txt", "not a package"));
    std::vector<std::string> listed = ListedPackages(dir);
    ASSERT_EQ(listed.size(), 3u);
    for (int cached = 1; cached >= 0; cached--) {
        manager.cachePackages = cached;
        ASSERT_NE(manager.Open("shared.txt"), nullptr);
        EXPECT_EQ(Held(manager), listed[0]);
        ASSERT_NE(manager.Open("only-p2.VPK"), nullptr);
    }
}

// The installed game's order: the player's loose file, the installed loose file, the player's
// package, the installed package. Each row removes the winner of the row before.
TEST_F(LookupTest, PlayerDataComesBeforeInstalledDataLooseFilesFirst) {
    std::string installed = dir + "/installed";
    snprintf(manager.baseDirectory, sizeof(manager.baseDirectory), "%s", installed.c_str());
    ASSERT_TRUE(Sys_MakeDirectory((installed + "/textures").c_str()));
    ASSERT_TRUE(Sys_MakeDirectory((dir + "/textures").c_str()));
    SavePackage(dir + "/player.vpk", {{"textures\\t.tga", "player package"}});
    SavePackage(installed + "/base.vpk", {{"textures\\t.tga", "installed package"}, {"only.tga", "x"}});
    ASSERT_TRUE(test::WriteText(dir + "/textures/t.tga", "player loose"));
    ASSERT_TRUE(test::WriteText(installed + "/textures/t.tga", "installed loose"));
    const char* const winners[][2] = {{"player loose", "/textures/t.tga"},
                                      {"installed loose", "/installed/textures/t.tga"},
                                      {"player package", "/player.vpk"},
                                      {"installed package", nullptr}};
    for (const auto& row : winners) {
        ASSERT_NE(manager.Open("textures\\t.tga"), nullptr) << row[0];
        EXPECT_EQ(Held(manager), row[0]);
        if (row[1]) {
            ASSERT_EQ(std::filesystem::remove(dir + row[1]), true);
        }
    }
    EXPECT_NE(manager.Open("only.tga"), nullptr);
}

TEST_F(LookupTest, BufferRulesOfOpen) {
    SavePackage(dir + "/a.vpk", {{"empty", ""}, {"text", "hello"}});
    unsigned char* first = manager.Open("text");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(manager.bufferSize, 5u);
    // A failed Open keeps what was held.
    EXPECT_EQ(manager.Open("missing"), nullptr);
    EXPECT_EQ(manager.buffer, first);
    EXPECT_EQ(Held(manager), "hello");
    // A zero-length resource is found, with size 0.
    EXPECT_NE(manager.Open("empty"), nullptr);
    EXPECT_EQ(manager.bufferSize, 0u);
    manager.Release();
    EXPECT_EQ(manager.buffer, nullptr);
    EXPECT_EQ(manager.Open(nullptr), nullptr);
}

// A package of three names, one its own; kind 0 has a bad magic, kind 1 its last entry cut
// short, any other is intact.
static std::vector<unsigned char> PackageBytes(int kind, const std::string& tag) {
    std::unique_ptr<Package> package(new Package);
    package->AddData("shared.txt", tag.data(), tag.size());
    package->AddData(("own-" + tag).c_str(), "own", 3);
    package->AddData("tail.txt", "tail data", 9);
    std::vector<unsigned char> bytes(package->Size());
    package->Serialise(bytes.data());
    if (kind == 0) {
        bytes[0] = 'Q';
    } else if (kind == 1) {
        bytes.pop_back();
    }
    return bytes;
}

// The package cache answers as the plain walk from disk does, also after packages change
// between lookups: in place with the same size, through a rename, turned bad and good again.
TEST_F(LookupTest, CachedAndUncachedLookupsAgreeAsPackagesChange) {
    std::vector<std::string> names = {"shared.txt", "SHARED.TXT", "tail.txt", "missing", "loose.txt", ""};
    for (int kind = 0; kind < 3; kind++) {
        std::string tag = "k" + std::to_string(kind);
        std::vector<unsigned char> bytes = PackageBytes(kind, tag);
        ASSERT_TRUE(test::WriteFile(dir + "/" + tag + ".vpk", bytes.data(), bytes.size()));
        names.push_back("OWN-" + tag);
    }
    ASSERT_TRUE(test::WriteText(dir + "/loose.txt", "loose bytes"));
    ResourceManager plain;
    strcpy(plain.dataDirectory, manager.dataDirectory);
    plain.cachePackages = 0;
    struct Change {
        int kind, target;
        const char* tag;
        bool atomic;
    } changes[] = {{2, 0, "k0", true},  {2, 1, "k1", false}, {2, 2, "xx", true},
                   {2, 2, "yy", false}, {1, 2, "k2", false}, {2, 2, "k2", true}};
    for (int step = 0; step <= 6; step++) {
        if (step > 0) {
            const Change& c = changes[step - 1];
            std::string path = dir + "/k" + std::to_string(c.target) + ".vpk";
            std::vector<unsigned char> bytes = PackageBytes(c.kind, c.tag);
            ASSERT_TRUE(c.atomic ? Sys_WriteFileAtomic(path.c_str(), bytes.data(), bytes.size()) == 1
                                 : test::WriteFile(path, bytes.data(), bytes.size()));
            names.push_back(std::string("own-") + c.tag);
        }
        int found = 0;
        for (const std::string& name : names) {
            unsigned char* a = manager.Open(name.c_str());
            unsigned char* b = plain.Open(name.c_str());
            ASSERT_EQ(a != nullptr, b != nullptr) << "step " << step << " " << name;
            if (a) {
                found++;
                EXPECT_EQ(Held(manager), Held(plain)) << "step " << step << " " << name;
            }
        }
        EXPECT_GE(found, 4);  // the comparison is not between two empty answers
    }
}
