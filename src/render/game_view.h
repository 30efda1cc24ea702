// The game view and the closing-scene view: one frame of a level being
// played, and the same picture reduced to scenery and HUD frame for the two
// closing scenes. Both read everything anew each frame (camera, objects,
// location, game state) and change nothing but GL state.
//
// Order of a game frame: the objects, each lit by the location lights that
// reach it; the location's pieces, culled by bounding sphere and drawn with
// their lightmaps (or the lights the object pass left, for unlit pieces); the
// player's lamp glow; the debug boxes; the particles; then on the 2D canvas the
// lighting view of the pages, the glow strips at video quality 2, the flash,
// the HUD and, outside the capture pass, the developer overlays.
#pragma once

class Location;
class Model;

// A model's built vertices as the float array the mesh draws take (null when not built).
const float* MeshVertices(const Model& model);
// One frame of the level being played (sceneDraw while a level runs; also the capture pass).
void DrawGameView();
// One frame of the closing scene in closingLocation.
void DrawClosingScene();
// The objects of the table at their positions, each lit by up to eight of the location's lights.
void DrawObjects(const Location& location);
// The pieces of a location: culled, 0x10 skipped, textured, lightmapped where they can be.
void DrawLocationPieces(const Location& location);
// With DEBUG on and debug mode 4: the location's lightmap pages down the right with their triangles.
void DrawLightingView(const Location& location);
