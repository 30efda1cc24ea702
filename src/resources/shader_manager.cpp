#include "resources/shader_manager.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "app/console.h"
#include "platform/sys_window.h"
#include "resources/resource_manager.h"

// The process-wide entry points, valid while `supported` is 1.
static PFNGLCREATEPROGRAMOBJECTARBPROC s_createProgramObject;
static PFNGLDELETEOBJECTARBPROC s_deleteObject;
static PFNGLUSEPROGRAMOBJECTARBPROC s_useProgramObject;
static PFNGLCREATESHADEROBJECTARBPROC s_createShaderObject;
static PFNGLSHADERSOURCEARBPROC s_shaderSource;
static PFNGLCOMPILESHADERARBPROC s_compileShader;
static PFNGLGETOBJECTPARAMETERIVARBPROC s_getObjectParameteriv;
static PFNGLATTACHOBJECTARBPROC s_attachObject;
static PFNGLDETACHOBJECTARBPROC s_detachObject;
static PFNGLGETINFOLOGARBPROC s_getInfoLog;
static PFNGLLINKPROGRAMARBPROC s_linkProgram;
static PFNGLGETUNIFORMLOCATIONARBPROC s_getUniformLocation;
static PFNGLUNIFORM1FARBPROC s_uniform1f;
static PFNGLUNIFORM2FARBPROC s_uniform2f;
static PFNGLUNIFORM3FARBPROC s_uniform3f;
static PFNGLUNIFORM4FARBPROC s_uniform4f;
static PFNGLUNIFORM1IARBPROC s_uniform1i;

static void* (*s_lookup)(const char* name) = Sys_GetProcAddress;

void ShaderManager_SetProcLookup(void* (*lookup)(const char* name)) {
    s_lookup = lookup ? lookup : Sys_GetProcAddress;
}

struct EntryPoint {
    const char* name;
    void** pointer;
};

static const EntryPoint kEntryPoints[17] = {
    {"glCreateProgramObjectARB", reinterpret_cast<void**>(&s_createProgramObject)},
    {"glDeleteObjectARB", reinterpret_cast<void**>(&s_deleteObject)},
    {"glUseProgramObjectARB", reinterpret_cast<void**>(&s_useProgramObject)},
    {"glCreateShaderObjectARB", reinterpret_cast<void**>(&s_createShaderObject)},
    {"glShaderSourceARB", reinterpret_cast<void**>(&s_shaderSource)},
    {"glCompileShaderARB", reinterpret_cast<void**>(&s_compileShader)},
    {"glGetObjectParameterivARB", reinterpret_cast<void**>(&s_getObjectParameteriv)},
    {"glAttachObjectARB", reinterpret_cast<void**>(&s_attachObject)},
    {"glDetachObjectARB", reinterpret_cast<void**>(&s_detachObject)},
    {"glGetInfoLogARB", reinterpret_cast<void**>(&s_getInfoLog)},
    {"glLinkProgramARB", reinterpret_cast<void**>(&s_linkProgram)},
    {"glGetUniformLocationARB", reinterpret_cast<void**>(&s_getUniformLocation)},
    {"glUniform1fARB", reinterpret_cast<void**>(&s_uniform1f)},
    {"glUniform2fARB", reinterpret_cast<void**>(&s_uniform2f)},
    {"glUniform3fARB", reinterpret_cast<void**>(&s_uniform3f)},
    {"glUniform4fARB", reinterpret_cast<void**>(&s_uniform4f)},
    {"glUniform1iARB", reinterpret_cast<void**>(&s_uniform1i)},
};

// Prints an object's info log to the console one line at a time under a heading.
static void PrintInfoLog(GLhandleARB object, const char* heading) {
    GLint length = 0;
    s_getObjectParameteriv(object, GL_OBJECT_INFO_LOG_LENGTH_ARB, &length);
    g_console.AddLine(heading);
    if (length <= 1) {
        return;
    }
    char* log = static_cast<char*>(calloc(static_cast<size_t>(length) + 1, 1));
    if (!log) {
        return;
    }
    s_getInfoLog(object, length, nullptr, log);
    for (char* line = strtok(log, "\r\n"); line; line = strtok(nullptr, "\r\n")) {
        g_console.Print("%.240s", line);
    }
    free(log);
}

static int CopySource(char** source, uint32_t* length, const char* text, uint32_t n) {
    if (!text) {
        return 0;
    }
    char* copy = static_cast<char*>(malloc(static_cast<size_t>(n) + 1));
    if (!copy) {
        return 0;
    }
    memcpy(copy, text, n);
    copy[n] = 0;
    free(*source);
    *source = copy;
    *length = n;
    return 1;
}

