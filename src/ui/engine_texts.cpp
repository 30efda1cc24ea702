#include "ui/engine_texts.h"

#include "ui/text_batch.h"

const char kEditionLabel[] = "Linux edition";

static void FillNetDebugText() {
    static const char* const kLines[6] = {"Net debug",  "Seq. in: 0", "Seq.out: 0",
                                          "Packets: 0", "KB/sec : 0", "Ping   : 0"};
    static const float kRowY[6] = {32, 46, 60, 74, 104, 118};
    for (int i = 0; i < 6; i++) {
        g_netDebugText.AddEntry(kLines[i], 680, kRowY[i], 780, 10, 1.0f, 0);
    }
}

void FillEngineTextBatches() {
    g_loadingText.AddEntry("LOADING", 0, 320, 800, 10, 1.0f, 1);
    for (int i = 0; i < 9; i++) {
        g_debugValues.AddEntry("", 12, 32.0f + 16.0f * i, 800, 12, 1.0f, 0);
    }
    FillNetDebugText();
    g_debugTitles.AddEntry("Preparing...", 8, 8, 800, 20, 1.0f, 0);
    g_debugTitles.AddEntry("Vantle", 590, 555, 800, 32, 1.0f, 0);
    g_debugTitles.AddEntry("2", 720, 555, 800, 18, 1.0f, 0);
    g_debugTitles.AddEntry("Build 1010", 710, 8, 80, 8, 1.0f, 2);
    g_debugTitles.AddEntry(kEditionLabel, 710, 16, 80, 8, 1.0f, 2);
    g_loadingText.Build();
    g_debugValues.Build();
    g_netDebugText.Build();
    g_debugTitles.Build();
}
