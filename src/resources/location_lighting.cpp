// Lighting set-up of a location: the lights come from its "light" entities,
// and in rebuild mode every lightmap is baked again.
#include <strings.h>

#include <cstdlib>
#include <cstring>

#include "resources/lightmap_builder.h"
#include "resources/location.h"

// 1 when key (length n) is name, or name followed by one space, ignoring case.
static int KeyIs(const char* key, size_t n, const char* name) {
    size_t length = strlen(name);
    if (n == length + 1 && key[length] == ' ') {
        n = length;
    }
    return n == length && strncasecmp(key, name, length) == 0;
}

// Red, green and the rest as blue, split at commas; missing parts keep their value.
static void ParseColour(const char* value, float colour[3]) {
    for (int c = 0; c < 3 && value; c++) {
        colour[c] = static_cast<float>(atof(value));
        const char* comma = c < 2 ? strchr(value, ',') : nullptr;
        value = comma ? comma + 1 : nullptr;
    }
}

static void ParseLightLine(const char* line, float colour[3], float* range, int* shadows) {
    const char* equals = strchr(line, '=');
    if (!equals) {
        return;
    }
    size_t n = static_cast<size_t>(equals - line);
    const char* value = equals + 1;
    if (KeyIs(line, n, "color")) {
        ParseColour(value, colour);
    } else if (KeyIs(line, n, "dist")) {
        *range = static_cast<float>(atof(value));
    } else if (KeyIs(line, n, "shadows")) {
        *shadows = atoi(value) != 0;
    }
}

void ParseLightParams(const char* text, float colour[3], float* range, int* shadows) {
    if (!text) {
        return;
    }
    while (*text) {
        const char* end = strstr(text, "\r\n");
        size_t n = end ? static_cast<size_t>(end - text) : strlen(text);
        char* line = static_cast<char*>(malloc(n + 1));
        memcpy(line, text, n);
        line[n] = 0;
        ParseLightLine(line, colour, range, shadows);
        free(line);
        text += end ? n + 2 : n;
    }
}

// Adds a light for every entity whose name starts with "light" (case counts).
static void ReadLights(Location& location) {
    for (int i = 0; i < location.entityCount; i++) {
        const LocationEntity* entity = location.entities[i];
        if (!entity || strncmp(entity->name, "light", 5) != 0) {
            continue;
        }
        float colour[3] = {1.0f, 1.0f, 1.0f};
        float range = 1.0f;
        int shadows = 0;
        ParseLightParams(entity->params, colour, &range, &shadows);
        location.lightmaps.AddLight(entity->position[0], entity->position[1], entity->position[2], colour[0],
                                    colour[1], colour[2], range, shadows);
    }
}

void Location::SetupLighting(int keep) {
    if (keep) {
        lightmaps.lightCount = 0;
        ReadLights(*this);
        return;
    }
    RebuildLighting(nullptr, nullptr);
}

void Location::RebuildLighting(void (*progress)(float fraction, void* context), void* context) {
    lightmaps.Clear();
    ReadLights(*this);
    BuildLightmaps(*this, 0, progress, context);
    lightmaps.Upload();
}
