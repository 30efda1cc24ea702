// The transport's places in the program: start-up starts the socket layer
// through g_hooks.netStartup (and logs the result), and "VID_RESTART" points
// the endpoints' arrival notification at the new window through
// g_hooks.rebindNetwork; every 100 ms g_hooks.refreshNetPanel brings the
// network panel's figures up to date. Nothing else of the transport runs unless
// a mod opens an endpoint.
#pragma once

// Sets g_hooks.netStartup, g_hooks.rebindNetwork and g_hooks.refreshNetPanel.
void InstallNetHooks();
