#include "wav_writer.h"

#include <cmath>

static void Put16(std::vector<uint8_t>& out, unsigned int v) {
    out.push_back(static_cast<uint8_t>(v & 0xFF));
    out.push_back(static_cast<uint8_t>((v >> 8) & 0xFF));
}

static void Put32(std::vector<uint8_t>& out, unsigned int v) {
    Put16(out, v & 0xFFFF);
    Put16(out, v >> 16);
}

static void PutTag(std::vector<uint8_t>& out, const char* tag) {
    out.insert(out.end(), tag, tag + 4);
}

int16_t ToPcm16(float v) {
    if (v > 1.0f) {
        v = 1.0f;
    } else if (v < -1.0f) {
        v = -1.0f;
    }
    return static_cast<int16_t>(std::lrint(v * 32767.0f));
}

std::vector<uint8_t> EncodeWav(const std::vector<float>& samples, int rate, int channels) {
    const unsigned int dataBytes = static_cast<unsigned int>(samples.size()) * 2;
    std::vector<uint8_t> out;
    out.reserve(44 + dataBytes);
    PutTag(out, "RIFF");
    Put32(out, 36 + dataBytes);
    PutTag(out, "WAVE");
    PutTag(out, "fmt ");
    Put32(out, 16);
    Put16(out, 1);  // PCM
    Put16(out, channels);
    Put32(out, rate);
    Put32(out, rate * channels * 2);
    Put16(out, channels * 2);
    Put16(out, 16);
    PutTag(out, "data");
    Put32(out, dataBytes);
    for (float s : samples) {
        Put16(out, static_cast<uint16_t>(ToPcm16(s)));
    }
    return out;
}
