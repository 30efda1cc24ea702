// The package builder: the file layout byte for byte, editing rules, and
// refusal of damaged packages.
#include "resources/package.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "test_support.h"

namespace {

typedef std::vector<unsigned char> Bytes;

void PutU32(Bytes& out, unsigned int v) {
    for (int i = 0; i < 4; i++) {
        out.push_back((v >> (8 * i)) & 0xFF);
    }
}

void PutPadded(Bytes& out, const std::string& text, size_t width) {
    Bytes field(width, 0);
    memcpy(field.data(), text.data(), text.size());
    out.insert(out.end(), field.begin(), field.end());
}

struct Record {
    std::string name;
    unsigned char flag;
    std::string data;
};

// Lays a package out by hand, independently of the code under test.
Bytes HandMadePackage(const std::string& title, const std::string& author, unsigned int version,
                      const std::vector<Record>& records) {
    Bytes out = {'V', 'P', 'K', 'G'};
    PutPadded(out, title, 32);
    PutPadded(out, author, 32);
    PutU32(out, version);
    PutU32(out, records.size());
    for (const Record& r : records) {
        PutPadded(out, r.name, 128);
        out.push_back(r.flag);
        PutU32(out, r.data.size());
    }
    for (const Record& r : records) {
        out.insert(out.end(), r.data.begin(), r.data.end());
    }
    return out;
}

Bytes Saved(const Package& package) {
    Bytes bytes(package.Size());
    package.Serialise(bytes.data());
    return bytes;
}

std::string EntryData(const Package& package, int index) {
    return std::string(reinterpret_cast<const char*>(package.data[index]), package.entries[index].size);
}

}  // namespace

TEST(PackageFormat, SaveMatchesTheLayoutAndLoadSaveIsByteForByte) {
    std::vector<Record> records = {{"levels\\01.vlc", 0, "level one"},
                                   {"empty.bin", 7, ""},
                                   {"Textures\\A.tga", 0, std::string(300, 'x')}};
    Bytes file = HandMadePackage("Title", "Someone", 3, records);

    std::unique_ptr<Package> package(new Package);
    ASSERT_EQ(package->LoadFromMemory(file.data(), file.size()), 1);
    EXPECT_STREQ(package->name, "Title");
    EXPECT_STREQ(package->author, "Someone");
    EXPECT_EQ(package->version, 3u);
    ASSERT_EQ(package->count, 3u);
    EXPECT_EQ(package->entries[1].flag, 7);  // carried through, never interpreted
    EXPECT_EQ(EntryData(*package, 2), records[2].data);
    EXPECT_EQ(Saved(*package), file);

    std::string dir = test::ScratchDir("package_roundtrip");
    ASSERT_EQ(package->Save((dir + "/p.vpk").c_str()), 1);
    std::unique_ptr<Package> again(new Package);
    ASSERT_EQ(again->Load((dir + "/p.vpk").c_str()), 1);
    EXPECT_EQ(Saved(*again), file);
}

TEST(PackageLoading, WrongMagicAndDamagedDirectoriesLeaveThePackageAsItWas) {
    std::unique_ptr<Package> package(new Package);
    package->AddData("kept", "abc", 3);
    Bytes good = HandMadePackage("T", "A", 1, {{"a", 0, "1234"}, {"b", 0, "56"}});

    Bytes magic = good, unterminated = good, huge = good, oversize = good;
    magic[0] = 'X';
    memset(unterminated.data() + 76, 'n', 128);  // first name unterminated
    huge[72] = 0x01;
    huge[73] = 0x10;                // 4097 records
    oversize[76 + 129 + 3] = 0x80;  // first size past 2 GiB
    const std::vector<Bytes> bad = {magic,
                                    Bytes(good.begin(), good.begin() + 75),             // short header
                                    Bytes(good.begin(), good.begin() + 76 + 133 + 50),  // directory cut
                                    Bytes(good.begin(), good.end() - 1),                // data cut by one
                                    unterminated,
                                    huge,
                                    oversize};
    for (size_t i = 0; i < bad.size(); i++) {
        EXPECT_EQ(package->LoadFromMemory(bad[i].data(), bad[i].size()), 0) << "case " << i;
        ASSERT_EQ(package->count, 1u) << "case " << i;
        EXPECT_STREQ(package->entries[0].name, "kept");
    }
    EXPECT_EQ(package->Load("/nonexistent/dir/p.vpk"), 0);
    EXPECT_EQ(package->count, 1u);

    // A package of exactly 4096 records is accepted.
    std::vector<Record> full(4096, Record{"", 0, ""});
    for (int i = 0; i < 4096; i++) {
        full[i].name = "n" + std::to_string(i);
    }
    Bytes most = HandMadePackage("T", "A", 1, full);
    EXPECT_EQ(package->LoadFromMemory(most.data(), most.size()), 1);
    EXPECT_EQ(package->count, 4096u);
}
