#include "ui/debug_panel.h"

#include "app/gl_window.h"
#include "app/input.h"
#include "app/scene_hooks.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/player.h"
#include "resources/location.h"
#include "ui/text_batch.h"

static const int kValueLines = 9;

// Lines from the first unused one up to the last are emptied.
static void Finish(const char* title, int used) {
    g_debugTitles.SetText(0, title);
    for (int i = used; i < kValueLines; i++) {
        g_debugValues.SetText(i, "");
    }
    g_debugTitles.Build();
    g_debugValues.Build();
    g_window.framesDrawn = 0;
    ticksRun = 0;
}

static void GeneralPanel() {
    g_debugValues.SetTextF(0, "FPS  : %i", static_cast<int>(g_window.framesDrawn * 10));
    g_debugValues.SetTextF(1, "Polys: %i", static_cast<int>(g_window.polyCount));
    g_debugValues.SetTextF(2, "Ticks: %i", ticksRun * 10);
    g_debugValues.SetTextF(3, "Time : %.2f", animClock);
    g_debugValues.SetTextF(4, "FOV  : %.2f", g_window.fov);
    Finish("General", 5);
}

static void CameraPanel() {
    const float* camera = g_window.renderCamera;
    g_debugValues.SetTextF(0, "CamX : %.2f", camera[0]);
    g_debugValues.SetTextF(1, "CamY : %.2f", camera[1]);
    g_debugValues.SetTextF(2, "CamZ : %.2f", camera[2]);
    g_debugValues.SetTextF(3, "CamYw: %.2f", camera[4]);
    g_debugValues.SetTextF(4, "CamPt: %.2f", camera[3]);
    Finish("Camera", 5);
}

static void MousePanel() {
    g_debugValues.SetTextF(0, "2D.x: %.2f", g_window.mouse2D[0]);
    g_debugValues.SetTextF(1, "2D.y: %.2f", g_window.mouse2D[1]);
    g_debugValues.SetTextF(2, "3D.x: %.2f", g_window.mouse3D[0]);
    g_debugValues.SetTextF(3, "3D.y: %.2f", g_window.mouse3D[1]);
    g_debugValues.SetTextF(4, "3D.z: %.2f", g_window.mouse3D[2]);
    g_debugValues.SetTextF(5, "Down: %i", g_dragState);
    g_debugValues.SetTextF(6, "Joy_Angle: %.2f", g_joystickAngle);
    g_debugValues.SetTextF(7, "Joy_X/Y  : %.2f, %.2f", g_joystickX, g_joystickY);
    Finish("Mouse", 8);
}

static void PlayerPanel() {
    const float* p = player->position;
    const float* v = player->velocity;
    g_debugValues.SetTextF(0, "Pos : %.2f, %.2f, %.2f", p[0], p[1], p[2]);
    g_debugValues.SetTextF(1, "Vel : %.2f, %.2f, %.2f", v[0], v[1], v[2]);
    Finish("Player", 2);
}

static void LightingPanel() {
    const LightmapSet& set = g_location.lightmaps;
    int bytes = static_cast<int>(set.Size());
    g_debugValues.SetTextF(0, "Lights: %i", static_cast<int>(set.lightCount));
    g_debugValues.SetTextF(1, "Sheets: %i", static_cast<int>(set.pageCount));
    g_debugValues.SetTextF(2, "Memory: %ikb (%i bytes)", bytes >> 10, bytes);
    Finish("Lighting", 3);
}

void RefreshDebugPanel() {
    switch (g_debugMode) {
        case 0:
            GeneralPanel();
            break;
        case 1:
            CameraPanel();
            break;
        case 2:
            MousePanel();
            break;
        case 3:
            if (player) {
                PlayerPanel();
            }
            break;
        case 4:
            LightingPanel();
            break;
    }
}
