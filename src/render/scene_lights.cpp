#include "render/scene_lights.h"

#include <GL/gl.h>

#include <cmath>

#include "app/gl_window.h"
#include "resources/lightmap_set.h"

// A warm key from the sides and behind, a white light from the front, grey from
// above and below.
const StudioLight kStudioLights[kStudioLightCount] = {
    {{1, 0, 0}, {0.8f, 0.7f, 0.6f}},  {{-1, 0, 0}, {0.8f, 0.7f, 0.6f}}, {{0, 0, 1}, {1.0f, 1.0f, 1.0f}},
    {{0, 0, -1}, {0.8f, 0.7f, 0.6f}}, {{0, -1, 0}, {0.8f, 0.8f, 0.8f}}, {{0, 1, 0}, {0.8f, 0.8f, 0.8f}},
};

static const float kBlack[4] = {0.0f, 0.0f, 0.0f, 1.0f};

int ChooseLocationLights(const Light* lights, unsigned int lightCount, const float* point, float lightFactor,
                         GlLightSetting out[kGlLightCount]) {
    int used = 0;
    for (unsigned int i = 0; i < lightCount && used < kGlLightCount; i++) {
        const Light& light = lights[i];
        float fade = 1.0f;
        if (point) {
            float dx = light.position[0] - point[0];
            float dy = light.position[1] - point[1];
            float dz = light.position[2] - point[2];
            float distance = sqrtf(dx * dx + dy * dy + dz * dz);
            if (light.range < distance) {
                continue;
            }
            // A light of no range standing on the point keeps its full colour.
            fade = light.range > 0.0f ? 1.0f - distance / light.range : 1.0f;
        }
        GlLightSetting& setting = out[used++];
        for (int c = 0; c < 3; c++) {
            setting.diffuse[c] = light.colour[c] * lightFactor * fade;
            setting.position[c] = light.position[c];
        }
        setting.diffuse[3] = 1.0f;
        setting.position[3] = 1.0f;
    }
    return used;
}

static void DisableGlLights() {
    for (int i = 0; i < kGlLightCount; i++) {
        glDisable(GL_LIGHT0 + i);
    }
}

void GlWindow::SetStudioLights(float intensity) {
    DisableGlLights();
    for (int i = 0; i < kStudioLightCount; i++) {
        const StudioLight& light = kStudioLights[i];
        const float diffuse[4] = {light.diffuse[0] * intensity, light.diffuse[1] * intensity,
                                  light.diffuse[2] * intensity, 1.0f};
        const float position[4] = {light.direction[0], light.direction[1], light.direction[2], 0.0f};
        glLightfv(GL_LIGHT0 + i, GL_AMBIENT, kBlack);
        glLightfv(GL_LIGHT0 + i, GL_DIFFUSE, diffuse);
        glLightfv(GL_LIGHT0 + i, GL_POSITION, position);
        glEnable(GL_LIGHT0 + i);
    }
    glEnable(GL_LIGHTING);
}

void GlWindow::SetLocationLights(const LightmapSet* set, const float* point) {
    if (!set || set->lightCount == 0) {
        glDisable(GL_LIGHTING);
        return;
    }
    DisableGlLights();
    GlLightSetting settings[kGlLightCount];
    unsigned int count =
        set->lightCount < LightmapSet::kMaxLights ? set->lightCount : LightmapSet::kMaxLights;
    int used = ChooseLocationLights(set->lights, count, point, lightFactor, settings);
    for (int i = 0; i < used; i++) {
        glLightfv(GL_LIGHT0 + i, GL_DIFFUSE, settings[i].diffuse);
        glLightfv(GL_LIGHT0 + i, GL_AMBIENT, kBlack);
        // Positional and in world space: the camera is already on the model-view stack.
        glLightfv(GL_LIGHT0 + i, GL_POSITION, settings[i].position);
        glEnable(GL_LIGHT0 + i);
    }
    glEnable(GL_LIGHTING);
}
