// Shader programs in a real GL context under Xvfb: programs built from loose
// and packaged sources draw the colour their uniforms say, broken sources log
// the compiler's complaint and leave their slot empty, and the programs come
// back after the window is made again.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

#include "draw_test_util.h"
#include "resources/package.h"
#include "resources/shader_manager.h"

namespace {

const char* const kVertex = "void main() { gl_Position = gl_Vertex; }\n";
const char* const kTinted = "uniform vec4 tint;\nvoid main() { gl_FragColor = tint; }\n";
const char* const kGreen = "void main() { gl_FragColor = vec4(0.0, 1.0, 0.0, 1.0); }\n";
const char* const kBroken = "void main() { gl_FragColor = vec4(1.0) * missingFactor; }\n";
const char* const kNoMain = "vec4 helper() { return vec4(1.0); }\n";
const int kSize = 64;

// Fills the window with one quad (with the current program, or in white by the fixed
// pipeline) over black and expects (r, g, b) at the centre.
void ExpectQuad(int r, int g, int b) {
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_FOG);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glViewport(0, 0, kSize, kSize);
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glColor4f(1, 1, 1, 1);
    glRectf(-1, -1, 1, 1);
    unsigned char rgb[3] = {0, 0, 0};
    glReadPixels(kSize / 2, kSize / 2, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, rgb);
    EXPECT_TRUE(drawtest::Near(rgb, r, g, b, 2)) << int(rgb[0]) << " " << int(rgb[1]) << " " << int(rgb[2]);
}

int CurrentProgram() {
    GLint current = -1;
    glGetIntegerv(0x8B8D, &current);  // GL_CURRENT_PROGRAM
    return current;
}

class ShaderPrograms : public drawtest::GlTest {
protected:
    std::string data;

    void SetUp() override {
        data = drawtest::UseScratchData();
        std::filesystem::create_directories(data + "/shaders");
        ASSERT_TRUE(test::WriteText(data + "/shaders/flat.vs", kVertex));
        ASSERT_TRUE(test::WriteText(data + "/shaders/tint.fs", kTinted));
        ASSERT_TRUE(test::WriteText(data + "/shaders/broken.fs", kBroken));
        ASSERT_TRUE(test::WriteText(data + "/shaders/nomain.fs", kNoMain));
        ASSERT_EQ(g_window.Create("Shader test", kSize, kSize, 0), 1);
        ASSERT_EQ(g_window.shaders.supported, 1) << "Mesa offers ARB shader objects";
    }
    void TearDown() override {
        g_window.shaders.ReleaseAll();
        g_window.Destroy();
        GlTest::TearDown();
    }
};

}  // namespace

TEST_F(ShaderPrograms, ProgramFromLooseSourcesDrawsItsUniformColour) {
    ShaderManager& shaders = g_window.shaders;
    ASSERT_EQ(shaders.LoadProgram(0, "shaders\\flat.vs", "shaders\\tint.fs"), 1);
    ASSERT_EQ(shaders.SetUniform4f(0, "tint", 0.25f, 0.5f, 0.75f, 1.0f), 1);
    ExpectQuad(64, 128, 191);
    ASSERT_EQ(shaders.SetUniform4f(0, "tint", 1.0f, 0.0f, 0.5f, 1.0f), 1);
    ExpectQuad(255, 0, 128);

    shaders.UseNoProgram();
    ExpectQuad(255, 255, 255);
}

TEST_F(ShaderPrograms, PackagedFragmentSourceBuildsAloneWhenTheVertexSourceIsMissing) {
    std::unique_ptr<Package> package(new Package());
    ASSERT_EQ(package->AddData("shaders\\green.fs", kGreen, static_cast<unsigned>(strlen(kGreen))), 1);
    ASSERT_EQ(package->Save((data + "/shaders.vpk").c_str()), 1);
    ShaderManager& shaders = g_window.shaders;
    ASSERT_EQ(shaders.LoadProgram(3, "shaders\\absent.vs", "SHADERS\\GREEN.FS"), 1);
    EXPECT_GT(drawtest::ConsoleLines("Shader source \"shaders\\absent.vs\" not found"), 0);
    ASSERT_EQ(shaders.UseProgram(3), 1);
    ExpectQuad(0, 255, 0);
}

TEST_F(ShaderPrograms, BrokenSourcesLogTheirErrorAndLeaveTheSlotEmpty) {
    ShaderManager& shaders = g_window.shaders;
    ASSERT_EQ(shaders.LoadProgram(1, "shaders\\flat.vs", "shaders\\tint.fs"), 1);
    ASSERT_EQ(shaders.UseProgram(1), 1);
    EXPECT_NE(CurrentProgram(), 0);

    // Replacing the occupied slot first returns to the fixed pipeline.
    EXPECT_EQ(shaders.LoadProgram(1, "shaders\\flat.vs", "shaders\\broken.fs"), 0);
    EXPECT_EQ(CurrentProgram(), 0);
    EXPECT_EQ(shaders.UseProgram(1), 0);
    EXPECT_GT(drawtest::ConsoleLines("Fragment shader failed to compile:"), 0);
    EXPECT_GT(drawtest::ConsoleLines("missingFactor"), 0);
    EXPECT_GT(drawtest::ConsoleLines("Shader program failed to link:"), 0);
    ExpectQuad(255, 255, 255);

    g_console.Clear();
    EXPECT_EQ(shaders.LoadProgram(2, "shaders\\flat.vs", "shaders\\nomain.fs"), 0);
    EXPECT_EQ(shaders.UseProgram(2), 0);
    EXPECT_EQ(drawtest::ConsoleLines("failed to compile"), 0);
    EXPECT_GT(drawtest::ConsoleLines("Shader program failed to link:"), 0);

    EXPECT_EQ(shaders.LoadProgram(2, "shaders\\none.vs", "shaders\\none.fs"), 0);
    EXPECT_EQ(shaders.LoadProgram(8, "shaders\\flat.vs", "shaders\\tint.fs"), 0);
    EXPECT_EQ(shaders.LoadProgram(-1, "shaders\\flat.vs", "shaders\\tint.fs"), 0);
}

TEST_F(ShaderPrograms, ProgramsAreBuiltAgainAfterVidRestart) {
    ShaderManager& shaders = g_window.shaders;
    ASSERT_EQ(shaders.LoadProgram(0, "shaders\\flat.vs", "shaders\\tint.fs"), 1);
    ASSERT_EQ(shaders.LoadProgram(5, "shaders\\flat.vs", "shaders\\tint.fs"), 1);
    // Sources on disk change after loading: the rebuild uses the texts the programs kept.
    ASSERT_TRUE(test::WriteText(data + "/shaders/tint.fs", kBroken));
    ExecuteCommand("VID_RESTART");
    ASSERT_NE(g_window.renderContext, nullptr);
    ASSERT_EQ(shaders.SetUniform4f(5, "tint", 0.5f, 0.25f, 0.0f, 1.0f), 1);
    ExpectQuad(128, 64, 0);
    ASSERT_EQ(shaders.SetUniform4f(0, "tint", 0.0f, 0.5f, 0.5f, 1.0f), 1);
    ExpectQuad(0, 128, 128);
}
