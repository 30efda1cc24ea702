// Drawing a mesh multiplied by its lightmap. The lightmap page can change from
// one triangle to the next, so the plain way is triangle by triangle in
// immediate mode, binding each triangle's page: with ARB multitexture the base
// texture sits on unit 0 and the page on unit 1 (modulate), without it every
// triangle is drawn twice, first the page and then the base texture blended
// over it as destination x source. Triangles whose page is 128 or more carry
// no lightmap and are not drawn at all.
//
// That literal path costs one glBegin/glEnd (two without multitexture) per
// triangle. The batched path (lightmap_batch.h) draws the same triangles, with
// the same picture, as one vertex array per page; it is the default, and the
// literal path stays selectable for comparison.
#pragma once

struct LightmapVertex;

// How GlWindow::DrawLightmappedMesh draws.
enum LightmapDrawMode {
    LightmapDrawBatched = 0,  // one array draw per page (default)
    LightmapDrawLiteral = 1,  // one immediate-mode triangle at a time
};

// Batched or literal drawing of lightmapped meshes.
extern int g_lightmapDrawMode;
// When set, the two-pass blending path is used even where multitexture exists.
extern int g_lightmapForceBlend;

// True when the ARB multitexture entry points exist and blending is not forced.
bool Lightmap_UseMultitexture();
// Triangle-by-triangle drawing with the page on texture unit 1.
void Lightmap_DrawLiteralMultitexture(const float* vertices, unsigned int triangleCount,
                                      const LightmapVertex* coords, const unsigned int* textures);
// Triangle-by-triangle drawing in two blended passes on one texture unit.
void Lightmap_DrawLiteralBlended(const float* vertices, unsigned int triangleCount,
                                 const LightmapVertex* coords, const unsigned int* textures);
