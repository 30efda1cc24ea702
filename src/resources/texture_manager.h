// Named textures: a cache of up to 256 TGA images uploaded as GL textures.
// The first Bind of a name opens it through the resource manager, decodes it
// (tga_image.h) and uploads it; later Binds of the same name, in any ASCII
// case, only bind. A name that is found nowhere is remembered as missing
// (its slot keeps the name with GL object 0), so it is never looked for again
// until Purge and draws untextured. A file that exists but does not decode is
// not remembered: every request tries it again.
//
// 24-bit images get a full mipmap chain (gluBuild2DMipmaps, minified with
// GL_LINEAR_MIPMAP_NEAREST); 32-bit images a single level minified with
// GL_LINEAR, so textures with alpha have no mipmaps. The manager prints nothing.
// One global instance, g_textures; its resources pointer is set at start-up and
// while it is null every Bind only switches texturing off.
#pragma once

class ResourceManager;

class TextureManager {
public:
    static const int kSlots = 256;

    char names[256][260];          // lower-cased names; empty marks a free slot
    unsigned int glTextures[256];  // GL objects; 0 in a missing or free slot
    ResourceManager* resources;

    TextureManager();
    ~TextureManager();

    // Binds the named texture, loading it on first use; a null or empty name switches 2D texturing off.
    // 1 when the name is bound or known missing, 0 when it could not be loaded or the table is full.
    int Bind(const char* name);
    // Deletes every GL texture and forgets every name, missing ones included.
    void Purge();
    // Decodes a TGA into slot and uploads it (the slot must be free); 1 when the slot now holds a texture.
    int LoadSlot(const char* name, const unsigned char* bytes, unsigned int length, int slot);
    // Slot that holds name (without case), or -1.
    int FindSlot(const char* name) const;
};

extern TextureManager g_textures;
