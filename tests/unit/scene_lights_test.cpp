// The location rig's choice of lights, without GL: range in three dimensions, list
// order, the eight-light limit, the linear fall-off and the light factor.
#include "render/scene_lights.h"

#include <gtest/gtest.h>

#include "resources/lightmap_set.h"

namespace {

Light MakeLight(float x, float range, float r = 1.0f, float g = 0.5f, float b = 0.25f) {
    Light light = {};
    light.enabled = 1;
    light.position[0] = x;
    light.colour[0] = r;
    light.colour[1] = g;
    light.colour[2] = b;
    light.range = range;
    return light;
}

TEST(SceneLightsTest, OnlyTheFirstEightInRangeAreChosenInListOrder) {
    Light lights[12];
    for (int i = 0; i < 12; i++) {
        // Every third light cannot reach the origin.
        lights[i] = MakeLight(10.0f * (i + 1), i % 3 == 1 ? 5.0f : 500.0f);
    }
    const float point[3] = {0, 0, 0};
    GlLightSetting out[kGlLightCount];
    ASSERT_EQ(ChooseLocationLights(lights, 12, point, 1.0f, out), 8);
    const float expectedX[8] = {10, 30, 40, 60, 70, 90, 100, 120};
    for (int i = 0; i < 8; i++) {
        EXPECT_EQ(out[i].position[0], expectedX[i]) << i;
        EXPECT_EQ(out[i].position[3], 1.0f);
    }
    // Without a point the first eight shine at full colour times the factor.
    ASSERT_EQ(ChooseLocationLights(lights, 12, nullptr, 0.6f, out), 8);
    EXPECT_FLOAT_EQ(out[1].diffuse[0], 0.6f);
    EXPECT_EQ(out[1].position[0], 20.0f);
}

TEST(SceneLightsTest, ColourFadesLinearlyToBlackAtTheRange) {
    Light lights[3] = {MakeLight(0, 100), MakeLight(50, 100), MakeLight(100, 100)};
    const float point[3] = {0, 0, 0};
    GlLightSetting out[kGlLightCount];
    ASSERT_EQ(ChooseLocationLights(lights, 3, point, 0.4f, out), 3);
    EXPECT_FLOAT_EQ(out[0].diffuse[0], 0.4f);
    EXPECT_FLOAT_EQ(out[0].diffuse[2], 0.1f);
    EXPECT_FLOAT_EQ(out[1].diffuse[0], 0.2f);
    EXPECT_FLOAT_EQ(out[1].diffuse[1], 0.1f);
    // Exactly at its range a light still takes a GL light, but gives black; just past it, none.
    EXPECT_FLOAT_EQ(out[2].diffuse[0], 0.0f);
    lights[2].range = 99.9f;
    EXPECT_EQ(ChooseLocationLights(lights, 3, point, 0.4f, out), 2);
    // The distance is measured in three dimensions: 5 units away, then just over.
    Light light = MakeLight(3, 5.0f);
    light.position[1] = 4;
    const float raised[3] = {0, 0, 1};
    EXPECT_EQ(ChooseLocationLights(&light, 1, point, 1.0f, out), 1);
    EXPECT_EQ(ChooseLocationLights(&light, 1, raised, 1.0f, out), 0);
}

}  // namespace