ShaderProgram::ShaderProgram()
    : linked(0),
      program(0),
      vertexShader(0),
      fragmentShader(0),
      vertexSource(nullptr),
      fragmentSource(nullptr),
      vertexLength(0),
      fragmentLength(0) {}

ShaderProgram::~ShaderProgram() {
    DeleteObjects();
    free(vertexSource);
    free(fragmentSource);
}

int ShaderProgram::SetVertexSource(const char* text, uint32_t length) {
    if (!CopySource(&vertexSource, &vertexLength, text, length)) {
        return 0;
    }
    linked = 0;
    return 1;
}

int ShaderProgram::SetFragmentSource(const char* text, uint32_t length) {
    if (!CopySource(&fragmentSource, &fragmentLength, text, length)) {
        return 0;
    }
    linked = 0;
    return 1;
}

// Without entry points nothing could have made the objects; there is nothing to delete.
void ShaderProgram::DeleteObjects() {
    if (!s_deleteObject) {
        vertexShader = fragmentShader = program = 0;
        linked = 0;
        return;
    }
    if (vertexShader) {
        s_detachObject(program, vertexShader);
        s_deleteObject(vertexShader);
    }
    if (fragmentShader) {
        s_detachObject(program, fragmentShader);
        s_deleteObject(fragmentShader);
    }
    if (program) {
        s_deleteObject(program);
    }
    vertexShader = 0;
    fragmentShader = 0;
    program = 0;
    linked = 0;
}

static GLhandleARB CompileShader(GLenum type, const char* source, const char* heading) {
    GLhandleARB shader = s_createShaderObject(type);
    const GLcharARB* text = source;
    s_shaderSource(shader, 1, &text, nullptr);
    s_compileShader(shader);
    GLint compiled = 0;
    s_getObjectParameteriv(shader, GL_OBJECT_COMPILE_STATUS_ARB, &compiled);
    if (!compiled) {
        PrintInfoLog(shader, heading);
    }
    return shader;
}

int ShaderProgram::Build() {
    if (!vertexSource && !fragmentSource) {
        return 0;
    }
    if (!s_createProgramObject) {
        return 0;
    }
    DeleteObjects();
    program = s_createProgramObject();
    if (vertexSource) {
        vertexShader = CompileShader(GL_VERTEX_SHADER_ARB, vertexSource, "Vertex shader failed to compile:");
    }
    if (fragmentSource) {
        fragmentShader =
            CompileShader(GL_FRAGMENT_SHADER_ARB, fragmentSource, "Fragment shader failed to compile:");
    }
    if (vertexShader) {
        s_attachObject(program, vertexShader);
    }
    if (fragmentShader) {
        s_attachObject(program, fragmentShader);
    }
    s_linkProgram(program);
    GLint status = 0;
    s_getObjectParameteriv(program, GL_OBJECT_LINK_STATUS_ARB, &status);
    if (!status) {
        PrintInfoLog(program, "Shader program failed to link:");
        return 0;
    }
    linked = 1;
    return 1;
}

ShaderManager::ShaderManager() : supported(0), resources(nullptr) {
    memset(programs, 0, sizeof(programs));
}

ShaderManager::~ShaderManager() {
    for (int i = 0; i < kSlotCount; i++) {
        delete programs[i];
        programs[i] = nullptr;
    }
}

// Whole-word search of the extension string: a name that is only the prefix of
// another extension's name must not count.
static int HasExtension(const char* name) {
    const char* list = reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS));
    size_t length = strlen(name);
    for (const char* at = list ? strstr(list, name) : nullptr; at; at = strstr(at + 1, name)) {
        if ((at == list || at[-1] == ' ') && (at[length] == ' ' || at[length] == 0)) {
            return 1;
        }
    }
    return 0;
}

// Some drivers hand out an address for any name that starts with "gl", so the
// extension string has the last word on whether the entry points are real. The
// pointers are shared by every manager: a failed look-up leaves them as they were.
static int LookUpEntryPoints() {
    if (!HasExtension("GL_ARB_shader_objects") || !HasExtension("GL_ARB_vertex_shader") ||
        !HasExtension("GL_ARB_fragment_shader")) {
        return 0;
    }
    void* found[17];
    for (int i = 0; i < 17; i++) {
        found[i] = s_lookup(kEntryPoints[i].name);
        if (!found[i]) {
            return 0;
        }
    }
    for (int i = 0; i < 17; i++) {
        *kEntryPoints[i].pointer = found[i];
    }
    return 1;
}

