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
//
// Two savings keep the picture and cut the software rasteriser's work, which is
// most of what a frame costs: the 3D passes are clipped (scissor) to the rows
// above the HUD's level bar, which the opaque bar and black strip cover anyway,
// and the pieces whose texture has no alpha are drawn first, nearest first and
// without the alpha test (their alpha is always 1), so hidden fragments fail
// the depth test before they are textured. Only pieces at exactly equal depth
// could come out differently. Both can be switched off to compare.
#pragma once

class Location;

// 1: clip the 3D passes to the rows above the HUD bar (default 1).
extern int g_sceneScissor;
// 1: opaque pieces nearest first without the alpha test, then the rest in file order (default 1).
extern int g_piecesFrontToBack;
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
// Clips drawing to the rows of the current viewport above the HUD bar (when g_sceneScissor is set).
void BeginSceneScissor();
// Ends the clipping of BeginSceneScissor.
void EndSceneScissor();
// With DEBUG on and debug mode 4: the location's lightmap pages down the right with their triangles.
void DrawLightingView(const Location& location);
