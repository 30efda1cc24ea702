// The title menu: the scene the program opens on and returns to after a game.
// A garden location whose plants, bushes and trees sway and whose clouds
// drift, leaves that fall, sparkles and smoke, a piano keyboard whose keys play
// the menu music's piano roll, the player character dancing, a spinning 3D
// title, the title images, a scrolling credits line and the game's HUD frame.
//
// LoadMenuScene runs once at start-up; UpdateMenu is the scene's tick and
// DrawMenu (menu_draw.cpp) its draw. After the first second any key but the
// modifiers, Escape and the other codes 14 to 29 starts a game at level 1
// with three lives. The menu's state lives for the whole run: returning from
// a game restarts the music and the roll, nothing else.
#pragma once

#include <cstdint>

#include "render/piano_roll.h"

class Model;
class TextBatch;

extern Model* g_dancerModel;        // "logo\delver.vmd", owned, made by LoadMenuScene
extern float g_dancerFrame;         // animation position, 0 to 9
extern uint32_t g_dancerFrames[2];  // previous and current whole frame
extern TextBatch g_logoText;        // one entry: the credits line
extern float g_creditsX;            // x of the credits line on the canvas; 800 at start
extern PianoEvent g_pianoEvents[kPianoMaxEvents];
extern uint32_t g_pianoEventCount;
extern uint32_t g_pianoTick;  // 0 to 1983
extern uint8_t g_keyDown[kPianoKeyCount];
extern int32_t g_menuMusicStarted;
// 1: the keyboard's depth is laid down before the garden so that the garden skips what it
// covers (default 1; the picture is the same either way).
extern int g_menuDepthFirst;

// The credits line: the game, its year, and the libraries and fonts it is built with.
extern const char kCreditsLine[];

// Loads the scenery, models, credits and flare of the title menu (once, at start-up).
void LoadMenuScene();
// Frees what LoadMenuScene made that no global destructor frees (the dancer).
void ReleaseMenuScene();
// One 20 ms tick of the title menu.
void UpdateMenu();
// The start key of this tick: the first virtual-key code from 13 to 149, other than 14 to 29,
// that is held once animClock is past 1.0; 0 when none.
int MenuStartKey();
// One tick of the piano roll: events at g_pianoTick set g_keyDown, the clock moves on and loops.
void StepPianoRoll();
// Opens "piano.vpr" into g_pianoEvents (count 0 when missing or bad); 1 when read.
int LoadPianoRoll();
// The draw of the title menu (sceneDraw while the menu shows).
void DrawMenu();
// Draws a flare list's elements for its origin, unless the origin is hidden, off screen or
// 1000 units or more from the camera (after Begin2D, with SetCamera's captured matrices).
void DrawFlares(const class FlareList& flares);