int ShaderManager::InitEntryPoints() {
    if (supported) {
        ReleaseAll();
    }
    supported = LookUpEntryPoints();
    return supported;
}

static int ValidSlot(int slot) {
    return slot >= 0 && slot < ShaderManager::kSlotCount;
}

int ShaderManager::LoadProgram(int slot, const char* vertexName, const char* fragmentName) {
    if (!supported || !resources || !ValidSlot(slot)) {
        return 0;
    }
    if (programs[slot]) {
        UseNoProgram();
        delete programs[slot];
        programs[slot] = nullptr;
    }
    ShaderProgram* built = new ShaderProgram();
    const unsigned char* bytes = vertexName ? resources->Open(vertexName) : nullptr;
    if (!built->SetVertexSource(reinterpret_cast<const char*>(bytes), bytes ? resources->bufferSize : 0)) {
        g_console.Print("Shader source \"%.200s\" not found", vertexName ? vertexName : "");
    }
    bytes = fragmentName ? resources->Open(fragmentName) : nullptr;
    if (!built->SetFragmentSource(reinterpret_cast<const char*>(bytes), bytes ? resources->bufferSize : 0)) {
        g_console.Print("Shader source \"%.200s\" not found", fragmentName ? fragmentName : "");
    }
    if (!built->Build()) {
        delete built;
        return 0;
    }
    programs[slot] = built;
    return 1;
}

int ShaderManager::UseProgram(int slot) {
    if (!supported || !ValidSlot(slot) || !programs[slot] || !programs[slot]->linked) {
        return 0;
    }
    s_useProgramObject(programs[slot]->program);
    return 1;
}

void ShaderManager::UseNoProgram() {
    if (supported) {
        s_useProgramObject(0);
    }
}

void ShaderManager::ReleaseAll() {
    UseNoProgram();
    for (int i = 0; i < kSlotCount; i++) {
        delete programs[i];
        programs[i] = nullptr;
    }
}

int ShaderManager::UniformLocation(unsigned int program, const char* name) {
    if (!supported || !name) {
        return -1;
    }
    int location = s_getUniformLocation(program, name);
    if (location == -1) {
        printf("No such uniform named \"%s\"\n", name);
    }
    return location;
}

// The uniform calls act on the current program, so setting one makes its
// program current first.
static int PrepareUniform(ShaderManager& manager, int slot, const char* name, int* location) {
    if (!manager.UseProgram(slot)) {
        return 0;
    }
    *location = manager.UniformLocation(manager.programs[slot]->program, name);
    return *location != -1;
}

int ShaderManager::SetUniform1f(int slot, const char* name, float x) {
    int location = -1;
    if (!PrepareUniform(*this, slot, name, &location)) {
        return 0;
    }
    s_uniform1f(location, x);
    return 1;
}

int ShaderManager::SetUniform2f(int slot, const char* name, float x, float y) {
    int location = -1;
    if (!PrepareUniform(*this, slot, name, &location)) {
        return 0;
    }
    s_uniform2f(location, x, y);
    return 1;
}

int ShaderManager::SetUniform3f(int slot, const char* name, float x, float y, float z) {
    int location = -1;
    if (!PrepareUniform(*this, slot, name, &location)) {
        return 0;
    }
    s_uniform3f(location, x, y, z);
    return 1;
}

int ShaderManager::SetUniform4f(int slot, const char* name, float x, float y, float z, float w) {
    int location = -1;
    if (!PrepareUniform(*this, slot, name, &location)) {
        return 0;
    }
    s_uniform4f(location, x, y, z, w);
    return 1;
}

int ShaderManager::SetUniform1i(int slot, const char* name, int x) {
    int location = -1;
    if (!PrepareUniform(*this, slot, name, &location)) {
        return 0;
    }
    s_uniform1i(location, x);
    return 1;
}

int ShaderManager::AttachContext() {
    if (!resources) {
        resources = &g_resources;
    }
    supported = LookUpEntryPoints();
    for (int i = 0; i < kSlotCount; i++) {
        if (programs[i] && (!supported || !programs[i]->Build())) {
            delete programs[i];
            programs[i] = nullptr;
        }
    }
    return supported;
}

void ShaderManager::ReleaseContext() {
    if (!supported) {
        return;
    }
    UseNoProgram();
    for (int i = 0; i < kSlotCount; i++) {
        if (programs[i]) {
            programs[i]->DeleteObjects();
        }
    }
}
