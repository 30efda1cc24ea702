// The network statistics panel: g_netDebugText holds a title line and five
// figure lines, filled with zeros at start-up. Refreshing rewrites the figure
// lines from one endpoint's statistics (the host's while its socket is open,
// else the peer's) and rebuilds the batch, so whoever draws the panel shows
// the traffic of the endpoint actually in use.
#pragma once

class NetEndpoint;
class TextBatch;

// Index of the first figure line ("Seq. in") in the panel batch.
const int kNetPanelFirstFigure = 1;

// Writes endpoint's five figure lines into entries 1 to 5 of panel and rebuilds it;
// 0 (and nothing changed) when the panel does not hold its six lines.
int NetPanel_Show(const NetEndpoint& endpoint, TextBatch& panel);
// Shows the host's figures while its socket is open, else the peer's, in g_netDebugText,
// closing the endpoint's measuring window first when a second or more has passed.
int NetPanel_Refresh();
