// Game-state globals shared between the rules of play, the console and the
// configuration file. The game adds its own state here.
#pragma once

#include <cstdint>

// The best score: grows during play, set directly by "HIGHSCORE", saved in config.vbt when non-zero.
extern uint32_t highScore;
