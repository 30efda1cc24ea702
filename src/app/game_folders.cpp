#include "app/game_folders.h"

#include <cstdio>
#include <cstring>

#include "app/config_file.h"
#include "app/console.h"
#include "platform/sys_files.h"
#include "platform/sys_folders.h"
#include "platform/sys_message_box.h"
#include "resources/resource_manager.h"

static SysFolders s_folders;

static const char kAutoexecTemplate[] =
    "// autoexec.vbt: runs at every start, after the loading screen is up and before the\r\n"
    "// title scene. One console command per line; lines beginning with // are comments.\r\n"
    "// Console lines given on the command line (vantle2 +VID_FOV 45) run after these.\r\n"
    "// Examples:\r\n"
    "//   VID_FOV 45\r\n"
    "//   DEBUG 1\r\n"
    "//   LOCATION_FOG_END 2000\r\n";

static void ReportMissingData() {
    char text[3 * kSysPathSize];
    int length = snprintf(text, sizeof(text), "No game data found. Folders searched:");
    for (int i = 0; i < kSysDataCandidates && length < static_cast<int>(sizeof(text)); i++) {
        length += snprintf(text + length, sizeof(text) - length, "\n%s", s_folders.searched[i]);
    }
    Sys_MessageBox(text, "Error", MB_OK);
}

// First start: what the player finds in their folder.
static void FurnishPlayerFolder() {
    if (!Sys_FileStamp("autoexec.vbt", nullptr, nullptr, nullptr)) {
        Sys_WriteFileAtomic("autoexec.vbt", kAutoexecTemplate, sizeof(kAutoexecTemplate) - 1);
    }
    Sys_MakeDirectory("data");
}

int EnterGameFolders() {
    Sys_FindFolders(&s_folders);
    if (s_folders.layout == SysLayoutTree) {
        return 1;
    }
    // Package paths are built in 256 bytes: a data folder much longer than that is as good as none.
    char* base = g_resources.baseDirectory;
    if (s_folders.layout == SysLayoutNoData ||
        snprintf(base, sizeof(g_resources.baseDirectory), "%s", s_folders.installedData) > 200) {
        base[0] = 0;
        ReportMissingData();
        return 0;
    }
    int player = Sys_EnterPlayerFolder(&s_folders);
    g_console.Print("Game data: %s", s_folders.installedData);
    if (player) {
        FurnishPlayerFolder();
        g_console.Print("Player folder: %s", s_folders.player);
    } else {
        g_console.AddLine("No player folder could be made (see HOME, XDG_DATA_HOME): nothing will be saved");
    }
    return 1;
}

void SaveConfig() {
    if (s_folders.layout == SysLayoutTree) {
        WriteConfig("config.vbt");  // a configuration that cannot be written is silently skipped
        return;
    }
    char reason[256];
    if (!s_folders.player[0]) {
        snprintf(reason, sizeof(reason), "there is no player folder");
    } else if (!WriteConfig("config.vbt")) {
        snprintf(reason, sizeof(reason), "%s", Sys_WriteErrorText());
    } else {
        return;
    }
    g_console.Print("config.vbt not written: %s", reason);
    fprintf(stderr, "vantle2: config.vbt not written in %s: %s\n",
            s_folders.player[0] ? s_folders.player : "any folder", reason);
}
