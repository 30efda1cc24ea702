// The writer beside OggDecoder: 16-bit PCM to Ogg Vorbis through vorbisenc.
// The content tools make the game's music with it, the tests and fuzz seeds
// their inputs. The stream serial is fixed, so the same samples always give
// the same bytes.
#pragma once

#include <vector>

// Encodes interleaved 16-bit samples (1 or 2 channels) at a VBR quality from -0.1 to 1.0; 1 on success.
int EncodeOggVorbis(const short* samples, unsigned int frames, int channels, long rate, float quality,
                    std::vector<unsigned char>& out);

// Recomputes the checksum of every page in a run of Ogg pages (stopping at the first byte that does not
// start a whole page), so that edited pages read as valid again: the tests and the fuzz target edit
// streams past the checksums to reach the decoder itself.
void FixOggChecksums(unsigned char* bytes, unsigned int length);
