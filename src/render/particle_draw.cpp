#include "render/particle_draw.h"

#include <GL/gl.h>

#include "app/gl_window.h"
#include "game/particles.h"
#include "resources/texture_manager.h"

static float Lerp(float a, float b, float t) {
    return (b - a) * t + a;
}

void ParticleFrameSpan(const Particle& particle, float* u0, float* u1) {
    float count = particle.frameCount ? particle.frameCount : 1.0f;
    float f = static_cast<float>(static_cast<int>(particle.frame));
    *u0 = f / count;
    *u1 = (f + 1.0f) / count;
}

static void DrawOne(const Particle& p) {
    float t = p.life;
    float w = Lerp(p.sizeStart[0], p.sizeEnd[0], t);
    float h = Lerp(p.sizeStart[1], p.sizeEnd[1], t);
    float alpha = Lerp(p.alphaStart, p.alphaEnd, t);
    if (p.behaviour == 1) {
        glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    } else {
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    }
    g_textures.Bind(p.texture);
    glColor4f(Lerp(p.colourStart[0], p.colourEnd[0], t), Lerp(p.colourStart[1], p.colourEnd[1], t),
              Lerp(p.colourStart[2], p.colourEnd[2], t), alpha);
    glPushMatrix();
    glTranslatef(p.position[0], p.position[1], p.position[2]);
    // Undo the camera's turn so the quad faces the eye.
    glRotatef(g_window.renderCamera[4] - 180.0f, 0.0f, 1.0f, 0.0f);
    glRotatef(g_window.renderCamera[3], -1.0f, 0.0f, 0.0f);
    glRotatef(p.rotation, 0.0f, 0.0f, 1.0f);
    float u0, u1;
    ParticleFrameSpan(p, &u0, &u1);
    float x = w * 0.5f, y = h * 0.5f;
    glBegin(GL_TRIANGLES);
    glTexCoord2f(u1, 0.0f);
    glVertex3f(x, -y, 0.0f);
    glTexCoord2f(u1, 1.0f);
    glVertex3f(x, y, 0.0f);
    glTexCoord2f(u0, 1.0f);
    glVertex3f(-x, y, 0.0f);
    glTexCoord2f(u0, 1.0f);
    glVertex3f(-x, y, 0.0f);
    glTexCoord2f(u0, 0.0f);
    glVertex3f(-x, -y, 0.0f);
    glTexCoord2f(u1, 0.0f);
    glVertex3f(x, -y, 0.0f);
    glEnd();
    glPopMatrix();
}

void DrawParticles() {
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glDepthMask(GL_FALSE);
    glDisable(GL_LIGHTING);
    glMatrixMode(GL_MODELVIEW);
    for (int i = drawCount - 1; i >= 0; i--) {
        if (drawList[i]) {
            DrawOne(*drawList[i]);
        }
    }
    glDisable(GL_BLEND);
    glDepthMask(GL_TRUE);
}
