// The GL window: the program's one top-level window and its GL context, the
// full-screen mode change, the render settings and per-frame counters the
// drawing code shares, the input state the window procedure fills, and
// sceneDraw, the function through which the main loop draws the current scene.
//
// Creating the window again (VID_RESTART) destroys the old one first, and every
// GL object dies with the old context: its owners make theirs again. Each
// creation step that fails shows its own "halix_Renderer : " message box and
// leaves nothing half made. One global instance, g_window; g_activeWindow names
// the instance the window procedure writes to.
#pragma once

#include <cstdint>

#include "resources/shader_manager.h"

struct SysWindow;
struct SysGlContext;
struct LightmapVertex;
class LightmapSet;

// Indices into GlWindow::joystickFlags.
enum {
    JoyLatchButton1 = 0,   // jump (VK_SPACE)
    JoyLatchButton7 = 1,   // "Z"
    JoyLatchButton8 = 2,   // "X"
    JoyLatchButton12 = 3,  // pause ("P")
    JoyLatchUp = 4,        // "up" from the stick, kept by the game update
};

class GlWindow {
public:
    void* instance;
    SysWindow* window;
    SysWindow* deviceContext;  // the window again: the platform draws to the window itself
    char title[256];
    ShaderManager shaders;
    int32_t width;
    int32_t height;
    int32_t colourBits;
    uint8_t fullScreen;  // 0 a window, 1 a display mode of width x height, 2 the desktop's own mode
    uint8_t vsync;
    uint8_t active;
    uint8_t showNormals;
    float clearColour[3];
    SysGlContext* renderContext;
    uint32_t framesDrawn;
    float lightFactor;
    void (*sceneDraw)();
    float mouse3D[3];
    float mouse2D[2];
    uint8_t mouseButtons;  // 0 none, 1 left, 2 right, 4 middle
    uint8_t keys[256];     // by virtual-key code
    uint8_t layoutIsNotUK;
    uint8_t joystickFound;
    uint8_t joystickFlags[16];
    uint8_t fogEnabled;
    float fogStart;
    float fogEnd;
    float fogColour[3];
    uint8_t frustumFlag;
    float frustumPlanes[6][4];
    int32_t viewport[4];
    double modelview[16];
    double projection[16];
    float renderCamera[6];  // x, y, z, pitch, yaw, roll of the frame being drawn
    float fov;
    uint32_t polyCount;
    int32_t videoQuality;
    float flashIntensity;
    float flashColour[3];
    // Full screen on the desktop's mode sizes the window by the desktop; the window size the
    // player chose is kept aside for the way back and for config.vbt.
    uint8_t desktopFullScreen;  // Alt+Enter goes to mode 2 rather than 1
    uint8_t sizedByDesktop;     // width and height are the desktop's, windowedSize the player's
    int32_t windowedSize[2];
    // 1: the picture keeps its 4:3 shape in the middle of the window, black bars beside or
    // above it; 0: stretched over the whole window.
    uint8_t keepAspect;

    GlWindow();
    ~GlWindow();

    // Opens the window and its GL context (null title or zero sizes keep the current ones;
    // newFullScreen as fullScreen); 1 or 0.
    int Create(const char* newTitle, int newWidth, int newHeight, int newFullScreen);
    // Tears down context, window and class, reporting (but surviving) every failure.
    void Destroy();
    // Sets the GL defaults and looks up the swap-interval and multitexture entry points; always 1.
    int InitGL();
    // Stores the client size (a zero height becomes 1) and sets the viewport to the view.
    void Resize(int newWidth, int newHeight);
    // The window pixels the picture takes as a GL viewport (x, y from the bottom, width,
    // height): the whole client area, or with keepAspect the largest 4:3 part in its middle.
    void ViewRect(int32_t rect[4]) const;
    // Sets the GL viewport to ViewRect (nothing without a context).
    void ApplyViewport();
    // Clears colour and depth (fog colour while fog is on; with keepAspect the bars black),
    // counts the frame, zeroes polyCount.
    void BeginFrame();
    // Draws the scene through sceneDraw and swaps; does neither while sceneDraw is null.
    void Present();
    // Swaps the buffers without drawing (loading screens); nothing without a window.
    void SwapBuffers();

    // Scene drawing (render/scene_view.cpp, render/scene_lights.cpp, render/mesh_draw.cpp).
    // Projection at fov, view from renderCamera, fog, captured matrices and frustum planes.
    void SetCamera();
    // Eye-space projection (fov 60, 4:3, near 1, far 2500) for scenes drawn without a camera.
    void SetPerspective();
    // Fills frustumPlanes from the current GL model-view and projection matrices.
    void ExtractFrustum();
    // True when the sphere may be visible in the last extracted frustum.
    bool SphereInFrustum(float x, float y, float z, float radius) const;
    // The six-light studio rig at intensity, directions in eye space.
    void SetStudioLights(float intensity);
    // Up to eight of the set's lights, in range of point when point is given; lighting off
    // when the set has none.
    void SetLocationLights(const LightmapSet* set, const float* point);
    // The 800 x 600 canvas, y down, over the viewport; no depth test, no texture.
    void Begin2D();
    // Draws 32-byte vertices (position, normal, uv) as triangles, placed, turned and scaled.
    void DrawMesh(const float* vertices, unsigned int triangleCount, float x, float y, float z,
                  float rotX, float rotY, float rotZ, float scaleX, float scaleY, float scaleZ);
    // Draws a mesh multiplied by its lightmap pages (textures: GL names indexed by page).
    void DrawLightmappedMesh(const float* vertices, unsigned int triangleCount,
                             const LightmapVertex* coords, const unsigned int* textures, float x,
                             float y, float z, float rotX, float rotY, float rotZ, float scaleX,
                             float scaleY, float scaleZ);
};

extern GlWindow g_window;
extern GlWindow* g_activeWindow;

// The ARB multitexture entry points, null when the driver lacks them.
extern void (*g_glActiveTextureARB)(unsigned int texture);
extern void (*g_glMultiTexCoord2fARB)(unsigned int target, float s, float t);
