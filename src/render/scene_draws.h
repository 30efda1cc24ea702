// Plugs the presentation into the main loop: the title menu's load, tick and
// draw, the game view (also drawn by the post-effect's capture pass) and the
// closing-scene draw.
#pragma once

// Sets the scene entries of g_hooks and the closing-scene draw; after InstallGameHooks.
void InstallSceneDraws();
