// GLSL programs through the ARB shader-object extension. The manager lives in
// the GL window and has eight program slots; each program is built from a
// vertex and a fragment shader whose sources are resources opened by name.
// The entry points are looked up once a context exists; without every one of
// them (or without the extension) `supported` stays 0 and every operation
// quietly does nothing.
//
// GL objects die with their context, but a program keeps copies of its source
// texts, so when the window is made again ("VID_RESTART") the window releases
// the objects before its context goes and the manager builds every program
// again in the new one. A program whose sources fail to compile or link is
// not kept: its slot stays empty and the compiler's log goes to the console.
#pragma once

#include <cstdint>

class ResourceManager;

class ShaderProgram {
public:
    uint8_t linked;               // 1 after a successful link; 0 whenever a source changes
    unsigned int program;         // program object, 0 when none
    unsigned int vertexShader;    // vertex shader object, 0 when none
    unsigned int fragmentShader;  // fragment shader object, 0 when none
    char* vertexSource;           // owned, NUL-terminated, null when none
    char* fragmentSource;
    uint32_t vertexLength;
    uint32_t fragmentLength;

    ShaderProgram();
    ~ShaderProgram();
    ShaderProgram(const ShaderProgram&) = delete;
    ShaderProgram& operator=(const ShaderProgram&) = delete;

    // Keeps a copy of length bytes of vertex shader text; 0 when text is null.
    int SetVertexSource(const char* text, uint32_t length);
    // Keeps a copy of length bytes of fragment shader text; 0 when text is null.
    int SetFragmentSource(const char* text, uint32_t length);
    // Compiles the sources that are set and links them; 1 when the program linked.
    int Build();
    // Detaches and deletes the GL objects (the context must still be current); sources stay.
    void DeleteObjects();
};

class ShaderManager {
public:
    static const int kSlotCount = 8;

    int32_t supported;                    // 1 once every entry point was found
    ResourceManager* resources;           // source of shader texts, null until set
    ShaderProgram* programs[kSlotCount];  // owned program slots

    ShaderManager();
    ~ShaderManager();
    ShaderManager(const ShaderManager&) = delete;
    ShaderManager& operator=(const ShaderManager&) = delete;

    // Looks up the seventeen entry points (destroying all programs first when already set up);
    // 1 when all were found. Needs a current GL context.
    int InitEntryPoints();
    // Builds slot's program from the named vertex and fragment shader resources; 1 when it linked.
    int LoadProgram(int slot, const char* vertexName, const char* fragmentName);
    // Makes slot's linked program current; 1, or 0 when there is none.
    int UseProgram(int slot);
    // Returns to the fixed-function pipeline.
    void UseNoProgram();
    // Makes no program current, destroys every program and empties the slots.
    void ReleaseAll();
    // The location of a uniform of a program object; -1 (with a message on stdout) when unknown.
    int UniformLocation(unsigned int program, const char* name);
    // Makes slot's program current and sets a float uniform by name; 1, or 0 when not set.
    int SetUniform1f(int slot, const char* name, float x);
    // The same for a vec2 uniform.
    int SetUniform2f(int slot, const char* name, float x, float y);
    // The same for a vec3 uniform.
    int SetUniform3f(int slot, const char* name, float x, float y, float z);
    // The same for a vec4 uniform.
    int SetUniform4f(int slot, const char* name, float x, float y, float z, float w);
    // The same for an int (or sampler) uniform.
    int SetUniform1i(int slot, const char* name, int x);

    // Called by the window once its new context is current: finds the entry points, takes the
    // global resource manager when none is set, and builds every kept program again; 1 or 0.
    int AttachContext();
    // Called by the window before its context goes: makes no program current and deletes the GL
    // objects, keeping every program's sources for AttachContext.
    void ReleaseContext();
};

// Replaces the entry-point look-up (null restores the platform's); for tests.
void ShaderManager_SetProcLookup(void* (*lookup)(const char* name));
