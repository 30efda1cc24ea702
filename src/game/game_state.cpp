#include "game/game_state.h"

#include <cstddef>

uint32_t highScore;
uint32_t score;
int32_t level;
int32_t loadedLevel;
int32_t lives = 3;
GameObject* player;
int32_t playerIndex;
float air = 100.0f;
uint8_t onGround;
uint8_t onConveyor;
int32_t levelComplete;
int32_t tallyCountdown;
float lastGround[3];
char endScenePath[256];
uint8_t paused;
float pauseAngle;
float animClock;
