// Shader programs in a real GL context under Xvfb: programs built from loose
// and packaged sources draw the colour their uniforms say, broken sources log
// the compiler's complaint and leave their slot empty, and the programs come
// back after the window is made again.
#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

#include "app/console.h"
#include "app/gl_window.h"
#include "platform/sys_window.h"
#include "resources/package.h"
#include "resources/resource_manager.h"
#include "resources/shader_manager.h"
#include "test_support.h"

namespace {

const char* const kVertex = "void main() { gl_Position = gl_Vertex; }\n";
const char* const kTinted = "uniform vec4 tint;\nvoid main() { gl_FragColor = tint; }\n";
const char* const kGreen = "void main() { gl_FragColor = vec4(0.0, 1.0, 0.0, 1.0); }\n";
const char* const kBroken = "void main() { gl_FragColor = vec4(1.0) * missingFactor; }\n";
const char* const kNoMain = "vec4 helper() { return vec4(1.0); }\n";
const int kSize = 64;

struct Pixel {
    int r, g, b;
};

// Fills the window with one quad (with the current program, or in white by the
// fixed pipeline) over black, and reads the centre of the frame back.
Pixel DrawQuad() {
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
    glBegin(GL_QUADS);
    glVertex2f(-1, -1);
    glVertex2f(1, -1);
    glVertex2f(1, 1);
    glVertex2f(-1, 1);
    glEnd();
    glFinish();
    unsigned char rgba[4] = {0, 0, 0, 0};
    glReadPixels(kSize / 2, kSize / 2, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, rgba);
    return Pixel{rgba[0], rgba[1], rgba[2]};
}

void ExpectPixel(Pixel got, int r, int g, int b) {
    EXPECT_NEAR(got.r, r, 2);
    EXPECT_NEAR(got.g, g, 2);
    EXPECT_NEAR(got.b, b, 2);
}

int CurrentProgram() {
    GLint current = -1;
    glGetIntegerv(0x8B8D, &current);  // GL_CURRENT_PROGRAM
    return current;
}

bool ConsoleHas(const char* text) {
    for (int i = 0; i < Console::kLineCount; i++) {
        if (strstr(g_console.lines[i], text)) {
            return true;
        }
    }
    return false;
}

class ShaderPrograms : public ::testing::Test {
protected:
    char savedDirectory[260];
    std::string data;

    void SetUp() override {
        memcpy(savedDirectory, g_resources.dataDirectory, sizeof(savedDirectory));
        // CTest runs each case as its own process, in parallel: one directory per case.
        std::string name =
            std::string("shader_programs_") + ::testing::UnitTest::GetInstance()->current_test_info()->name();
        data = test::ScratchDir(name.c_str()) + "/data";
        std::filesystem::create_directories(data + "/shaders");
        ASSERT_TRUE(test::WriteText(data + "/shaders/flat.vs", kVertex));
        ASSERT_TRUE(test::WriteText(data + "/shaders/tint.fs", kTinted));
        ASSERT_TRUE(test::WriteText(data + "/shaders/broken.fs", kBroken));
        ASSERT_TRUE(test::WriteText(data + "/shaders/nomain.fs", kNoMain));
        ASSERT_LT(data.size(), sizeof(g_resources.dataDirectory));
        strcpy(g_resources.dataDirectory, data.c_str());
        g_console.Clear();
        ASSERT_EQ(g_window.Create("Shader test", kSize, kSize, 0), 1);
        ASSERT_EQ(g_window.shaders.supported, 1) << "Mesa offers ARB shader objects";
    }
    void TearDown() override {
        g_window.shaders.ReleaseAll();
        g_window.Destroy();
        memcpy(g_resources.dataDirectory, savedDirectory, sizeof(savedDirectory));
    }
};

}  // namespace

TEST_F(ShaderPrograms, ProgramFromLooseSourcesDrawsItsUniformColour) {
    ShaderManager& shaders = g_window.shaders;
    ASSERT_EQ(shaders.LoadProgram(0, "shaders\\flat.vs", "shaders\\tint.fs"), 1);
    ASSERT_NE(shaders.programs[0], nullptr);
    EXPECT_EQ(shaders.programs[0]->linked, 1);
    EXPECT_STREQ(shaders.programs[0]->fragmentSource, kTinted);
    ASSERT_EQ(shaders.SetUniform4f(0, "tint", 0.25f, 0.5f, 0.75f, 1.0f), 1);
    ExpectPixel(DrawQuad(), 64, 128, 191);
    ASSERT_EQ(shaders.SetUniform4f(0, "tint", 1.0f, 0.0f, 0.5f, 1.0f), 1);
    ExpectPixel(DrawQuad(), 255, 0, 128);

    shaders.UseNoProgram();
    EXPECT_EQ(CurrentProgram(), 0);
    ExpectPixel(DrawQuad(), 255, 255, 255);
}

TEST_F(ShaderPrograms, PackagedFragmentSourceBuildsAloneWhenTheVertexSourceIsMissing) {
    std::unique_ptr<Package> package(new Package());
    ASSERT_EQ(package->AddData("shaders\\green.fs", kGreen, static_cast<unsigned>(strlen(kGreen))), 1);
    ASSERT_EQ(package->Save((data + "/shaders.vpk").c_str()), 1);
    ShaderManager& shaders = g_window.shaders;
    ASSERT_EQ(shaders.LoadProgram(3, "shaders\\absent.vs", "SHADERS\\GREEN.FS"), 1);
    EXPECT_EQ(shaders.programs[3]->vertexSource, nullptr);
    EXPECT_TRUE(ConsoleHas("Shader source \"shaders\\absent.vs\" not found"));
    ASSERT_EQ(shaders.UseProgram(3), 1);
    ExpectPixel(DrawQuad(), 0, 255, 0);
}

