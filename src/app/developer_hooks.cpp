#include "app/developer_hooks.h"

#include "app/scene_hooks.h"
#include "render/developer_widgets.h"
#include "ui/console_keys.h"
#include "ui/debug_menu.h"
#include "ui/debug_panel.h"
#include "ui/gui_window.h"

void InstallDeveloperHooks() {
    g_hooks.consoleKeys = ConsoleKeys;
    g_hooks.refreshDebugPanel = RefreshDebugPanel;
    g_hooks.debugMenuUpdate = UpdateDebugMenu;
    g_hooks.guiUpdate = UpdateGuiWindow;
    InstallDeveloperDraws();
}
