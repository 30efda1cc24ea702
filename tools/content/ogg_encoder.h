// Ogg Vorbis encoding with libvorbisenc. The encoder settings and the Ogg
// stream serial number are fixed, so the same samples always give the same
// file, byte for byte.
#pragma once

#include <cstdint>
#include <vector>

// Encodes interleaved float samples (-1..1) as an Ogg Vorbis file at a fixed VBR quality.
// Returns an empty vector when the encoder cannot be set up.
std::vector<uint8_t> EncodeOggVorbis(const std::vector<float>& samples, int channels, int rate,
                                     uint32_t serial, float quality);
