// Where a mesh draw puts a mesh: translated, turned about y, then x, then z,
// then scaled. GL's feedback mode hands back the corners it would draw.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "draw_test_util.h"

namespace {

class MeshPlacementTest : public ::testing::Test {
protected:
    static void TearDownTestSuite() { drawtest::CloseWindow(); }
    void SetUp() override { ASSERT_TRUE(drawtest::OpenWindow(320, 240)); }
};

// The corners one triangle lands on through DrawMesh, with a projection that maps eye
// coordinates one to one onto the window (z from -1000 to 1000 onto depth 1 to 0).
std::vector<float> Placed(const float corners[3][3], const float place[3], const float turn[3], float scale) {
    std::vector<float> vertices;
    for (int k = 0; k < 3; k++) {
        const float vertex[8] = {corners[k][0], corners[k][1], corners[k][2], 0, 0, 1, 0, 0};
        vertices.insert(vertices.end(), vertex, vertex + 8);
    }
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    glPushAttrib(GL_ENABLE_BIT | GL_TRANSFORM_BIT);  // culling, and the matrix mode
    glDisable(GL_CULL_FACE);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(0, viewport[2], 0, viewport[3], -1000, 1000);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    std::vector<GLfloat> feedback(64);
    glFeedbackBuffer(static_cast<GLsizei>(feedback.size()), GL_3D, feedback.data());
    glRenderMode(GL_FEEDBACK);
    unsigned int polys = g_window.polyCount;
    g_window.DrawMesh(vertices.data(), 1, place[0], place[1], place[2], turn[0], turn[1], turn[2], scale, scale,
                      scale);
    g_window.polyCount = polys;
    GLint values = glRenderMode(GL_RENDER);
    glPopMatrix();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopAttrib();
    std::vector<float> out;
    if (values == 11 && feedback[0] == GL_POLYGON_TOKEN && feedback[1] == 3) {
        for (int k = 0; k < 3; k++) {
            out.push_back(feedback[2 + k * 3] - viewport[0]);
            out.push_back(feedback[3 + k * 3] - viewport[1]);
            out.push_back((0.5f - feedback[4 + k * 3]) * 2000.0f);
        }
    }
    return out;
}

// p turned by degrees about one axis (0 x, 1 y, 2 z), right-handed.
void Turn(float p[3], int axis, float degrees) {
    float r = degrees * 3.14159265f / 180.0f, c = cosf(r), s = sinf(r);
    int a = (axis + 1) % 3, b = (axis + 2) % 3;
    float pa = p[a], pb = p[b];
    p[a] = c * pa - s * pb;
    p[b] = s * pa + c * pb;
}

TEST_F(MeshPlacementTest, MeshesTurnAboutZThenXThenYAndMoveLast) {
    const float corners[3][3] = {{10, 0, 0}, {0, 20, 0}, {0, 0, 30}};
    const float place[3] = {160, 120, -50};
    const float turns[][3] = {{0, 0, 0}, {40, 0, 0}, {0, 40, 0}, {0, 0, 40}, {30, 50, 70}, {-80, 120, 15}};
    for (const auto& turn : turns) {
        std::vector<float> out = Placed(corners, place, turn, 2.0f);
        ASSERT_EQ(out.size(), 9u) << "the triangle was not drawn";
        for (int k = 0; k < 3; k++) {
            float p[3] = {corners[k][0] * 2, corners[k][1] * 2, corners[k][2] * 2};
            Turn(p, 2, turn[2]);
            Turn(p, 0, turn[0]);
            Turn(p, 1, turn[1]);
            for (int c = 0; c < 3; c++) {
                EXPECT_NEAR(out[k * 3 + c], place[c] + p[c], 0.05f)
                    << "turn " << turn[0] << ", " << turn[1] << ", " << turn[2] << "; corner " << k << ", axis " << c;
            }
        }
    }
}

}  // namespace
