#include "synth.h"

#include <cmath>

float NoiseSource::Next() {
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    return static_cast<float>(state & 0xFFFFFF) / 8388608.0f - 1.0f;
}

float LowPassCoefficient(float cutoffHz, float rate) {
    float a = 1.0f - std::exp(-2.0f * 3.14159265f * cutoffHz / rate);
    return a > 1.0f ? 1.0f : a;
}

float AttackDecay(float t, float attack, float decay) {
    if (t < 0.0f) {
        return 0.0f;
    }
    if (t < attack) {
        return t / attack;
    }
    return std::exp(-(t - attack) / decay);
}

float SineCycles(float phase) {
    return std::sin(phase * 6.28318531f);
}

std::vector<short> ToPcm16(const std::vector<float>& samples) {
    std::vector<short> out(samples.size());
    for (size_t i = 0; i < samples.size(); i++) {
        float v = samples[i] > 1.0f ? 1.0f : (samples[i] < -1.0f ? -1.0f : samples[i]);
        out[i] = static_cast<short>(std::lrint(v * 32767.0f));
    }
    return out;
}
