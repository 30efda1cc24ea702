#include "render/lightmap_draw.h"

#include <GL/gl.h>

#include "app/gl_window.h"
#include "resources/lightmap_set.h"

int g_lightmapDrawMode = LightmapDrawBatched;
int g_lightmapForceBlend = 0;

static const int kVertexFloats = 8;
static const int kPositionOffset = 0;
static const int kTexCoordOffset = 6;
// GL_TEXTURE0_ARB and GL_TEXTURE1_ARB.
static const unsigned int kUnit0 = 0x84C0;
static const unsigned int kUnit1 = 0x84C1;

bool Lightmap_UseMultitexture() {
    return g_glActiveTextureARB && g_glMultiTexCoord2fARB && !g_lightmapForceBlend;
}

void Lightmap_DrawLiteralMultitexture(const float* vertices, unsigned int triangleCount,
                                      const LightmapVertex* coords, const unsigned int* textures) {
    g_glActiveTextureARB(kUnit1);
    glEnable(GL_TEXTURE_2D);
    for (unsigned int t = 0; t < triangleCount; t++) {
        unsigned int page = coords[t * 3].page;
        if (page >= LightmapSet::kNoPage) {
            continue;
        }
        glBindTexture(GL_TEXTURE_2D, textures[page]);
        glBegin(GL_TRIANGLES);
        for (unsigned int k = t * 3; k < t * 3 + 3; k++) {
            const float* vertex = vertices + k * kVertexFloats;
            g_glMultiTexCoord2fARB(kUnit0, vertex[kTexCoordOffset], vertex[kTexCoordOffset + 1]);
            g_glMultiTexCoord2fARB(kUnit1, coords[k].u, coords[k].v);
            glVertex3fv(vertex + kPositionOffset);
        }
        glEnd();
    }
    glDisable(GL_TEXTURE_2D);
    g_glActiveTextureARB(kUnit0);
}

static void DrawTriangle(const float* vertices, const LightmapVertex* coords, unsigned int first,
                         bool lightmapCoords) {
    glBegin(GL_TRIANGLES);
    for (unsigned int k = first; k < first + 3; k++) {
        const float* vertex = vertices + k * kVertexFloats;
        if (lightmapCoords) {
            glTexCoord2f(coords[k].u, coords[k].v);
        } else {
            glTexCoord2f(vertex[kTexCoordOffset], vertex[kTexCoordOffset + 1]);
        }
        glVertex3fv(vertex + kPositionOffset);
    }
    glEnd();
}

void Lightmap_DrawLiteralBlended(const float* vertices, unsigned int triangleCount,
                                 const LightmapVertex* coords, const unsigned int* textures) {
    for (unsigned int t = 0; t < triangleCount; t++) {
        unsigned int page = coords[t * 3].page;
        if (page >= LightmapSet::kNoPage) {
            continue;
        }
        GLint base = 0;
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &base);
        glBindTexture(GL_TEXTURE_2D, textures[page]);
        DrawTriangle(vertices, coords, t * 3, true);
        glEnable(GL_BLEND);
        glBlendFunc(GL_DST_COLOR, GL_ZERO);
        glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(base));
        DrawTriangle(vertices, coords, t * 3, false);
        glDisable(GL_BLEND);
    }
}
