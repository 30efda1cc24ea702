#include "app/developer_hooks.h"

#include "app/scene_hooks.h"
#include "ui/console_keys.h"

void InstallDeveloperHooks() {
    g_hooks.consoleKeys = ConsoleKeys;
}
