#include "music_render.h"

#include <algorithm>
#include <cmath>

#include "synth.h"

int LoopFrames(int lengthTicks, int rate) {
    return static_cast<int>(static_cast<long long>(lengthTicks) * rate / 50);
}

static float Frequency(int midi) {
    return 440.0f * std::pow(2.0f, (midi - 69) / 12.0f);
}

// Sine by table lookup, phase in cycles.
static float FastSine(double phase) {
    static float table[4096];
    static bool ready = false;
    if (!ready) {
        for (int i = 0; i < 4096; i++) {
            table[i] = static_cast<float>(std::sin(i * 6.283185307179586 / 4096.0));
        }
        ready = true;
    }
    double f = phase - std::floor(phase);
    return table[static_cast<int>(f * 4096.0) & 4095];
}

struct Partial {
    float ratio;  // of the fundamental
    float level;
    float decay;  // seconds; 0 = sustained
};

// How long an instrument keeps sounding after its note ends.
static float ReleaseTime(int instrument) {
    switch (instrument) {
        case kPiano:
            return 0.25f;
        case kPad:
            return 0.6f;
        case kBell:
            return 1.5f;
        case kPluck:
            return 0.3f;
        default:
            return 0.08f;
    }
}

// Partials of the pitched instruments.
static int Partials(int instrument, float freq, Partial* out) {
    float bright = std::clamp(600.0f / freq, 0.4f, 2.0f);
    switch (instrument) {
        case kPiano:
            for (int k = 1; k <= 7; k++) {
                float r = k * (1.0f + 0.0004f * k * k);
                out[k - 1] = Partial{r, 0.6f / std::pow(static_cast<float>(k), 1.4f), 1.6f * bright / k};
            }
            return 7;
        case kBass:
            out[0] = Partial{1.0f, 0.8f, 0.0f};
            out[1] = Partial{2.0f, 0.3f, 0.6f};
            out[2] = Partial{3.0f, 0.12f, 0.3f};
            return 3;
        case kPad:
            for (int k = 1; k <= 6; k++) {
                out[k - 1] = Partial{k * 1.0f, 0.25f / k, 0.0f};
            }
            return 6;
        case kPluck:
            for (int k = 1; k <= 5; k++) {
                out[k - 1] = Partial{k * 1.0f, 0.5f / k, 0.5f / k};
            }
            return 5;
        case kBell:
            out[0] = Partial{1.0f, 0.5f, 2.0f};
            out[1] = Partial{2.76f, 0.25f, 1.0f};
            out[2] = Partial{5.4f, 0.12f, 0.5f};
            out[3] = Partial{8.93f, 0.06f, 0.25f};
            return 4;
        default:  // lead: odd harmonics, a soft square
            for (int k = 0; k < 4; k++) {
                out[k] = Partial{2.0f * k + 1.0f, 0.35f / (2 * k + 1), 0.0f};
            }
            return 4;
    }
}

static float PitchedSample(int instrument, float freq, float t, float held) {
    Partial partials[8];
    int n = Partials(instrument, freq, partials);
    float vibrato = instrument == kLead ? 1.0f + 0.006f * FastSine(5.5 * t) : 1.0f;
    float value = 0.0f;
    for (int i = 0; i < n; i++) {
        const Partial& p = partials[i];
        float env = p.decay > 0.0f ? std::exp(-t / p.decay) : 1.0f;
        value += FastSine(static_cast<double>(freq) * p.ratio * vibrato * t) * p.level * env;
        if (instrument == kPad) {  // a detuned twin for width
            value += FastSine(static_cast<double>(freq) * p.ratio * 1.004 * t) * p.level * env;
        }
    }
    float attack = instrument == kPad ? 0.25f : (instrument == kBass ? 0.01f : 0.004f);
    float a = std::min(1.0f, t / attack);
    float release = t > held ? std::exp(-(t - held) / (ReleaseTime(instrument) * 0.3f)) : 1.0f;
    return value * a * release;
}

static float DrumSample(int drum, float t, NoiseSource* noise) {
    switch (drum) {
        case kKick: {
            float phase = 45.0f * t + 110.0f * (1.0f - std::exp(-t * 25.0f)) / 25.0f;
            return FastSine(phase) * std::exp(-t * 9.0f) * 0.9f;
        }
        case kSnare:
            return (noise->Next() * 0.5f + FastSine(185.0 * t) * 0.3f) * std::exp(-t * 18.0f);
        default:
            return noise->Next() * 0.25f * std::exp(-t * 60.0f);
    }
}

static void AddNote(const Score& score, const ScoreNote& note, int rate, std::vector<float>* out) {
    const ScoreVoice& voice = score.voices[note.voice];
    const int frames = LoopFrames(score.length, rate);
    const float held = note.length / 50.0f;
    const bool drums = voice.instrument == kDrums;
    const float tail = drums ? 0.5f : held + ReleaseTime(voice.instrument);
    const int count = std::min(frames, static_cast<int>(tail * rate));
    const int first = LoopFrames(note.start, rate);
    const float freq = drums ? 0.0f : Frequency(note.pitch);
    const float angle = (voice.pan + 1.0f) * 0.25f * 3.14159265f;
    const float left = std::cos(angle) * voice.volume;
    const float right = std::sin(angle) * voice.volume;
    NoiseSource noise(static_cast<uint32_t>(note.start * 131 + note.pitch));
    for (int i = 0; i < count; i++) {
        float t = static_cast<float>(i) / rate;
        float s = drums ? DrumSample(note.pitch, t, &noise) : PitchedSample(voice.instrument, freq, t, held);
        size_t at = static_cast<size_t>((first + i) % frames) * 2;
        (*out)[at] += s * left;
        (*out)[at + 1] += s * right;
    }
}

// A stereo echo run round the loop twice so that its tail wraps into the start.
static void RoomEcho(std::vector<float>* buffer, int rate) {
    const size_t frames = buffer->size() / 2;
    const size_t delay = static_cast<size_t>(rate * 0.23);
    std::vector<float> wet(buffer->size(), 0.0f);
    for (int pass = 0; pass < 2; pass++) {
        for (size_t i = 0; i < frames; i++) {
            size_t from = ((i + frames - delay % frames) % frames) * 2;
            // Cross-feed left and right for width.
            float l = (*buffer)[from + 1] * 0.22f + wet[from + 1] * 0.35f;
            float r = (*buffer)[from] * 0.22f + wet[from] * 0.35f;
            wet[i * 2] = l;
            wet[i * 2 + 1] = r;
        }
    }
    for (size_t i = 0; i < buffer->size(); i++) {
        (*buffer)[i] += wet[i];
    }
}

std::vector<float> RenderScore(const Score& score, int rate) {
    std::vector<float> out(static_cast<size_t>(LoopFrames(score.length, rate)) * 2, 0.0f);
    if (out.empty()) {
        return out;
    }
    for (const ScoreNote& note : score.notes) {
        AddNote(score, note, rate, &out);
    }
    RoomEcho(&out, rate);
    float peak = 0.0f;
    for (float s : out) {
        peak = std::max(peak, std::fabs(s));
    }
    if (peak > 0.0f) {
        float gain = 0.9f / peak;
        for (float& s : out) {
            s *= gain;
        }
    }
    return out;
}
