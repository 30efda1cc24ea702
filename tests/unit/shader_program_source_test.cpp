// Shader program bookkeeping that needs no GL context: the kept source texts,
// and a manager without entry points that refuses everything quietly.
#include <gtest/gtest.h>

#include <cstring>

#include "resources/resource_manager.h"
#include "resources/shader_manager.h"

TEST(ShaderProgramSource, SettersKeepTerminatedCopiesAndClearTheLinkFlag) {
    ShaderProgram program;
    EXPECT_EQ(program.SetVertexSource(nullptr, 4), 0);
    EXPECT_EQ(program.vertexSource, nullptr);

    char text[] = "void main() {}XYZ";
    program.linked = 1;
    ASSERT_EQ(program.SetVertexSource(text, 14), 1);
    EXPECT_EQ(program.linked, 0);
    EXPECT_NE(program.vertexSource, text);
    EXPECT_STREQ(program.vertexSource, "void main() {}");
    EXPECT_EQ(program.vertexLength, 14u);
    text[0] = 'X';  // the copy is independent of the caller's bytes
    EXPECT_EQ(program.vertexSource[0], 'v');

    program.linked = 1;
    ASSERT_EQ(program.SetFragmentSource("ab\0cd", 5), 1);
    EXPECT_EQ(program.linked, 0);
    EXPECT_EQ(program.fragmentLength, 5u);
    EXPECT_EQ(0, memcmp(program.fragmentSource, "ab\0cd\0", 6));
    EXPECT_EQ(program.SetFragmentSource(nullptr, 0), 0);
    EXPECT_EQ(program.fragmentLength, 5u);  // a failed set keeps the old text
}

TEST(ShaderProgramSource, BuildWithoutSourcesFails) {
    ShaderProgram program;
    EXPECT_EQ(program.Build(), 0);
    EXPECT_EQ(program.linked, 0);
    EXPECT_EQ(program.program, 0u);
}

TEST(ShaderProgramSource, ManagerWithoutEntryPointsRefusesQuietly) {
    ShaderManager manager;
    EXPECT_EQ(manager.supported, 0);
    EXPECT_EQ(manager.resources, nullptr);
    manager.resources = &g_resources;
    EXPECT_EQ(manager.LoadProgram(0, "shaders\\a.vs", "shaders\\a.fs"), 0);
    EXPECT_EQ(manager.programs[0], nullptr);
    EXPECT_EQ(manager.UseProgram(0), 0);
    EXPECT_EQ(manager.UniformLocation(1, "tint"), -1);
    EXPECT_EQ(manager.SetUniform4f(0, "tint", 1, 1, 1, 1), 0);
    manager.UseNoProgram();
    manager.ReleaseAll();
    manager.ReleaseContext();
}
