#include "game/game_state.h"

uint32_t highScore;
