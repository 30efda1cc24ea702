// Every engine service is one global object, and all of them are defined here,
// in one translation unit, so that C++ constructs them in exactly this order
// before main runs and destroys them in the reverse order after it returns.
// Each subsystem's header declares its own extern. Keep the order: it is the
// order the services depend on one another at shutdown.
#include "app/console.h"
#include "app/frame_timer.h"
#include "app/gl_window.h"
#include "app/scene_camera.h"
#include "audio/music_player.h"
#include "audio/sound_system.h"
#include "game/collision_world.h"
#include "game/demo.h"
#include "game/game_state.h"
#include "net/net_endpoint.h"
#include "render/lightmap_batch.h"
#include "resources/flare_list.h"
#include "resources/location.h"
#include "resources/model.h"
#include "resources/resource_manager.h"
#include "resources/screen_texture.h"
#include "resources/texture_manager.h"
#include "ui/debug_menu.h"
#include "ui/gui_window.h"
#include "ui/text_batch.h"

Location closingLocation;        //  1 end location (closing scenes)
Model lampModel;                 //  2 game model (level loading)
CollisionWorld g_collision;      //  3
TextBatch g_scoreText;           //  4 HUD score text
TextBatch g_levelTitleText;      //  5 level title text
TextBatch g_completedText;       //  6 completion text
Location g_menuLocation;         //  7 menu location (title menu)
FlareList g_flares;              //  8 flare set
Model g_keyboardModel;           //  9 logo model 1 (title menu)
Model g_logoTextModel;           // 10 logo model 2 (title menu)
TextBatch g_logoText;            // 11 logo text (title menu credits)
GlWindow g_window;               // 12
LightmapBatchCache g_lightmapBatches;  // 12, with the window: its lightmapped meshes as arrays
SoundSystem g_sound;             // 13
TextureManager g_textures;       // 14
GuiWindow g_gui;                 // 15
SceneCamera g_camera;            // 16 (no destructor)
ResourceManager g_resources;     // 17
TextBatch g_debugValues;         // 18
TextBatch g_netDebugText;        // 19
TextBatch g_debugTitles;         // 20
TextBatch g_loadingText;         // 21
Console g_console;               // 22
MusicPlayer g_music;             // 23
NetEndpoint g_netHost(NetEndpoint::kHost);  // 24
NetEndpoint g_netPeer(NetEndpoint::kPeer);  // 25
ScreenTexture g_screenTexture;   // 26
Location g_location;             // 27
DebugMenu g_debugMenu;           // 28

// The frame timer has no constructor: it is zero before anything runs, so its place
// in the order does not matter.
FrameTimer g_timer;

// The demo recorder and player: created after every service it drives and destroyed before them.
DemoDriver g_demo;
