// Location files byte for byte: header, pieces, entities, lightmaps, block
// order and skipping, and refusal of inconsistent files.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "resources/location.h"
#include "resources/model_shapes.h"
#include "resources/resource_manager.h"
#include "test_support.h"

namespace {

typedef std::vector<unsigned char> Bytes;

Bytes Serialised(const Location& location) {
    Bytes out(location.Size());
    EXPECT_EQ(location.Serialise(out.data()), out.size());
    return out;
}

LocationPiece* AddPiece(Location& location, const char* name, const char* texture) {
    LocationPiece* piece = new LocationPiece;
    memset(piece->name, 0, sizeof(piece->name));
    memset(piece->textureName, 0, sizeof(piece->textureName));
    strcpy(piece->name, name);
    strcpy(piece->textureName, texture);
    location.pieces[location.pieceCount++] = piece;
    return piece;
}

void AddBox(Location& location, const char* texture) {
    float lo[3] = {0, 0, 0}, hi[3] = {10, 20, 30};
    MakeBoxModel(AddPiece(location, "box", texture)->model, lo, hi, 0.1f);
}

// Two boxes, a floor grid, three entities and lightmap coordinates for the floor with one
// page whose texels are a recognisable pattern.
std::unique_ptr<Location> SampleLocation() {
    std::unique_ptr<Location> location(new Location);
    strcpy(location->name, "Sample hall");
    AddBox(*location, "crate.tga");
    MakeGridModel(AddPiece(*location, "floor", "stone.tga")->model, -50, 0, -50, 25, 4, 0.05f);
    AddBox(*location, "wall.tga");
    location->pieces[2]->model.modelFlag = 0x50;
    const char* entities[3][2] = {{"player", ""}, {"light01", "color=1,0.5,0\r\ndist=200"}, {"key", nullptr}};
    for (auto& e : entities) {
        LocationEntity* entity = new LocationEntity;
        strcpy(entity->name, e[0]);
        entity->params = e[1] ? strdup(e[1]) : nullptr;
        location->entities[location->entityCount++] = entity;
    }
    const float position[3] = {1, 2, 3};
    memcpy(location->entities[0]->position, position, sizeof(position));
    location->entities[0]->rotation[1] = 90;
    LightmapSet& set = location->lightmaps;
    unsigned n = location->pieces[1]->model.frameTriangles * 3;
    set.coords[1] = static_cast<LightmapVertex*>(malloc(n * sizeof(LightmapVertex)));
    set.coordCounts[1] = n;
    for (unsigned i = 0; i < n; i++) {
        set.coords[1][i] = {i % 3, i / 256.0f, 1.0f - i / 256.0f};
    }
    unsigned char* page = set.EnsurePage(0);
    for (int i = 0; i < LightmapSet::kPageBytes; i++) {
        page[i] = static_cast<unsigned char>(i * 7 + 3);
    }
    set.areaCount = 17;
    return location;
}

unsigned U32At(const Bytes& b, size_t at) {
    return b[at] | b[at + 1] << 8 | b[at + 2] << 16 | static_cast<unsigned>(b[at + 3]) << 24;
}

// Offsets of the VLST, VLEN, VLLM and VEND tags as the writer lays them out.
struct Blocks {
    size_t vlst, vlen, vllm, vend;
    explicit Blocks(const Bytes& b) {
        vlst = 10 + (b[8] | b[9] << 8);
        vlen = vlst + U32At(b, vlst + 4);
        vllm = vlen + U32At(b, vlen + 4);
        vend = vllm + U32At(b, vllm + 4);
    }
};

TEST(LocationFormat, RoundTripIsByteForByteThroughFileAndResourceManager) {
    std::unique_ptr<Location> location = SampleLocation();
    Bytes bytes = Serialised(*location);
    EXPECT_EQ(U32At(bytes, 4), bytes.size());
    Blocks at(bytes);
    for (auto tag : {std::make_pair(at.vlst, "VLST"), std::make_pair(at.vlen, "VLEN"),
                     std::make_pair(at.vllm, "VLLM"), std::make_pair(at.vend, "VEND")}) {
        EXPECT_EQ(0, memcmp(&bytes[tag.first], tag.second, 4)) << tag.second;
    }
    EXPECT_EQ(at.vend + 8, bytes.size());

    std::string dir = test::ScratchDir("location_save");
    ASSERT_EQ(location->Save((dir + "/hall.vlc").c_str()), 1);
    EXPECT_EQ(test::ReadFile(dir + "/hall.vlc"), bytes);
    ResourceManager resources;
    strcpy(resources.dataDirectory, dir.c_str());
    std::unique_ptr<Location> again(new Location);
    ASSERT_EQ(again->Load(&resources, "hall.vlc"), 1);
    EXPECT_EQ(Serialised(*again), bytes);
    EXPECT_EQ(again->Parse(bytes.data(), bytes.size()), at.vend);
    // Pieces are built and ready to draw; an entity without parameters has an empty text.
    EXPECT_EQ(again->pieces[0]->model.frameTriangles, 12u);
    ASSERT_NE(again->entities[2]->params, nullptr);
    EXPECT_STREQ(again->entities[2]->params, "");
    EXPECT_EQ(again->Load(&resources, "nowhere.vlc"), 0);
}

TEST(LocationFormat, EntityPositionsTurnAxesAndRotationsDoNot) {
    Bytes bytes = Serialised(*SampleLocation());
    size_t position = Blocks(bytes).vlen + 10 + 2 + strlen("player");
    // Memory (1, 2, 3) is written as file (1, -3, 2); rotation (0, 90, 0) unchanged.
    const float written[6] = {1, -3, 2, 0, 90, 0};
    EXPECT_EQ(0, memcmp(&bytes[position], written, sizeof(written)));
    // And file (1, 2, 3) reads as memory (1, 3, -2).
    const float filePosition[3] = {1, 2, 3}, memory[3] = {1, 3, -2};
    memcpy(&bytes[position], filePosition, 12);
    std::unique_ptr<Location> again(new Location);
    ASSERT_NE(again->Parse(bytes.data(), bytes.size()), 0u);
    EXPECT_EQ(0, memcmp(again->entities[0]->position, memory, sizeof(memory)));
}

TEST(LocationFormat, LeadingDotBackslashIsRemovedFromTextureNames) {
    const char* names[][2] = {
        {".\\stone.tga", "stone.tga"}, {"stone.tga", "stone.tga"}, {".x", ".x"}, {".\\", ""}};
    for (auto& pair : names) {
        std::unique_ptr<Location> location(new Location);
        AddBox(*location, pair[0]);
        Bytes bytes = Serialised(*location);
        std::unique_ptr<Location> again(new Location);
        ASSERT_NE(again->Parse(bytes.data(), bytes.size()), 0u);
        EXPECT_STREQ(again->pieces[0]->textureName, pair[1]) << pair[0];
    }
}

// Inserts a block of the given tag and size field (with bodyBytes zero bytes) at offset.
Bytes WithBlock(Bytes bytes, size_t at, const char* tag, unsigned size, size_t bodyBytes) {
    Bytes block(8 + bodyBytes, 0);
    memcpy(block.data(), tag, 4);
    memcpy(block.data() + 4, &size, 4);
    bytes.insert(bytes.begin() + at, block.begin(), block.end());
    return bytes;
}

TEST(LocationFormat, UnknownBlocksAreSkippedByTheirSizeAndOrderIsFree) {
    Bytes bytes = Serialised(*SampleLocation());
    Blocks at(bytes);
    Bytes padded = WithBlock(bytes, at.vlst, "XTRA", 21, 13);
    std::unique_ptr<Location> again(new Location);
    ASSERT_EQ(again->Parse(padded.data(), padded.size()), padded.size() - 8);
    EXPECT_EQ(Serialised(*again), bytes);
    // Entities first, then pieces, lightmaps last.
    Bytes reordered(bytes.begin(), bytes.begin() + at.vlst);
    reordered.insert(reordered.end(), bytes.begin() + at.vlen, bytes.begin() + at.vllm);
    reordered.insert(reordered.end(), bytes.begin() + at.vlst, bytes.begin() + at.vlen);
    reordered.insert(reordered.end(), bytes.begin() + at.vllm, bytes.end());
    ASSERT_NE(again->Parse(reordered.data(), reordered.size()), 0u);
    EXPECT_EQ(Serialised(*again), bytes);
    // An unknown block too small to skip, or reaching past the end, is refused.
    Bytes tiny = WithBlock(bytes, at.vlst, "XTRA", 7, 0);
    EXPECT_EQ(again->Parse(tiny.data(), tiny.size()), 0u);
    Bytes huge = WithBlock(bytes, at.vlst, "XTRA", 0x7FFFFFFF, 0);
    EXPECT_EQ(again->Parse(huge.data(), huge.size()), 0u);
}

// A level without baked lighting, loaded where a lit one was before, comes up unlit: the
// coordinates the last one left belong to other pieces.
TEST(LocationFormat, AFileWithoutLightmapsLoadedAfterOneWithThemHasNone) {
    Bytes lit = Serialised(*SampleLocation());
    std::unique_ptr<Location> plain(new Location);
    AddBox(*plain, "crate.tga");
    Bytes bytes = Serialised(*plain);
    Blocks at(bytes);
    Bytes noBlock(bytes.begin(), bytes.begin() + at.vllm);
    noBlock.insert(noBlock.end(), bytes.begin() + at.vend, bytes.end());
    std::unique_ptr<Location> location(new Location);
    ASSERT_NE(location->Parse(lit.data(), lit.size()), 0u);
    ASSERT_NE(location->Parse(noBlock.data(), noBlock.size()), 0u);
    EXPECT_EQ(Serialised(*location), bytes);
}

TEST(LocationFormat, InconsistentFilesAreRefusedAndLeaveNothingBehind) {
    Bytes bytes = Serialised(*SampleLocation());
    Blocks at(bytes);
    std::unique_ptr<Location> again(new Location);
    auto refused = [&](const Bytes& b, const char* what) {
        ASSERT_NE(again->Parse(bytes.data(), bytes.size()), 0u);
        EXPECT_EQ(again->Parse(b.data(), b.size()), 0u) << what;
        EXPECT_EQ(again->pieceCount, 0) << what;
        EXPECT_EQ(again->entityCount, 0) << what;
        EXPECT_EQ(again->lightmaps.pageCount, 0u) << what;
        EXPECT_EQ(again->lightmaps.coords[1], nullptr) << what;
    };
    struct Patch {
        size_t at;
        std::vector<unsigned char> with;
        const char* what;
    } patches[] = {
        {at.vlst + 8, {0x01, 0x02}, "513 pieces"},
        {at.vlen + 8, {0x00, 0x03}, "768 entities"},
        {at.vlen + 10, {0xFF, 0xFF}, "entity name past the end"},
        {at.vllm + 18, {3}, "coordinates for a missing piece"},
        {at.vllm + 18, {600 & 0xFF, 600 >> 8}, "piece index 600"},
        {at.vllm + 20, {static_cast<unsigned char>(bytes[at.vllm + 20] - 3)}, "coordinate count"},
    };
    for (const Patch& p : patches) {
        Bytes bad = bytes;
        std::copy(p.with.begin(), p.with.end(), bad.begin() + p.at);
        refused(bad, p.what);
    }
    for (size_t cut = 4; cut < at.vllm + 40; cut += 7) {
        refused(Bytes(bytes.begin(), bytes.begin() + cut), "truncated");
    }
    refused(Bytes(bytes.begin(), bytes.end() - 8), "no VEND");
}

}  // namespace
