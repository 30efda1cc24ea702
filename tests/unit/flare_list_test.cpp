// Flare files: the layout byte for byte, round trips, and refusal of bad lists.
#include "resources/flare_list.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "resources/resource_manager.h"
#include "test_support.h"

namespace {

typedef std::vector<unsigned char> Bytes;

Bytes Serialised(const FlareList& list) {
    Bytes bytes(list.Size());
    list.Serialise(bytes.data());
    return bytes;
}

void PutU32(Bytes& out, unsigned int v) {
    for (int i = 0; i < 4; i++) {
        out.push_back((v >> (8 * i)) & 0xFF);
    }
}

void PutFloat(Bytes& out, float f) {
    unsigned int bits;
    memcpy(&bits, &f, 4);
    PutU32(out, bits);
}

}  // namespace

TEST(FlareFile, ElementsRoundTripByteForByteThroughFileAndResourceManager) {
    // An element laid out by hand, every field distinct.
    Bytes record(80, 0);
    memcpy(record.data(), "flare\\ring.tga", 14);
    Bytes fields;
    PutFloat(fields, 0.75f);
    PutFloat(fields, 32.5f);
    PutFloat(fields, 0.25f);
    PutFloat(fields, 0.9f);
    PutU32(fields, 0xDEADBEEF);
    PutU32(fields, 0x01020304);
    memcpy(record.data() + 52, fields.data(), fields.size());
    record[76] = 1;
    record[77] = 0;
    record[78] = 1;

    Bytes file = {'V', 'F', 'L', 'R'};
    PutU32(file, 24 + 2 * 80);
    PutFloat(file, 1.5f);
    PutFloat(file, -2.0f);
    PutFloat(file, 3.25f);
    PutU32(file, 2);
    file.insert(file.end(), record.begin(), record.end());
    record[0] = 'g';
    file.insert(file.end(), record.begin(), record.end());

    FlareList list;
    ASSERT_EQ(list.Parse(file.data(), file.size()), 1);
    ASSERT_EQ(list.count, 2u);
    EXPECT_STREQ(list.elements[0]->name, "flare\\ring.tga");
    EXPECT_EQ(list.elements[0]->halfSize, 32.5f);
    EXPECT_EQ(list.elements[0]->unused[0], 0xDEADBEEFu);
    EXPECT_EQ(list.elements[1]->name[0], 'g');
    EXPECT_EQ(list.elements[0]->spins, 1);
    EXPECT_EQ(list.elements[0]->distanceFade, 1);
    EXPECT_EQ(Serialised(list), file);

    std::string dir = test::ScratchDir("flare_file");
    ASSERT_EQ(list.Save((dir + "/test.vfl").c_str()), 1);
    EXPECT_EQ(test::ReadFile(dir + "/test.vfl"), file);
    ResourceManager resources;
    snprintf(resources.dataDirectory, sizeof(resources.dataDirectory), "%s", dir.c_str());
    FlareList loaded;
    ASSERT_EQ(loaded.Load(&resources, "TEST.VFL") + loaded.Load(&resources, "test.vfl"), 1);
    EXPECT_EQ(Serialised(loaded), file);
    EXPECT_EQ(loaded.Load(nullptr, "test.vfl"), 0);
}

TEST(FlareFile, BadListsAreRefusedAndLeaveTheListEmpty) {
    FlareList list;
    FlareElement element = {};
    strcpy(element.name, "a.tga");
    for (int i = 0; i < 100; i++) {
        ASSERT_EQ(list.Add(element), i);
    }
    EXPECT_EQ(list.Add(element), -1);
    Bytes full = Serialised(list);
    FlareList back;
    ASSERT_EQ(back.Parse(full.data(), full.size()), 1);
    EXPECT_EQ(back.count, 100u);

    Bytes tooMany = full;
    tooMany[20] = 101;
    tooMany.insert(tooMany.end(), 80, 0);
    Bytes cut(full.begin(), full.end() - 1);
    Bytes magic = full;
    magic[3] = 'X';
    for (const Bytes& bad : {tooMany, cut, magic, Bytes(full.begin(), full.begin() + 23)}) {
        EXPECT_EQ(back.Parse(bad.data(), bad.size()), 0);
        EXPECT_EQ(back.count, 0u);
        EXPECT_EQ(back.elements[0], nullptr);
    }
}
