// The screen texture: one texture of window-dependent size that a rendered
// frame is copied into (the glow post-effect draws it over the next frame).
// Its sides are the largest powers of two not above the window's, at most
// 2048; an 800 x 600 window gives 512 x 512. It dies with the GL context, so
// a video restart releases it and creates it again. One global instance.
#pragma once

class ScreenTexture {
public:
    unsigned int glTexture;  // 0 when none exists
    unsigned int width;      // texels; 512 until created
    unsigned int height;

    ScreenTexture();
    ~ScreenTexture();

    // Sizes and allocates the texture for a window of the given size.
    void CreateForWindow(unsigned int windowWidth, unsigned int windowHeight);
    // Deletes the texture.
    void Release();
    // Copies the lower-left width x height pixels of the colour buffer into the texture.
    void Capture();
    // Binds the texture with 2D texturing on, or switches texturing off when there is none.
    void Bind();
    // The texture size for a window: each side the largest power of two not above it, at most 2048.
    static void SizeForWindow(unsigned int windowWidth, unsigned int windowHeight, unsigned int* width,
                              unsigned int* height);
};

extern ScreenTexture g_screenTexture;
