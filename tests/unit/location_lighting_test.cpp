// Lights read from a location's entities, and the two lighting set-up modes:
// keep (stored lightmaps stay, lights are read again) and rebuild.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <vector>

#include "resources/lightmap_builder.h"
#include "resources/location.h"
#include "resources/model_shapes.h"

namespace {

void AddLightEntity(Location& location, const char* name, const char* params, float x = 0, float y = 0,
                    float z = 0) {
    LocationEntity* entity = new LocationEntity;
    memset(entity->name, 0, sizeof(entity->name));
    strcpy(entity->name, name);
    entity->params = strdup(params);
    entity->position[0] = x;
    entity->position[1] = y;
    entity->position[2] = z;
    location.entities[location.entityCount++] = entity;
}

void AddGrid(Location& location, float x, float y, float z) {
    LocationPiece* piece = new LocationPiece;
    memset(piece->name, 0, sizeof(piece->name));
    memset(piece->textureName, 0, sizeof(piece->textureName));
    location.pieces[location.pieceCount++] = piece;
    MakeGridModel(piece->model, x, y, z, 10, 3, 0.1f);
}

std::vector<unsigned char> Block(const LightmapSet& set) {
    std::vector<unsigned char> bytes(set.Size());
    set.Serialise(bytes.data());
    return bytes;
}

void ExpectLight(const Light& light, float r, float g, float b, float range, unsigned flags) {
    EXPECT_EQ(light.enabled, 1);
    EXPECT_FLOAT_EQ(light.colour[0], r);
    EXPECT_FLOAT_EQ(light.colour[1], g);
    EXPECT_FLOAT_EQ(light.colour[2], b);
    EXPECT_FLOAT_EQ(light.range, range);
    EXPECT_EQ(light.flags, flags);
}

TEST(LocationLighting, LightEntitiesAreNamedLightInLowerCase) {
    Location location;
    AddLightEntity(location, "lightning", "", 1, 2, 3);
    AddLightEntity(location, "Light01", "");
    AddLightEntity(location, "ligh", "");
    AddLightEntity(location, "player", "color=0,0,0");
    AddLightEntity(location, "light", "dist=5");
    location.SetupLighting(1);
    ASSERT_EQ(location.lightmaps.lightCount, 2u);
    ExpectLight(location.lightmaps.lights[0], 1, 1, 1, 1, 0);
    const float position[3] = {1, 2, 3};
    EXPECT_EQ(0, memcmp(location.lightmaps.lights[0].position, position, sizeof(position)));
    ExpectLight(location.lightmaps.lights[1], 1, 1, 1, 5, 0);
}

TEST(LocationLighting, ParameterLinesSetColourRangeAndShadows) {
    Location location;
    AddLightEntity(location, "light1", "COLOR = 1,0.5,0\r\nDIST=200\r\nshadows=1");
    AddLightEntity(location, "light2", "color=0.2");
    AddLightEntity(location, "light3", "Shadows =7\r\ncolor=0.1,0.2\r\n");
    // Two spaces before "=" make an unknown key; a line without "=" is skipped; only
    // "\r\n" separates lines, so the second key here is part of the first value.
    AddLightEntity(location, "light4", "dist  =9\r\nshadows\r\ncolor=0.5,0.25,0.125,9\ndist=3");
    AddLightEntity(location, "light5", "shadows=0\r\ndist=abc");
    location.SetupLighting(1);
    ASSERT_EQ(location.lightmaps.lightCount, 5u);
    ExpectLight(location.lightmaps.lights[0], 1, 0.5f, 0, 200, 1);
    ExpectLight(location.lightmaps.lights[1], 0.2f, 1, 1, 1, 0);
    ExpectLight(location.lightmaps.lights[2], 0.1f, 0.2f, 1, 1, 1);
    ExpectLight(location.lightmaps.lights[3], 0.5f, 0.25f, 0.125f, 1, 0);
    ExpectLight(location.lightmaps.lights[4], 1, 1, 1, 0, 0);
}

TEST(LocationLighting, RebuildBakesWhatTheLightsGiveAndKeepModeLeavesItAlone) {
    std::unique_ptr<Location> location(new Location);
    AddGrid(*location, 0, 0, 0);
    AddGrid(*location, 5, 8, 5);
    AddLightEntity(*location, "light_a", "color=1,0.8,0.6\r\ndist=60\r\nshadows=1", 15, 20, 15);
    AddLightEntity(*location, "light_b", "color=0,0,1\r\ndist=30", 0, 4, 0);
    location->lightmaps.quality = 0.6f;
    location->SetupLighting(0);
    EXPECT_FLOAT_EQ(location->lightmaps.quality, 0.6f);
    ASSERT_EQ(location->lightmaps.lightCount, 2u);
    ASSERT_GT(location->lightmaps.pageCount, 0u);
    EXPECT_EQ(location->lightmaps.coordCounts[0], 18u * 3);

    // The same bake with the plain loop.
    std::unique_ptr<Location> plain(new Location);
    AddGrid(*plain, 0, 0, 0);
    AddGrid(*plain, 5, 8, 5);
    plain->lightmaps.quality = 0.6f;
    plain->lightmaps.AddLight(15, 20, 15, 1, 0.8f, 0.6f, 60, 1);
    plain->lightmaps.AddLight(0, 4, 0, 0, 0, 1, 30, 0);
    BuildLightmapsReference(*plain);
    std::vector<unsigned char> baked = Block(location->lightmaps);
    EXPECT_TRUE(baked == Block(plain->lightmaps));

    // Keep mode: pages and coordinates stay, the lights are the entities' again.
    location->lightmaps.lights[0].range = 1;
    location->lightmaps.AddLight(9, 9, 9, 1, 1, 1, 1, 0);
    location->entities[1]->params[6] = '1';  // "color=1,0,1"
    location->SetupLighting(1);
    EXPECT_TRUE(Block(location->lightmaps) == baked);
    ASSERT_EQ(location->lightmaps.lightCount, 2u);
    ExpectLight(location->lightmaps.lights[0], 1, 0.8f, 0.6f, 60, 1);
    ExpectLight(location->lightmaps.lights[1], 1, 0, 1, 30, 0);

    // A rebuild clears what was there before it bakes.
    location->entities[0]->name[0] = 'x';
    location->SetupLighting(0);
    EXPECT_EQ(location->lightmaps.lightCount, 1u);
    EXPECT_FALSE(Block(location->lightmaps) == baked);
}

}  // namespace
