// The view set-ups of GlWindow: the 3D camera, the eye-space perspective of the
// studio-lit foregrounds, the frustum capture and the 800 x 600 2D canvas.
//
// The aspect ratio is 4:3 whatever the window's shape, so every level looks the
// same on every display: a wide window either stretches the picture or, with
// VID_ASPECT 1, gives it a 4:3 viewport in its middle (GlWindow::ViewRect). The
// 2D canvas follows the same idea: overlays are laid out once at 800 x 600 and
// scaled to the viewport.
#include <GL/gl.h>
#include <GL/glu.h>

#include "app/gl_window.h"
#include "render/frustum.h"

static const double kAspect = 1.3333333333333333;

void GlWindow::SetCamera() {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(fov, kAspect, 10.0, fogEnabled ? fogEnd + 50.0 : 2500.0);
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);

    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glRotatef(renderCamera[3], 1.0f, 0.0f, 0.0f);
    glRotatef(renderCamera[4] - 180.0f, 0.0f, -1.0f, 0.0f);
    glRotatef(renderCamera[5], 0.0f, 0.0f, 1.0f);
    glTranslatef(-renderCamera[0], -renderCamera[1], -renderCamera[2]);

    // Kept for projecting world points to the screen after the frame is set up.
    glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetIntegerv(GL_VIEWPORT, viewport);

    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    if (fogEnabled) {
        const float colour[4] = {fogColour[0], fogColour[1], fogColour[2], 1.0f};
        glFogi(GL_FOG_MODE, GL_LINEAR);
        glFogfv(GL_FOG_COLOR, colour);
        glFogf(GL_FOG_DENSITY, 0.35f);
        glHint(GL_FOG_HINT, GL_DONT_CARE);
        glFogf(GL_FOG_START, fogStart);
        glFogf(GL_FOG_END, fogEnd);
        glEnable(GL_FOG);
    } else {
        glDisable(GL_FOG);
    }
    // With the flag clear the planes stay where they were, so culling can be watched
    // from outside the view it was computed for.
    if (frustumFlag) {
        ExtractFrustum();
    }
}

void GlWindow::SetPerspective() {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(60.0, kAspect, 1.0, 2500.0);
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

void GlWindow::ExtractFrustum() {
    float modelviewMatrix[16];
    float projectionMatrix[16];
    glGetFloatv(GL_MODELVIEW_MATRIX, modelviewMatrix);
    glGetFloatv(GL_PROJECTION_MATRIX, projectionMatrix);
    Frustum_FromMatrices(modelviewMatrix, projectionMatrix, frustumPlanes);
}

bool GlWindow::SphereInFrustum(float x, float y, float z, float radius) const {
    return Frustum_SphereInside(frustumPlanes, x, y, z, radius);
}

void GlWindow::Begin2D() {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluOrtho2D(0.0, width, 0.0, height);
    glScalef(1.0f, -1.0f, 1.0f);
    glTranslatef(0.0f, static_cast<float>(-height), 0.0f);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glScalef(width / 800.0f, height / 600.0f, 1.0f);
    glBindTexture(GL_TEXTURE_2D, 0);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
}
