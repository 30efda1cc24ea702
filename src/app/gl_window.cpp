#include "app/gl_window.h"

#include <GL/gl.h>

#include <cstdio>
#include <cstring>

#include "app/input.h"
#include "app/scene_hooks.h"
#include "platform/sys_events.h"
#include "platform/sys_input.h"
#include "platform/sys_message_box.h"
#include "platform/sys_window.h"

GlWindow* g_activeWindow;
void (*g_glActiveTextureARB)(unsigned int texture);
void (*g_glMultiTexCoord2fARB)(unsigned int target, float s, float t);

static SysPixelFormat s_pixelFormat;
static int s_pixelFormatFilled;

static void CreateError(const char* text) {
    Sys_MessageBox(text, "ERROR", MB_OK | MB_ICONEXCLAMATION);
}

static void ShutdownError(const char* text) {
    Sys_MessageBox(text, "SHUTDOWN ERROR", MB_OK | MB_ICONINFORMATION);
}

GlWindow::GlWindow()
    : instance(this),  // stands for the module handle; only its being set matters
      window(nullptr),
      deviceContext(nullptr),
      width(800),
      height(600),
      colourBits(32),
      fullScreen(0),
      vsync(0),
      active(1),
      showNormals(0),
      clearColour{0.2f, 0.2f, 0.2f},
      renderContext(nullptr),
      framesDrawn(0),
      lightFactor(0.0f),
      sceneDraw(nullptr),
      mouse3D{},
      mouse2D{},
      mouseButtons(0),
      keys{},
      layoutIsNotUK(1),
      joystickFound(0),
      joystickFlags{},
      fogEnabled(0),
      fogStart(1.0f),
      fogEnd(100.0f),
      fogColour{},
      frustumFlag(1),
      frustumPlanes{},
      viewport{},
      modelview{},
      projection{},
      renderCamera{},
      fov(60.0f),
      polyCount(0),
      videoQuality(0),
      flashIntensity(0.0f),
      flashColour{1.0f, 1.0f, 1.0f},
      desktopFullScreen(0),
      sizedByDesktop(0),
      windowedSize{},
      keepAspect(0) {
    memset(title, 0, sizeof(title));
    strcpy(title, "Default Title");
    char layout[9];
    Sys_KeyboardLayoutName(layout);
    layoutIsNotUK = strcmp(layout, "00000809") != 0;
}

GlWindow::~GlWindow() {
    if (window) {
        Destroy();
    }
}

void GlWindow::Destroy() {
    if (fullScreen) {
        Sys_RestoreDisplayMode(window);
    }
    if (renderContext) {
        // Shader objects go while their context is still current; the sources stay for the next one.
        shaders.ReleaseContext();
        if (!Sys_MakeCurrent(nullptr, nullptr)) {
            ShutdownError("halix_Renderer : Release Of DC And RC Failed.");
        }
        if (!Sys_DeleteContext(renderContext)) {
            ShutdownError("halix_Renderer : Release Rendering Context Failed.");
        }
        renderContext = nullptr;
    }
    if (deviceContext && !Sys_ReleaseDeviceContext(window, deviceContext)) {
        ShutdownError("halix_Renderer : Release Device Context Failed.");
    }
    deviceContext = nullptr;
    if (window && !Sys_DestroyWindow(window)) {
        ShutdownError("halix_Renderer : Could Not Release hWnd.");
    }
    window = nullptr;
    if (!Sys_ShutdownVideo()) {
        ShutdownError("halix_Renderer : Could Not Unregister Class.");
        instance = nullptr;
    }
}

// The full-screen mode is tried first; a refused mode silently becomes a window.
static void TryFullScreen(GlWindow* w) {
    if (w->fullScreen == 1 && !Sys_ChangeDisplayMode(w->width, w->height, w->colourBits)) {
        w->fullScreen = 0;
    }
}

// Into the desktop's mode the chosen window size is put aside; out of it, it comes back.
static void FollowDesktop(GlWindow* w) {
    if (w->fullScreen == 2) {
        w->desktopFullScreen = 1;
        if (!w->sizedByDesktop) {
            w->windowedSize[0] = w->width;
            w->windowedSize[1] = w->height;
            w->sizedByDesktop = 1;
        }
        return;
    }
    if (w->fullScreen == 1) {
        w->desktopFullScreen = 0;
    }
    if (w->sizedByDesktop) {
        w->width = w->windowedSize[0];
        w->height = w->windowedSize[1];
        w->sizedByDesktop = 0;
    }
}

static void FillPixelFormat(int colourBits) {
    if (s_pixelFormatFilled) {
        return;
    }
    s_pixelFormat.colourBits = colourBits;
    s_pixelFormat.depthBits = 16;
    s_pixelFormat.stencilBits = 1;
    s_pixelFormat.doubleBuffer = 1;
    s_pixelFormatFilled = 1;
}

