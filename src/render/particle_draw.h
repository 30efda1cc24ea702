// Drawing the particle pool. The update (game/particles.h) collects the live
// particles into the draw list each tick; every scene draw hands that list to
// GL here, after its own geometry, as camera-facing quads. The list is drawn
// from the last entry to the first without sorting and with depth writes off,
// so the quads never hide one another; behaviour 1 adds its light instead of
// blending over. A quad shows one cell of its texture strip: frame f of n
// covers u from f / n to (f + 1) / n.
#pragma once

struct Particle;

// The strip cell of a particle: u0 and u1 for its current frame.
void ParticleFrameSpan(const Particle& particle, float* u0, float* u1);
// Draws the draw list facing the render camera of g_window (after SetCamera).
void DrawParticles();
