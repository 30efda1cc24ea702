#include "net/net_panel.h"

#include "net/net_endpoint.h"
#include "platform/sys_clock.h"
#include "ui/text_batch.h"

int NetPanel_Show(const NetEndpoint& endpoint, TextBatch& panel) {
    if (panel.count < kNetPanelFirstFigure + 5) {
        return 0;
    }
    char lines[5][32];
    endpoint.stats.FormatLines(lines);
    for (int i = 0; i < 5; i++) {
        panel.SetText(kNetPanelFirstFigure + i, lines[i]);
    }
    panel.Build();
    return 1;
}

// The rate is brought up to date first, so a quiet spell shows as a falling
// figure even while nobody calls the endpoint's Update.
int NetPanel_Refresh() {
    NetEndpoint& shown = g_netHost.udp.socket >= 0 ? g_netHost : g_netPeer;
    shown.stats.Tick(Sys_TickCount());
    return NetPanel_Show(shown, g_netDebugText);
}
