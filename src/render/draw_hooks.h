// Where the text and drawing code plugs into start-up: the engine's fixed text
// batches (the loading caption among them) are filled before the first loading
// screen is drawn.
#pragma once

// Sets the start-up hooks this subsystem serves (once, before VantleMain).
void InstallDrawHooks();
