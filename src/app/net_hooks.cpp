#include "app/net_hooks.h"

#include "app/gl_window.h"
#include "app/scene_hooks.h"
#include "net/net_endpoint.h"
#include "net/net_panel.h"

// Only endpoints that asked for notification follow the window; polled ones stay as they are.
static void RebindNetwork() {
    NetMoveNotifications(g_window.window);
}

static void RefreshNetPanel() {
    NetPanel_Refresh();
}

void InstallNetHooks() {
    g_hooks.netStartup = NetStartup;
    g_hooks.rebindNetwork = RebindNetwork;
    g_hooks.refreshNetPanel = RefreshNetPanel;
}
