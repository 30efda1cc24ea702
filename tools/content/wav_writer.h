// 16-bit PCM WAV files: a RIFF header with a 16-byte "fmt " chunk and one
// "data" chunk, the plain layout every loader reads. Samples are floats in
// -1..1, clipped and rounded to 16 bits.
#pragma once

#include <cstdint>
#include <vector>

// Encodes interleaved float samples (channels per frame) as a 16-bit PCM WAV image.
std::vector<uint8_t> EncodeWav(const std::vector<float>& samples, int rate, int channels);

// Converts one float sample to 16 bits with clipping.
int16_t ToPcm16(float v);