TEST_F(ShaderPrograms, BrokenSourcesLogTheirErrorAndLeaveTheSlotEmpty) {
    ShaderManager& shaders = g_window.shaders;
    ASSERT_EQ(shaders.LoadProgram(1, "shaders\\flat.vs", "shaders\\tint.fs"), 1);
    ASSERT_EQ(shaders.UseProgram(1), 1);
    EXPECT_NE(CurrentProgram(), 0);

    // Replacing the occupied slot first returns to the fixed pipeline.
    EXPECT_EQ(shaders.LoadProgram(1, "shaders\\flat.vs", "shaders\\broken.fs"), 0);
    EXPECT_EQ(shaders.programs[1], nullptr);
    EXPECT_EQ(CurrentProgram(), 0);
    EXPECT_EQ(shaders.UseProgram(1), 0);
    EXPECT_TRUE(ConsoleHas("Fragment shader failed to compile:"));
    EXPECT_TRUE(ConsoleHas("missingFactor"));
    EXPECT_TRUE(ConsoleHas("Shader program failed to link:"));
    ExpectPixel(DrawQuad(), 255, 255, 255);

    g_console.Clear();
    EXPECT_EQ(shaders.LoadProgram(2, "shaders\\flat.vs", "shaders\\nomain.fs"), 0);
    EXPECT_EQ(shaders.programs[2], nullptr);
    EXPECT_FALSE(ConsoleHas("failed to compile"));
    EXPECT_TRUE(ConsoleHas("Shader program failed to link:"));

    EXPECT_EQ(shaders.LoadProgram(2, "shaders\\none.vs", "shaders\\none.fs"), 0);
    EXPECT_EQ(shaders.LoadProgram(8, "shaders\\flat.vs", "shaders\\tint.fs"), 0);
    EXPECT_EQ(shaders.LoadProgram(-1, "shaders\\flat.vs", "shaders\\tint.fs"), 0);
}

TEST_F(ShaderPrograms, UnknownUniformIsReportedByName) {
    ShaderManager& shaders = g_window.shaders;
    ASSERT_EQ(shaders.LoadProgram(0, "shaders\\flat.vs", "shaders\\tint.fs"), 1);
    testing::internal::CaptureStdout();
    int location = shaders.UniformLocation(shaders.programs[0]->program, "shade");
    int set = shaders.SetUniform1f(0, "glow", 1.0f);
    std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_EQ(location, -1);
    EXPECT_EQ(set, 0);
    EXPECT_EQ(printed, "No such uniform named \"shade\"\nNo such uniform named \"glow\"\n");
    EXPECT_GE(shaders.UniformLocation(shaders.programs[0]->program, "tint"), 0);
}

static void* WithoutUniform1f(const char* name) {
    return strcmp(name, "glUniform1fARB") == 0 ? nullptr : Sys_GetProcAddress(name);
}

TEST_F(ShaderPrograms, OneMissingEntryPointMeansNoShaderSystem) {
    ShaderManager other;
    other.resources = &g_resources;
    ShaderManager_SetProcLookup(WithoutUniform1f);
    EXPECT_EQ(other.InitEntryPoints(), 0);
    ShaderManager_SetProcLookup(nullptr);
    EXPECT_EQ(other.supported, 0);
    EXPECT_EQ(other.LoadProgram(0, "shaders\\flat.vs", "shaders\\tint.fs"), 0);
    EXPECT_EQ(other.UseProgram(0), 0);
    // The failed look-up left the working manager's entry points alone.
    ASSERT_EQ(g_window.shaders.LoadProgram(0, "shaders\\flat.vs", "shaders\\tint.fs"), 1);
    ASSERT_EQ(g_window.shaders.SetUniform4f(0, "tint", 0.0f, 0.0f, 1.0f, 1.0f), 1);
    ExpectPixel(DrawQuad(), 0, 0, 255);
    EXPECT_EQ(other.InitEntryPoints(), 1);
}

TEST_F(ShaderPrograms, ProgramsAreBuiltAgainAfterVidRestart) {
    ShaderManager& shaders = g_window.shaders;
    ASSERT_EQ(shaders.LoadProgram(0, "shaders\\flat.vs", "shaders\\tint.fs"), 1);
    ASSERT_EQ(shaders.LoadProgram(5, "shaders\\flat.vs", "shaders\\tint.fs"), 1);
    // Sources on disk change after loading: the rebuild uses the texts the programs kept.
    ASSERT_TRUE(test::WriteText(data + "/shaders/tint.fs", kBroken));
    ExecuteCommand("VID_RESTART");
    ASSERT_NE(g_window.renderContext, nullptr);
    ASSERT_EQ(shaders.supported, 1);
    ASSERT_NE(shaders.programs[0], nullptr);
    EXPECT_EQ(shaders.programs[0]->linked, 1);
    ASSERT_NE(shaders.programs[5], nullptr);
    ASSERT_EQ(shaders.SetUniform4f(5, "tint", 0.5f, 0.25f, 0.0f, 1.0f), 1);
    ExpectPixel(DrawQuad(), 128, 64, 0);
    ASSERT_EQ(shaders.SetUniform4f(0, "tint", 0.0f, 0.5f, 0.5f, 1.0f), 1);
    ExpectPixel(DrawQuad(), 0, 128, 128);
}
