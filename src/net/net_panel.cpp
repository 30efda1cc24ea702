#include "net/net_panel.h"

#include "net/net_endpoint.h"
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

int NetPanel_Refresh() {
    const NetEndpoint& shown = g_netHost.udp.socket >= 0 ? g_netHost : g_netPeer;
    return NetPanel_Show(shown, g_netDebugText);
}
