// Plugs the presentation into the main loop: the title menu's load, tick and
// draw, the game view (also drawn by the post-effect's capture pass) and the
// closing-scene draw. Each scene tick is followed by a console line whenever
// the program has moved to another scene or level ("Title menu", "Level 01:
// <name>", "Closing scene <file>"), so a run can be followed from its log.
#pragma once

// Sets the scene entries of g_hooks and the closing-scene draw; after InstallGameHooks.
void InstallSceneDraws();
