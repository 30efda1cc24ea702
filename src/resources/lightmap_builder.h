// The lightmap builder: bakes the static lighting of every lit triangle of a
// location into rectangles on its lightmap pages and writes each triangle's
// three lightmap coordinates.
//
// Lighting is deliberately simple: every lumel starts black and adds, for each
// light in range on the front side of its triangle's plane, the light's colour
// scaled by a linear fall-off with distance. Lights that cast shadows are
// blocked by the triangles of other pieces. Triangles that come out entirely
// black share one rectangle.
//
// There are two builders with the same output, byte for byte:
// BuildLightmapsReference is the plain loop (lumels x lights x pieces, a box
// pre-test per piece), kept because it is obviously right; BuildLightmaps
// answers the shadow question through a tree over the occluder triangles and
// bakes triangles on several threads, then places them on the pages in the
// same order the plain loop does. Both leave the lights alone and do not
// upload the pages.
#pragma once

class Location;

// Called between batches of triangles with the fraction done (0 to 1).
typedef void (*LightmapProgress)(float fraction, void* context);

// Bakes every lightmapped piece with the plain loop, one triangle at a time.
void BuildLightmapsReference(Location& location);
// Bakes every lightmapped piece with the accelerated shadow test on threads
// threads (0: one per core); progress may be null.
void BuildLightmaps(Location& location, int threads, LightmapProgress progress, void* context);
