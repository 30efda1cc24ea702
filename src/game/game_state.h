// Game-state globals shared between the rules of play, the console, the
// configuration file and the game view. Single instances, zero or their
// starting values before anything runs; the rules change them tick by tick.
#pragma once

#include <cstdint>

class GameObject;
class TextBatch;

// The best score: grows during play, set directly by "HIGHSCORE", saved in config.vbt when non-zero.
extern uint32_t highScore;
// Points of the current game; a new game goes on from where the last one ended.
extern uint32_t score;
// Number of the level to play (the title menu sets 1).
extern int32_t level;
// Number of the level whose location is in memory.
extern int32_t loadedLevel;
// Lives left.
extern int32_t lives;
// The player's object (null in a level without one) and its slot.
extern GameObject* player;
extern int32_t playerIndex;
// Air left: 100 at every level start, drained each tick, tallied into points at the finish.
extern float air;
// The contact passes set these each tick.
extern uint8_t onGround;
extern uint8_t onConveyor;
// 1 from the touch of the finish until the next level loads.
extern int32_t levelComplete;
// Ticks to the next tally blip.
extern int32_t tallyCountdown;
// The player's position when it last stood on something.
extern float lastGround[3];
// Location file of the next closing scene.
extern char endScenePath[256];
// The pause and the angle counter of the camera circling the player meanwhile.
extern uint8_t paused;
extern float pauseAngle;
// Scene clock in seconds, +0.02 per tick; the scene draws animate with it.
extern float animClock;

// The game's HUD text batches: the level title, the score line pair, "Completed!".
extern TextBatch g_scoreText;
extern TextBatch g_levelTitleText;
extern TextBatch g_completedText;
