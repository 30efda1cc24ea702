// The 3D set-ups in a real context: where the camera looks, what the frustum
// keeps (and keeps while frozen), the fog's far plane, and the GL lights the
// two rigs leave behind.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "draw_test_util.h"
#include "render/scene_lights.h"
#include "resources/lightmap_set.h"

using drawtest::Frame;

namespace {

class SceneViewTest : public drawtest::GlTest {
protected:
    static void TearDownTestSuite() { drawtest::CloseWindow(); }
    void SetUp() override {
        ASSERT_TRUE(drawtest::OpenWindow(320, 240));
        g_window.fov = 60.0f;
        g_window.frustumFlag = 1;
        g_window.fogEnabled = 0;
        g_window.lightFactor = 1.0f;
        g_window.clearColour[0] = g_window.clearColour[1] = g_window.clearColour[2] = 0.0f;
        glDisable(GL_TEXTURE_2D);
    }
    static void Look(float x, float y, float z, float pitch, float yaw) {
        const float camera[6] = {x, y, z, pitch, yaw, 0.0f};
        memcpy(g_window.renderCamera, camera, sizeof(camera));
        g_window.SetCamera();
    }
};

// A 40 x 40 square around (x, y, z), facing the direction (nx, 0, nz), as plain mesh vertices.
std::vector<float> Square(float x, float y, float z, float nx, float nz) {
    // Side vector to the right of someone looking along -n.
    float sx = nz, sz = -nx;
    float corners[4][3] = {{x - 20 * sx, y - 20, z - 20 * sz},
                           {x + 20 * sx, y - 20, z + 20 * sz},
                           {x + 20 * sx, y + 20, z + 20 * sz},
                           {x - 20 * sx, y + 20, z - 20 * sz}};
    const int order[6] = {0, 1, 2, 0, 2, 3};
    std::vector<float> vertices;
    for (int k : order) {
        const float vertex[8] = {corners[k][0], corners[k][1], corners[k][2], nx, 0, nz, 0, 0};
        vertices.insert(vertices.end(), vertex, vertex + 8);
    }
    return vertices;
}

TEST_F(SceneViewTest, YawTurnsTheCameraAboutTheVerticalAxis) {
    // Yaw 0 faces +z, yaw 90 faces +x, yaw 180 faces -z.
    struct Case {
        float yaw, x, z, nx, nz;
    } cases[] = {{0, 0, 100, 0, -1}, {90, 100, 0, -1, 0}, {180, 0, -100, 0, 1}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.yaw);
        g_window.BeginFrame();
        Look(0, 0, 0, 0, c.yaw);
        std::vector<float> square = Square(c.x, 0, c.z, c.nx, c.nz);
        glColor3f(1, 0, 0);
        g_window.DrawMesh(square.data(), 2, 0, 0, 0, 0, 0, 0, 1, 1, 1);
        Frame frame = drawtest::ReadFrame();
        EXPECT_EQ(frame.At(160, 120)[0], 255);
        EXPECT_EQ(frame.At(5, 120)[0], 0);
    }
}

TEST_F(SceneViewTest, PitchTiltsTheView) {
    // Pitch 90 looks straight down.
    g_window.BeginFrame();
    Look(0, 100, 0, 90, 0);
    std::vector<float> floor = {-20, 0, -20, 0, 1, 0, 0, 0, -20, 0, 20,  0, 1, 0, 0, 0,
                                20,  0, 20,  0, 1, 0, 0, 0, -20, 0, -20, 0, 1, 0, 0, 0,
                                20,  0, 20,  0, 1, 0, 0, 0, 20,  0, -20, 0, 1, 0, 0, 0};
    glColor3f(0, 1, 0);
    g_window.DrawMesh(floor.data(), 2, 0, 0, 0, 0, 0, 0, 1, 1, 1);
    EXPECT_EQ(drawtest::ReadFrame().At(160, 120)[1], 255);
}

