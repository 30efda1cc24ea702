// Fixed-function lights for the scenes. Two rigs: the studio rig, six
// directional lights fixed to the eye for the title menu's foreground models,
// and the location rig, up to eight of a location's positional lights chosen
// for the object about to be drawn. GL has only eight lights, so a location
// with more is lit by the first eight in list order that reach the object,
// each fading linearly to black at its range.
//
// The choice itself is plain arithmetic (ChooseLocationLights) so it can be
// checked without a GL context; GlWindow::SetLocationLights only hands the
// result to GL.
#pragma once

struct Light;

// What one GL light receives from the location rig.
struct GlLightSetting {
    float diffuse[4];   // colour x light factor (x fall-off), alpha 1
    float position[4];  // world position, w = 1
};

// One light of the studio rig.
struct StudioLight {
    float direction[3];
    float diffuse[3];  // before the intensity scale
};

static const int kGlLightCount = 8;
static const int kStudioLightCount = 6;
extern const StudioLight kStudioLights[kStudioLightCount];

// Picks up to eight lights in list order; with point, only those whose range reaches it, dimmed
// by 1 - distance / range. Returns how many settings were written.
int ChooseLocationLights(const Light* lights, unsigned int lightCount, const float* point, float lightFactor,
                         GlLightSetting out[kGlLightCount]);
