#include "render/draw_hooks.h"

#include "app/scene_hooks.h"
#include "ui/engine_texts.h"

void InstallDrawHooks() {
    g_hooks.fillTextBatches = FillEngineTextBatches;
}
