#include "resources/texture_manager.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <cstring>

#include "resources/package.h"
#include "resources/resource_manager.h"
#include "resources/tga_image.h"

TextureManager::TextureManager() : resources(nullptr) {
    memset(names, 0, sizeof(names));
    memset(glTextures, 0, sizeof(glTextures));
}

TextureManager::~TextureManager() {
    Purge();
}

void TextureManager::Purge() {
    for (int i = 0; i < kSlots; i++) {
        if (glTextures[i]) {
            glDeleteTextures(1, &glTextures[i]);
        }
    }
    memset(glTextures, 0, sizeof(glTextures));
    memset(names, 0, sizeof(names));
}

int TextureManager::FindSlot(const char* name) const {
    for (int i = 0; i < kSlots; i++) {
        if (names[i][0] && PackageNamesEqual(names[i], name)) {
            return i;
        }
    }
    return -1;
}

static void StoreLowerCase(char* out, const char* name) {
    size_t i = 0;
    for (; name[i] && i < 259; i++) {
        char c = name[i];
        out[i] = (c >= 'A' && c <= 'Z') ? c + ('a' - 'A') : c;
    }
    out[i] = 0;
}

// Mipmapped for opaque images; one level for images with alpha.
static unsigned int Upload(const TgaImage& image) {
    unsigned int texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    if (image.bits == 24) {
        gluBuild2DMipmaps(GL_TEXTURE_2D, 3, image.width, image.height, GL_RGB, GL_UNSIGNED_BYTE,
                          image.pixels);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_NEAREST);
    } else {
        glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, image.width, image.height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                     image.pixels);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    }
    return texture;
}

int TextureManager::LoadSlot(const char* name, const unsigned char* bytes, unsigned int length, int slot) {
    if (!name || slot < 0 || slot >= kSlots) {
        return 0;
    }
    TgaImage image;
    if (!TgaDecode(bytes, length, &image)) {
        return 0;
    }
    // Rows of 24-bit pixels are packed tightly, whatever the width.
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTextures[slot] = Upload(image);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    TgaFree(&image);
    if (!glTextures[slot]) {
        return 0;  // no GL object (no context): the slot stays free
    }
    StoreLowerCase(names[slot], name);
    return 1;
}

int TextureManager::Bind(const char* name) {
    // An empty name (a piece textured ".\") draws untextured like a null one; looked up, it
    // would find no file and take no slot, leaving the last piece's texture on.
    if (!resources || !name || !name[0]) {
        glDisable(GL_TEXTURE_2D);
        return 1;
    }
    glEnable(GL_TEXTURE_2D);
    int slot = FindSlot(name);
    if (slot >= 0) {
        if (glTextures[slot]) {
            glBindTexture(GL_TEXTURE_2D, glTextures[slot]);
        } else {
            glDisable(GL_TEXTURE_2D);
        }
        return 1;
    }
    for (slot = 0; slot < kSlots && names[slot][0]; slot++) {
    }
    if (slot == kSlots) {
        return 0;
    }
    unsigned char* bytes = resources->Open(name);
    if (!bytes) {
        StoreLowerCase(names[slot], name);  // remembered as missing
        glTextures[slot] = 0;
        return 0;
    }
    int loaded = LoadSlot(name, bytes, resources->bufferSize, slot);
    resources->Release();
    if (!loaded) {
        return 0;
    }
    glBindTexture(GL_TEXTURE_2D, glTextures[slot]);
    return 1;
}
