// The entry point: everything happens in VantleMain (the start-up order, the
// main loop and shutdown live in app/); the subsystems plug in first. The
// command line gives --help, --version or console lines (command_line.h).
#include <cstdio>

#include "app/audio_hooks.h"
#include "app/command_line.h"
#include "app/developer_hooks.h"
#include "app/main_loop.h"
#include "app/net_hooks.h"
#include "app/resource_commands.h"
#include "game/game_hooks.h"
#include "render/draw_hooks.h"
#include "render/scene_draws.h"

int main(int argc, char** argv) {
    switch (ParseCommandLine(argc, argv, &g_startCommands)) {
        case CommandLineHelp:
            fputs(CommandLineUsage(), stdout);
            return 0;
        case CommandLineVersion:
            printf("vantle2 %s\n", VANTLE_VERSION);
            return 0;
        case CommandLineBad:
            fputs(CommandLineUsage(), stderr);
            return 2;
    }
    InstallNetHooks();
    InstallResourceHooks();
    InstallAudioHooks();
    InstallGameHooks();
    InstallDrawHooks();
    InstallSceneDraws();
    InstallDeveloperHooks();
    return VantleMain();
}
