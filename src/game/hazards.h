// The rules that make a level a race against the air: deaths, the finish,
// keys and the doors they open, collapsing platforms, and the air step that
// drains the air or, after the finish, tallies it into points.
#pragma once

// What killed the player last: "spikes", "enemy", "fall" or "air" (for replays and reports).
extern const char* g_deathCause;

// Every death: the die sound, one life less, and the level restarts (or the game-over scene).
void KillPlayer();
// The finish: music off, a blue flash, the level complete; the tally starts next tick.
void CompleteLevel();
// Gives every "exit" object 80 steps of rising.
void OpenExits();
// The air step of the tick (only with a player); 1 when it ended the tick.
int AirStep();
// The player collects the key in a slot: sound, the key gone, 100 points, doors open after the last.
void CollectKey(int slot);
// The player stands on the collapsing platform in a slot: it sinks, and gives way on the sixth tick.
void CollapseUnderPlayer(int slot);
// Each tick: a collapsing platform that has started plays its frames.
void AnimateCollapse(class GameObject* object);
// Each tick: an opening door rises one unit with its box.
void RaiseExit(int slot);