int GlWindow::Create(const char* newTitle, int newWidth, int newHeight, int newFullScreen) {
    if (window) {
        Destroy();
    }
    g_activeWindow = this;
    if (newTitle) {
        snprintf(title, sizeof(title), "%s", newTitle);
    }
    if (newWidth) {
        width = newWidth;
    }
    if (newHeight) {
        height = newHeight;
    }
    fullScreen = newFullScreen == 2 ? 2 : (newFullScreen ? 1 : 0);
    FollowDesktop(this);
    Sys_SetWindowProc(WindowProc);
    if (!Sys_InitVideo()) {
        CreateError("halix_Renderer : Failed To Register The Window Class.");
        return 0;
    }
    char layout[9];
    Sys_KeyboardLayoutName(layout);
    layoutIsNotUK = strcmp(layout, "00000809") != 0;
    TryFullScreen(this);
    // The pixel format goes with the window here: the platform fixes it at creation.
    FillPixelFormat(colourBits);
    window = Sys_CreateWindow(title, width, height, fullScreen, &s_pixelFormat);
    if (!window) {
        Destroy();
        CreateError("halix_Renderer : Window Creation Error.");
        return 0;
    }
    if (fullScreen == 2) {
        Sys_WindowSize(window, &width, &height);
    }
    if (!fullScreen) {
        int desktopWidth = 0, desktopHeight = 0;
        Sys_DesktopSize(&desktopWidth, &desktopHeight);
        Sys_MoveWindow(window, desktopWidth / 2 - width / 2, desktopHeight / 2 - height / 2);
    }
    deviceContext = Sys_GetDeviceContext(window);
    if (!deviceContext) {
        Destroy();
        CreateError("halix_Renderer : Can't Create A GL Device Context.");
        return 0;
    }
    if (!Sys_ChoosePixelFormat(window)) {
        Destroy();
        CreateError("halix_Renderer : Can't Find A Suitable PixelFormat.");
        return 0;
    }
    if (!Sys_SetPixelFormat(window)) {
        Destroy();
        CreateError("halix_Renderer : Can't Set The PixelFormat.");
        return 0;
    }
    renderContext = Sys_CreateContext(window);
    if (!renderContext) {
        Destroy();
        CreateError("halix_Renderer : Can't Create A GL Rendering Context.");
        return 0;
    }
    if (!Sys_MakeCurrent(window, renderContext)) {
        Destroy();
        CreateError("halix_Renderer : Can't Activate The GL Rendering Context.");
        return 0;
    }
    Sys_ShowWindow(window);
    InitGL();
    if (keepAspect) {
        ApplyViewport();
    }
    shaders.AttachContext();
    return 1;
}

int GlWindow::InitGL() {
    glEnable(GL_TEXTURE_2D);
    glShadeModel(GL_SMOOTH);
    glClearColor(clearColour[0], clearColour[1], clearColour[2], 1.0f);
    glClearDepth(1.0);
    glDepthFunc(GL_LEQUAL);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
    glEnable(GL_CULL_FACE);
    if (Sys_SwapIntervalSupported()) {
        Sys_SetSwapInterval(vsync ? 1 : 0);
    }
    g_glActiveTextureARB = reinterpret_cast<void (*)(unsigned int)>(Sys_GetProcAddress("glActiveTextureARB"));
    g_glMultiTexCoord2fARB =
        reinterpret_cast<void (*)(unsigned int, float, float)>(Sys_GetProcAddress("glMultiTexCoord2fARB"));
    return 1;
}

void GlWindow::Resize(int newWidth, int newHeight) {
    width = newWidth;
    height = newHeight == 0 ? 1 : newHeight;
    ApplyViewport();
}

void GlWindow::ViewRect(int32_t rect[4]) const {
    rect[0] = 0;
    rect[1] = 0;
    rect[2] = width;
    rect[3] = height;
    if (!keepAspect || width <= 0 || height <= 0) {
        return;
    }
    // Whole pixels, and a 4:3 that comes out exact wherever the size allows it.
    if (static_cast<int64_t>(width) * 3 > static_cast<int64_t>(height) * 4) {
        rect[2] = height * 4 / 3;
        rect[0] = (width - rect[2]) / 2;
    } else {
        rect[3] = width * 3 / 4;
        rect[1] = (height - rect[3]) / 2;
    }
}

void GlWindow::ApplyViewport() {
    if (renderContext) {
        int32_t rect[4];
        ViewRect(rect);
        glViewport(rect[0], rect[1], rect[2], rect[3]);
    }
}

void GlWindow::BeginFrame() {
    // The glow's capture pass draws into a corner of its own viewport: cleared whole.
    if (renderContext && keepAspect && !g_capturePass) {
        glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        int32_t rect[4];
        ViewRect(rect);
        glScissor(rect[0], rect[1], rect[2], rect[3]);
        glEnable(GL_SCISSOR_TEST);
    }
    if (renderContext) {
        if (fogEnabled) {
            glClearColor(fogColour[0], fogColour[1], fogColour[2], 1.0f);
        } else {
            glClearColor(clearColour[0], clearColour[1], clearColour[2], 1.0f);
        }
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glDisable(GL_SCISSOR_TEST);
    }
    framesDrawn++;
    polyCount = 0;
}

void GlWindow::Present() {
    if (!sceneDraw) {
        return;
    }
    sceneDraw();
    SwapBuffers();
}

void GlWindow::SwapBuffers() {
    if (window) {
        Sys_SwapBuffers(window);
    }
}
