// The transport's places in the program: start-up starts the socket layer
// through g_hooks.netStartup (and logs the result), and "VID_RESTART" points
// the endpoints' arrival notification at the new window through
// g_hooks.rebindNetwork. Nothing else of the transport runs unless a mod opens
// an endpoint.
#pragma once

// Sets g_hooks.netStartup and g_hooks.rebindNetwork.
void InstallNetHooks();
