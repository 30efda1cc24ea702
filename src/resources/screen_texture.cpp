#include "resources/screen_texture.h"

#include <GL/gl.h>

#include <cstdlib>

ScreenTexture::ScreenTexture() : glTexture(0), width(512), height(512) {}

ScreenTexture::~ScreenTexture() {
    if (glTexture) {
        Release();
    }
}

void ScreenTexture::SizeForWindow(unsigned int windowWidth, unsigned int windowHeight, unsigned int* outWidth,
                                  unsigned int* outHeight) {
    unsigned int w = 2048, h = 2048;
    while (w > windowWidth && w > 1) {
        w /= 2;
    }
    while (h > windowHeight && h > 1) {
        h /= 2;
    }
    *outWidth = w;
    *outHeight = h;
}

void ScreenTexture::CreateForWindow(unsigned int windowWidth, unsigned int windowHeight) {
    SizeForWindow(windowWidth, windowHeight, &width, &height);
    // Three components of 32-bit zeros per texel: the first frame shows black.
    unsigned int* zeros = static_cast<unsigned int*>(calloc(static_cast<size_t>(width) * height * 3, 4));
    if (!zeros) {
        return;
    }
    glGenTextures(1, &glTexture);
    glBindTexture(GL_TEXTURE_2D, glTexture);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP);
    glTexImage2D(GL_TEXTURE_2D, 0, 3, width, height, 0, GL_RGB, GL_UNSIGNED_INT, zeros);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    free(zeros);
}

void ScreenTexture::Release() {
    if (glTexture) {
        glDeleteTextures(1, &glTexture);
    }
    glTexture = 0;
}

void ScreenTexture::Capture() {
    if (!glTexture) {
        return;
    }
    glBindTexture(GL_TEXTURE_2D, glTexture);
    glCopyTexImage2D(GL_TEXTURE_2D, 0, GL_RGB, 0, 0, width, height, 0);
}

void ScreenTexture::Bind() {
    if (!glTexture) {
        glDisable(GL_TEXTURE_2D);
        return;
    }
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, glTexture);
}
