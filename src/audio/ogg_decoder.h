// Decodes an Ogg Vorbis file held whole in memory. vorbisfile reads through
// four callbacks over our own copy of the bytes, so music can come out of a
// package as easily as from a loose file. Decode fills a caller's buffer with
// interleaved 16-bit little-endian samples and, at the end of the stream,
// seeks back to the start and keeps going: music never ends by itself.
//
// The bytes are untrusted. Open fails cleanly on anything vorbisfile rejects,
// and on channel counts OpenAL cannot play; a decode error fails the fill; and
// a stream that yields nothing even right after seeking back to its start
// fails the fill instead of spinning forever.
//
// A decoder that failed for any reason but a gap in the pages is not asked
// again: when a link's codebooks fail to build, libvorbis keeps the half-made
// tables and a second attempt decodes with them (a division by zero in its
// residue decoder), so one bad link would crash the game a tick later.
#pragma once

#define OV_EXCLUDE_STATIC_CALLBACKS
#include <vorbis/vorbisfile.h>

class OggDecoder {
public:
    unsigned char* data;        // our copy of the whole file; null when closed
    unsigned int size;          // length of data
    unsigned int readPos;       // where the read callback goes on, 0 to size
    OggVorbis_File vorbisFile;  // valid while data is set
    vorbis_info* info;          // channels and rate of the stream
    int broken;                 // vorbisfile failed; no more calls into it until Close

    OggDecoder();
    ~OggDecoder();

    // Copies the bytes and opens them as Ogg Vorbis; 1 on success, 0 (and closed) on failure.
    int Open(const unsigned char* bytes, unsigned int length);
    // Frees the copy and the decoder state.
    void Close();
    // Fills exactly length bytes, looping at the end; 1 on success, 0 on a decode error or an empty stream.
    int Decode(unsigned char* out, unsigned int length);
    // Seeks to a time in seconds; 1 on success.
    int SeekTime(double seconds);
    // Channel count and sample rate (0 when closed).
    int Channels() const;
    long Rate() const;
};
