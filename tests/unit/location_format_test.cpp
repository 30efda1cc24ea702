// Location files byte for byte: header, pieces, entities, lightmaps, block
// order and skipping, and refusal of inconsistent files.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "resources/location.h"
#include "resources/mesh.h"
#include "resources/model_shapes.h"
#include "resources/resource_manager.h"
#include "test_support.h"

namespace {

std::vector<unsigned char> Serialised(const Location& location) {
    std::vector<unsigned char> out(location.Size());
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

LocationEntity* AddEntity(Location& location, const char* name, const char* params) {
    LocationEntity* entity = new LocationEntity;
    strcpy(entity->name, name);
    if (params) {
        entity->params = strdup(params);
    }
    location.entities[location.entityCount++] = entity;
    return entity;
}

// A small location: two boxes, a floor grid, three entities and lightmap coordinates for
// the floor with one page whose texels are a recognisable pattern.
std::unique_ptr<Location> SampleLocation() {
    std::unique_ptr<Location> location(new Location);
    strcpy(location->name, "Sample hall");
    float lo[3] = {0, 0, 0}, hi[3] = {10, 20, 30};
    MakeBoxModel(AddPiece(*location, "crate", "crate.tga")->model, lo, hi, 0.1f);
    MakeGridModel(AddPiece(*location, "floor", "stone.tga")->model, -50, 0, -50, 25, 4, 0.05f);
    AddPiece(*location, "wall", "wall.tga")->model.modelFlag = 0x50;
    MakeBoxModel(location->pieces[2]->model, lo, hi, 1.0f);
    location->pieces[2]->model.modelFlag = 0x50;
    LocationEntity* start = AddEntity(*location, "player", "");
    start->position[0] = 1;
    start->position[1] = 2;
    start->position[2] = 3;
    start->rotation[1] = 90;
    AddEntity(*location, "light01", "color=1,0.5,0\r\ndist=200\r\nshadows=1");
    AddEntity(*location, "key", nullptr);
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

unsigned U32At(const std::vector<unsigned char>& b, size_t at) {
    return b[at] | b[at + 1] << 8 | b[at + 2] << 16 | static_cast<unsigned>(b[at + 3]) << 24;
}

TEST(LocationFormat, EmptyLocationKeepsItsName) {
    std::unique_ptr<Location> location(new Location);
    strcpy(location->name, "Nothing here");
    std::vector<unsigned char> bytes = Serialised(*location);
    // 10 + N, empty VLST and VLEN (10 each), empty VLLM (18), VEND (8).
    ASSERT_EQ(bytes.size(), 10u + 12 + 10 + 10 + 18 + 8);
    EXPECT_EQ(U32At(bytes, 4), bytes.size());
    std::unique_ptr<Location> again(new Location);
    EXPECT_EQ(again->Parse(bytes.data(), bytes.size()), bytes.size() - 8);
    EXPECT_STREQ(again->name, "Nothing here");
    EXPECT_EQ(again->pieceCount, 0);
    EXPECT_EQ(again->entityCount, 0);
}

TEST(LocationFormat, RoundTripIsByteForByte) {
    std::unique_ptr<Location> location = SampleLocation();
    std::vector<unsigned char> bytes = Serialised(*location);
    std::unique_ptr<Location> again(new Location);
    ASSERT_EQ(again->Parse(bytes.data(), bytes.size()), bytes.size() - 8);
    EXPECT_EQ(Serialised(*again), bytes);
    ASSERT_EQ(again->pieceCount, 3);
    EXPECT_STREQ(again->pieces[1]->textureName, "stone.tga");
    EXPECT_EQ(again->pieces[2]->model.modelFlag, 0x50);
    // Pieces are built and ready to draw.
    EXPECT_EQ(again->pieces[0]->model.frameTriangles, 12u);
    EXPECT_EQ(again->lightmaps.pageCount, 1u);
    EXPECT_EQ(again->lightmaps.areaCount, 17u);
    EXPECT_EQ(again->lightmaps.coords[1][5].page, 2u);
    // An entity without parameters has an empty, non-null text.
    ASSERT_NE(again->entities[2]->params, nullptr);
    EXPECT_STREQ(again->entities[2]->params, "");
    EXPECT_STREQ(again->entities[1]->params, "color=1,0.5,0\r\ndist=200\r\nshadows=1");
    // The block sizes and tags are where the layout puts them: VLST right after the name.
    size_t vlst = 10 + strlen("Sample hall");
    EXPECT_EQ(0, memcmp(&bytes[vlst], "VLST", 4));
    size_t vlen = vlst + U32At(bytes, vlst + 4);
    EXPECT_EQ(0, memcmp(&bytes[vlen], "VLEN", 4));
    size_t vllm = vlen + U32At(bytes, vlen + 4);
    EXPECT_EQ(0, memcmp(&bytes[vllm], "VLLM", 4));
    size_t vend = vllm + U32At(bytes, vllm + 4);
    EXPECT_EQ(0, memcmp(&bytes[vend], "VEND", 4));
    EXPECT_EQ(vend + 8, bytes.size());
}

TEST(LocationFormat, EntityPositionsTurnAxesAndRotationsDoNot) {
    std::unique_ptr<Location> location = SampleLocation();
    std::vector<unsigned char> bytes = Serialised(*location);
    size_t vlst = 10 + strlen("Sample hall");
    size_t vlen = vlst + U32At(bytes, vlst + 4);
    // First entity: name "player" then position floats.
    size_t position = vlen + 10 + 2 + 6;
    float file[6];
    memcpy(file, &bytes[position], sizeof(file));
    // Memory (1, 2, 3) is written as file (1, -3, 2); rotation (0, 90, 0) unchanged.
    EXPECT_EQ(file[0], 1.0f);
    EXPECT_EQ(file[1], -3.0f);
    EXPECT_EQ(file[2], 2.0f);
    EXPECT_EQ(file[4], 90.0f);
    // And file (1, 2, 3) reads as memory (1, 3, -2).
    float filePosition[3] = {1, 2, 3};
    memcpy(&bytes[position], filePosition, 12);
    std::unique_ptr<Location> again(new Location);
    ASSERT_NE(again->Parse(bytes.data(), bytes.size()), 0u);
    EXPECT_EQ(again->entities[0]->position[0], 1.0f);
    EXPECT_EQ(again->entities[0]->position[1], 3.0f);
    EXPECT_EQ(again->entities[0]->position[2], -2.0f);
    EXPECT_EQ(again->entities[0]->rotation[1], 90.0f);
}

TEST(LocationFormat, LeadingDotBackslashIsRemovedFromTextureNames) {
    const char* names[][2] = {
        {".\\stone.tga", "stone.tga"}, {"stone.tga", "stone.tga"}, {".x", ".x"}, {".\\", ""}};
    for (auto& pair : names) {
        std::unique_ptr<Location> location(new Location);
        float lo[3] = {0, 0, 0}, hi[3] = {1, 1, 1};
        MakeBoxModel(AddPiece(*location, "p", pair[0])->model, lo, hi, 1);
        std::vector<unsigned char> bytes = Serialised(*location);
        std::unique_ptr<Location> again(new Location);
        ASSERT_NE(again->Parse(bytes.data(), bytes.size()), 0u);
        EXPECT_STREQ(again->pieces[0]->textureName, pair[1]) << pair[0];
    }
}

// Inserts a block of the given tag and size field (with size - 8 zero bytes) at offset.
std::vector<unsigned char> WithBlock(std::vector<unsigned char> bytes, size_t at, const char* tag,
                                     unsigned size, size_t bodyBytes) {
    std::vector<unsigned char> block(8 + bodyBytes, 0);
    memcpy(block.data(), tag, 4);
    memcpy(block.data() + 4, &size, 4);
    bytes.insert(bytes.begin() + at, block.begin(), block.end());
    return bytes;
}

TEST(LocationFormat, UnknownBlocksAreSkippedByTheirSize) {
    std::unique_ptr<Location> location = SampleLocation();
    std::vector<unsigned char> bytes = Serialised(*location);
    size_t vlst = 10 + strlen("Sample hall");
    // Before every block: an unknown one with a body of 13 bytes.
    std::vector<unsigned char> padded = WithBlock(bytes, vlst, "XTRA", 21, 13);
    std::unique_ptr<Location> again(new Location);
    ASSERT_EQ(again->Parse(padded.data(), padded.size()), padded.size() - 8);
    EXPECT_EQ(Serialised(*again), bytes);
    // Blocks in another order: entities first, then pieces, lightmaps last.
    size_t vlen = vlst + U32At(bytes, vlst + 4);
    size_t vllm = vlen + U32At(bytes, vlen + 4);
    std::vector<unsigned char> reordered(bytes.begin(), bytes.begin() + vlst);
    reordered.insert(reordered.end(), bytes.begin() + vlen, bytes.begin() + vllm);
    reordered.insert(reordered.end(), bytes.begin() + vlst, bytes.begin() + vlen);
    reordered.insert(reordered.end(), bytes.begin() + vllm, bytes.end());
    ASSERT_NE(again->Parse(reordered.data(), reordered.size()), 0u);
    EXPECT_EQ(Serialised(*again), bytes);
    // An unknown block too small to skip, or reaching past the end, is refused.
    std::vector<unsigned char> tiny = WithBlock(bytes, vlst, "XTRA", 7, 0);
    EXPECT_EQ(again->Parse(tiny.data(), tiny.size()), 0u);
    std::vector<unsigned char> huge = WithBlock(bytes, vlst, "XTRA", 0x7FFFFFFF, 0);
    EXPECT_EQ(again->Parse(huge.data(), huge.size()), 0u);
}

TEST(LocationFormat, InconsistentFilesAreRefusedAndLeaveNothingBehind) {
    std::unique_ptr<Location> location = SampleLocation();
    std::vector<unsigned char> bytes = Serialised(*location);
    std::unique_ptr<Location> again(new Location);
    auto refused = [&](const std::vector<unsigned char>& b, const char* what) {
        ASSERT_NE(again->Parse(bytes.data(), bytes.size()), 0u);
        EXPECT_EQ(again->Parse(b.data(), b.size()), 0u) << what;
        EXPECT_EQ(again->pieceCount, 0) << what;
        EXPECT_EQ(again->entityCount, 0) << what;
        EXPECT_EQ(again->lightmaps.pageCount, 0u) << what;
        EXPECT_EQ(again->lightmaps.coords[1], nullptr) << what;
    };
    // Missing VEND.
    refused(std::vector<unsigned char>(bytes.begin(), bytes.end() - 8), "no VEND");
    // Wrong magic.
    std::vector<unsigned char> magic = bytes;
    magic[3] = 'X';
    EXPECT_EQ(again->Parse(magic.data(), magic.size()), 0u);
    size_t vlst = 10 + strlen("Sample hall");
    size_t vlen = vlst + U32At(bytes, vlst + 4);
    size_t vllm = vlen + U32At(bytes, vlen + 4);
    // Piece and entity counts over 512.
    std::vector<unsigned char> manyPieces = bytes;
    manyPieces[vlst + 8] = 0x01;
    manyPieces[vlst + 9] = 0x02;
    refused(manyPieces, "513 pieces");
    std::vector<unsigned char> manyEntities = bytes;
    manyEntities[vlen + 9] = 0x03;
    refused(manyEntities, "768 entities");
    // A name length that runs past the end of the file.
    std::vector<unsigned char> longName = bytes;
    longName[vlen + 10] = 0xFF;
    longName[vlen + 11] = 0xFF;
    refused(longName, "entity name past the end");
    // Lightmap coordinates for a piece that does not exist (index 3), or for index 600.
    std::vector<unsigned char> wrongPiece = bytes;
    wrongPiece[vllm + 18] = 3;
    refused(wrongPiece, "coordinates for a missing piece");
    wrongPiece[vllm + 18] = 600 & 0xFF;
    wrongPiece[vllm + 19] = 600 >> 8;
    refused(wrongPiece, "piece index 600");
    // A coordinate count that does not match the piece's vertices.
    std::vector<unsigned char> wrongCount = bytes;
    wrongCount[vllm + 20] -= 3;
    refused(wrongCount, "coordinate count");
    // Every truncation.
    for (size_t cut = 4; cut < vllm + 40; cut += 7) {
        std::vector<unsigned char> part(bytes.begin(), bytes.begin() + cut);
        refused(part, "truncated");
    }
}

TEST(LocationFormat, LongNamesAreCutToTheirFields) {
    std::unique_ptr<Location> location(new Location);
    std::vector<unsigned char> bytes = Serialised(*location);
    // Replace the empty name with 80 characters.
    std::vector<unsigned char> named(bytes.begin(), bytes.begin() + 8);
    named.push_back(80);
    named.push_back(0);
    named.insert(named.end(), 80, 'n');
    named.insert(named.end(), bytes.begin() + 10, bytes.end());
    std::unique_ptr<Location> again(new Location);
    ASSERT_NE(again->Parse(named.data(), named.size()), 0u);
    EXPECT_EQ(strlen(again->name), 49u);
}

TEST(LocationFormat, SaveAndLoadThroughTheResourceManager) {
    std::string dir = test::ScratchDir("location_save");
    std::unique_ptr<Location> location = SampleLocation();
    ASSERT_EQ(location->Save((dir + "/hall.vlc").c_str()), 1);
    EXPECT_EQ(test::ReadFile(dir + "/hall.vlc"), Serialised(*location));
    ResourceManager resources;
    strcpy(resources.dataDirectory, dir.c_str());
    std::unique_ptr<Location> loaded(new Location);
    ASSERT_EQ(loaded->Load(&resources, "hall.vlc"), 1);
    EXPECT_EQ(Serialised(*loaded), Serialised(*location));
    EXPECT_EQ(loaded->Load(&resources, "nowhere.vlc"), 0);
    EXPECT_EQ(loaded->Load(nullptr, "hall.vlc"), 0);
}

}  // namespace
