// The two closing scenes: "levels\done.vlc" after the last level and
// "levels\end.vlc" after the last life. The scene's entities make a prop, a
// dancer or a giant foot that descends on the prop; after about a second any
// key but the modifiers and Escape returns to the title menu.
#pragma once

class GameObject;

// The closing-scene draw, installed by the game view; null until then.
extern void (*g_drawClosingScene)();

// Start-up: the next closing scene is the game-over one.
void InitClosingScene();
// Loads endScenePath (once per visit) and builds the scene's objects.
void StartClosingScene();
// One tick of the closing scene.
void UpdateClosingScene();
// One step of the foot's 66-step descent; withSound plays the splats (the closing scene only).
void FootStep(GameObject* foot, int withSound);
