// The two mesh draws of GlWindow. Both place the mesh the same way: translate,
// then turn about y, x and z in that order (heading first, so a model's pitch
// and roll are about its own axes), then scale.
#include <GL/gl.h>

#include "app/gl_window.h"
#include "render/lightmap_batch.h"
#include "render/lightmap_draw.h"

static const int kStride = 32;

static void PushPlacement(float x, float y, float z, float rotX, float rotY, float rotZ, float scaleX,
                          float scaleY, float scaleZ) {
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glTranslatef(x, y, z);
    glRotatef(rotY, 0.0f, 1.0f, 0.0f);
    glRotatef(rotX, 1.0f, 0.0f, 0.0f);
    glRotatef(rotZ, 0.0f, 0.0f, 1.0f);
    glScalef(scaleX, scaleY, scaleZ);
}

// Each vertex's normal as a line one unit long, blue at the surface, red at the tip.
static void DrawNormals(const float* vertices, unsigned int vertexCount) {
    float colour[4];
    glGetFloatv(GL_CURRENT_COLOR, colour);
    glBegin(GL_LINES);
    for (unsigned int i = 0; i < vertexCount; i++) {
        const float* v = vertices + i * 8;
        glColor3f(0.0f, 0.0f, 1.0f);
        glVertex3f(v[0], v[1], v[2]);
        glColor3f(1.0f, 0.0f, 0.0f);
        glVertex3f(v[0] + v[3], v[1] + v[4], v[2] + v[5]);
    }
    glEnd();
    glColor4fv(colour);
}

void GlWindow::DrawMesh(const float* vertices, unsigned int triangleCount, float x, float y, float z,
                        float rotX, float rotY, float rotZ, float scaleX, float scaleY, float scaleZ) {
    if (!vertices) {
        return;
    }
    PushPlacement(x, y, z, rotX, rotY, rotZ, scaleX, scaleY, scaleZ);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glVertexPointer(3, GL_FLOAT, kStride, vertices);
    glNormalPointer(GL_FLOAT, kStride, vertices + 3);
    glTexCoordPointer(2, GL_FLOAT, kStride, vertices + 6);
    glDrawArrays(GL_TRIANGLES, 0, triangleCount * 3);
    glDisableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_NORMAL_ARRAY);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    if (showNormals) {
        DrawNormals(vertices, triangleCount * 3);
    }
    glPopMatrix();
    polyCount += triangleCount;
}

void GlWindow::DrawLightmappedMesh(const float* vertices, unsigned int triangleCount,
                                   const LightmapVertex* coords, const unsigned int* textures, float x,
                                   float y, float z, float rotX, float rotY, float rotZ, float scaleX,
                                   float scaleY, float scaleZ) {
    if (!vertices || !coords) {
        return;
    }
    bool multitexture = Lightmap_UseMultitexture();
    PushPlacement(x, y, z, rotX, rotY, rotZ, scaleX, scaleY, scaleZ);
    if (g_lightmapDrawMode == LightmapDrawLiteral) {
        if (multitexture) {
            Lightmap_DrawLiteralMultitexture(vertices, triangleCount, coords, textures);
        } else {
            Lightmap_DrawLiteralBlended(vertices, triangleCount, coords, textures);
        }
    } else {
        LightmapBatch* batch = g_lightmapBatches.Find(vertices, triangleCount, coords);
        if (multitexture) {
            batch->DrawMultitexture(textures);
        } else {
            batch->DrawBlended(textures);
        }
    }
    glPopMatrix();
    polyCount += triangleCount;
}
