#include "sound_effects.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "audio/wav_file.h"
#include "synth.h"

static const float kRate = static_cast<float>(kEffectRate);

static std::vector<float> Blank(float seconds) {
    return std::vector<float>(static_cast<size_t>(seconds * kRate), 0.0f);
}

// A soft thud of filtered noise with a low body; variants differ in pitch and grit.
static std::vector<float> Footstep(int variant) {
    std::vector<float> s = Blank(0.12f);
    NoiseSource noise(1000u + variant * 77u);
    LowPass lp;
    float cutoff = 900.0f + variant * 250.0f;
    float body = 70.0f + variant * 12.0f;
    for (size_t i = 0; i < s.size(); i++) {
        float t = i / kRate;
        float env = AttackDecay(t, 0.003f, 0.025f);
        float n = lp.Run(noise.Next(), LowPassCoefficient(cutoff, kRate));
        float thump = SineCycles(body * t) * AttackDecay(t, 0.002f, 0.03f);
        s[i] = (n * 0.9f + thump * 0.6f) * env * 0.8f;
    }
    return s;
}

// A springy upward sweep.
static std::vector<float> Jump() {
    std::vector<float> s = Blank(0.28f);
    float phase = 0.0f;
    for (size_t i = 0; i < s.size(); i++) {
        float t = i / kRate;
        float f = 180.0f + 900.0f * (t / 0.28f) * (t / 0.28f);
        phase += f / kRate;
        float square = SineCycles(phase) > 0 ? 1.0f : -1.0f;
        float tone = 0.6f * SineCycles(phase) + 0.25f * square;
        s[i] = tone * AttackDecay(t, 0.01f, 0.09f) * 0.6f;
    }
    return s;
}

// A falling wail with a crunch of noise.
static std::vector<float> Die() {
    std::vector<float> s = Blank(0.9f);
    NoiseSource noise(4242u);
    LowPass lp;
    float phase = 0.0f;
    for (size_t i = 0; i < s.size(); i++) {
        float t = i / kRate;
        float f = 620.0f * std::exp(-t * 2.4f) + 60.0f;
        float vibrato = 1.0f + 0.04f * SineCycles(t * 9.0f);
        phase += f * vibrato / kRate;
        float tone = SineCycles(phase) + 0.4f * SineCycles(phase * 2.0f);
        float crunch = lp.Run(noise.Next(), 0.3f) * AttackDecay(t, 0.002f, 0.08f);
        s[i] = (tone * 0.45f * AttackDecay(t, 0.01f, 0.35f) + crunch * 0.7f) * 0.8f;
    }
    return s;
}

// A bright three-note chime.
static std::vector<float> Collect() {
    std::vector<float> s = Blank(0.6f);
    const float notes[3] = {1046.5f, 1318.5f, 1568.0f};
    for (int n = 0; n < 3; n++) {
        float start = n * 0.07f;
        for (size_t i = 0; i < s.size(); i++) {
            float t = i / kRate - start;
            if (t < 0.0f) {
                continue;
            }
            float env = AttackDecay(t, 0.004f, 0.16f);
            float tone = SineCycles(notes[n] * t) + 0.3f * SineCycles(notes[n] * 2.0f * t) +
                         0.12f * SineCycles(notes[n] * 3.01f * t);
            s[i] += tone * env * 0.28f;
        }
    }
    return s;
}

// The giant foot coming down: a swelling rush of air over a falling rumble.
static std::vector<float> Foot() {
    std::vector<float> s = Blank(1.5f);
    NoiseSource noise(777u);
    LowPass lp;
    LowPass rumbleLp;
    float phase = 0.0f;
    for (size_t i = 0; i < s.size(); i++) {
        float t = i / kRate;
        float swell = std::min(1.0f, t / 1.2f);
        float rush = lp.Run(noise.Next(), LowPassCoefficient(300.0f + 2500.0f * swell, kRate));
        phase += (90.0f - 45.0f * swell) / kRate;
        float rumble = rumbleLp.Run(SineCycles(phase) > 0 ? 1.0f : -1.0f, 0.05f);
        float fade = t > 1.35f ? std::max(0.0f, 1.0f - (t - 1.35f) / 0.15f) : 1.0f;
        s[i] = (rush * 0.6f * swell + rumble * 0.5f) * fade * 0.8f;
    }
    return s;
}

// A wet impact: a low thump with a burst of bubbling noise.
static std::vector<float> Splat() {
    std::vector<float> s = Blank(0.45f);
    NoiseSource noise(99u);
    LowPass lp;
    for (size_t i = 0; i < s.size(); i++) {
        float t = i / kRate;
        float wobble = 0.5f + 0.5f * SineCycles(t * 38.0f);
        float n = lp.Run(noise.Next(), LowPassCoefficient(1800.0f * wobble + 200.0f, kRate));
        float thump = SineCycles(55.0f * t + 3.0f * t * t) * AttackDecay(t, 0.002f, 0.06f);
        s[i] = (n * AttackDecay(t, 0.001f, 0.12f) * 0.9f + thump * 0.8f) * 0.8f;
    }
    return s;
}

// A short clean tick for the score tally.
static std::vector<float> Blip() {
    std::vector<float> s = Blank(0.07f);
    for (size_t i = 0; i < s.size(); i++) {
        float t = i / kRate;
        float tone = SineCycles(880.0f * t) + 0.2f * SineCycles(1760.0f * t);
        s[i] = tone * AttackDecay(t, 0.002f, 0.018f) * 0.6f;
    }
    return s;
}

std::vector<float> SynthesiseEffect(const char* name) {
    if (strncmp(name, "sound\\run0", 10) == 0 && name[10] >= '1' && name[10] <= '4') {
        return Footstep(name[10] - '1');
    }
    if (strcmp(name, "sound\\jump01.wav") == 0) {
        return Jump();
    }
    if (strcmp(name, "sound\\die01.wav") == 0) {
        return Die();
    }
    if (strcmp(name, "sound\\collect01.wav") == 0) {
        return Collect();
    }
    if (strcmp(name, "sound\\foot.wav") == 0) {
        return Foot();
    }
    if (strcmp(name, "sound\\splat.wav") == 0) {
        return Splat();
    }
    if (strcmp(name, "sound\\blip.wav") == 0) {
        return Blip();
    }
    return std::vector<float>();
}

void GenerateSoundEffects(AssetList* list) {
    static const char* const kNames[] = {"sound\\run01.wav",     "sound\\run02.wav",  "sound\\run03.wav",
                                         "sound\\run04.wav",     "sound\\jump01.wav", "sound\\die01.wav",
                                         "sound\\collect01.wav", "sound\\foot.wav",   "sound\\splat.wav",
                                         "sound\\blip.wav"};
    for (const char* name : kNames) {
        std::vector<float> samples = SynthesiseEffect(name);
        // Layered noise bursts can sum past full scale; bring such an effect down to
        // 0.9 so it is never clipped flat.
        float peak = 0.0f;
        for (float v : samples) {
            peak = std::max(peak, std::fabs(v));
        }
        if (peak > 0.9f) {
            for (float& v : samples) {
                v *= 0.9f / peak;
            }
        }
        std::vector<short> pcm = ToPcm16(samples);
        std::vector<unsigned char> wav;
        WriteWav(1, 16, kEffectRate, pcm.data(), static_cast<unsigned int>(pcm.size() * 2), wav);
        list->Add(name, CONTENT_BASE_PACKAGE, std::move(wav));
    }
}
