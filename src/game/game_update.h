// The game scene's tick and its one-time set-up. UpdateGame runs the debug
// keys and the pause, the air step, the particles, the player's input,
// motion and contacts, the camera, the emitters and the object pass, always
// in that order; a death, the finish, the end of the tally or a debug key
// ends the tick where it happens.
#pragma once

// One 20 ms tick of the game scene.
void UpdateGame();
// The follow camera: 505 units out from the vertical axis on the player's bearing.
void PlaceGameCamera();
// Dust and sparkles from the level's emitter entities.
void RunParticleEmitters();
// One-time set-up: the ten sounds, the HUD lines, an empty object table.
void InitGame();
