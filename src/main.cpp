// The entry point: everything happens in VantleMain (the start-up order, the
// main loop and shutdown live in app/); the subsystems plug in first.
// Arguments are ignored.
#include "app/audio_hooks.h"
#include "app/developer_hooks.h"
#include "app/main_loop.h"
#include "app/net_hooks.h"
#include "app/resource_commands.h"
#include "game/game_hooks.h"
#include "render/draw_hooks.h"
#include "render/scene_draws.h"

int main() {
    InstallNetHooks();
    InstallResourceHooks();
    InstallAudioHooks();
    InstallGameHooks();
    InstallDrawHooks();
    InstallSceneDraws();
    InstallDeveloperHooks();
    return VantleMain();
}