TEST_F(SceneViewTest, TheFrustumKeepsWhatTheCameraSeesUnlessFrozen) {
    Look(0, 0, 0, 0, 180);  // looking down -z
    EXPECT_TRUE(g_window.SphereInFrustum(0, 0, -100, 1));
    EXPECT_FALSE(g_window.SphereInFrustum(0, 0, 100, 1));    // behind
    EXPECT_FALSE(g_window.SphereInFrustum(0, 0, -2600, 1));  // past the far plane at 2500
    EXPECT_FALSE(g_window.SphereInFrustum(0, 0, -5, 1));     // before the near plane at 10
    // 30 degrees up at fov 60: the top plane passes through (0, 100 tan 30, -100).
    float edge = 100.0f * tanf(30.0f * 3.14159265f / 180.0f);
    EXPECT_TRUE(g_window.SphereInFrustum(0, edge + 1.0f, -100, 2));
    EXPECT_FALSE(g_window.SphereInFrustum(0, edge + 3.0f, -100, 2));
    g_window.frustumFlag = 0;
    Look(0, 0, 0, 0, 0);  // turned round, planes kept
    EXPECT_TRUE(g_window.SphereInFrustum(0, 0, -100, 1));
    g_window.frustumFlag = 1;
    Look(0, 0, 0, 0, 0);
    EXPECT_FALSE(g_window.SphereInFrustum(0, 0, -100, 1));
}

// Fog pulls the camera's far plane in; the eye-space perspective of the title's 3D parts stays
// 60 degrees at 4:3 whatever the camera's fov.
TEST_F(SceneViewTest, FogPullsTheFarPlaneInAndTheEyeSpacePerspectiveIsFixed) {
    g_window.fogEnabled = 1;
    g_window.fogStart = 50.0f;
    g_window.fogEnd = 400.0f;
    Look(0, 0, 0, 0, 180);
    EXPECT_TRUE(glIsEnabled(GL_FOG));
    EXPECT_TRUE(g_window.SphereInFrustum(0, 0, -440, 1));
    EXPECT_FALSE(g_window.SphereInFrustum(0, 0, -460, 1));
    g_window.fogEnabled = 0;
    Look(0, 0, 0, 0, 180);
    EXPECT_FALSE(glIsEnabled(GL_FOG));
    EXPECT_TRUE(g_window.SphereInFrustum(0, 0, -460, 1));
    g_window.fov = 20.0f;
    g_window.SetPerspective();
    double projection[16];
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    EXPECT_NEAR(projection[5], 1.0 / tan(M_PI / 6), 1e-4);
    EXPECT_NEAR(projection[0], projection[5] * 0.75, 1e-4);
}

TEST_F(SceneViewTest, TheRigsSwitchOnTheirLights) {
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_LIGHT7);
    g_window.SetStudioLights(0.5f);
    EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
    for (int i = 0; i < 8; i++) {
        EXPECT_EQ(glIsEnabled(GL_LIGHT0 + i), i < 6) << i;
    }
    // The location rig: the nearest eight, as points (w 1) where they stand, faded with distance.
    LightmapSet set;
    for (int i = 0; i < 10; i++) {
        set.AddLight(10.0f * i, 0, 0, 1.0f, 0.5f, 0.25f, 200.0f, 0);
    }
    g_window.lightFactor = 0.6f;
    const float point[3] = {0, 0, 0};
    g_window.SetLocationLights(&set, point);
    float diffuse[4], position[4];
    for (int i = 0; i < 8; i++) {
        EXPECT_TRUE(glIsEnabled(GL_LIGHT0 + i));
        glGetLightfv(GL_LIGHT0 + i, GL_DIFFUSE, diffuse);
        EXPECT_NEAR(diffuse[0], 0.6f * (1.0f - 10.0f * i / 200.0f), 1e-5) << i;
        glGetLightfv(GL_LIGHT0 + i, GL_POSITION, position);
        EXPECT_FLOAT_EQ(position[0], 10.0f * i);
        EXPECT_FLOAT_EQ(position[3], 1.0f);
    }
    LightmapSet dark;
    g_window.SetLocationLights(&dark, point);
    EXPECT_FALSE(glIsEnabled(GL_LIGHTING));
}

}  // namespace
