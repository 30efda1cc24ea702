// Small building blocks for synthesised sound: a deterministic noise source,
// one-pole filters and envelopes. The sound effects and the music instruments
// are written with them; nothing here allocates or keeps global state.
#pragma once

#include <cstdint>
#include <vector>

// White noise from a fixed-seed generator (same sequence on every run).
class NoiseSource {
public:
    uint32_t state;
    explicit NoiseSource(uint32_t seed) : state(seed ? seed : 1u) {}
    // Next sample in -1..1.
    float Next();
};

// One-pole low-pass filter; cutoff given as a 0..1 coefficient per sample.
class LowPass {
public:
    float y;
    LowPass() : y(0.0f) {}
    // Filters one sample with smoothing coefficient a (1 passes everything).
    float Run(float x, float a) {
        y += (x - y) * a;
        return y;
    }
};

// Coefficient of a one-pole low-pass for a cutoff frequency at a sample rate.
float LowPassCoefficient(float cutoffHz, float rate);
// Attack-decay envelope: rises linearly over attack seconds, then decays exponentially
// with the given time constant.
float AttackDecay(float t, float attack, float decay);
// Sine of a phase given in cycles.
float SineCycles(float phase);
// Float samples (-1..1) to 16-bit PCM, clipped.
std::vector<short> ToPcm16(const std::vector<float>& samples);
