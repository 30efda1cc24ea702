#include "audio/wav_file.h"

#include <AL/al.h>

#include <cstring>

static unsigned int ReadU16(const unsigned char* p) {
    return p[0] | (p[1] << 8);
}

static unsigned int ReadU32(const unsigned char* p) {
    return p[0] | (p[1] << 8) | (p[2] << 16) | (static_cast<unsigned int>(p[3]) << 24);
}

// Channels and block align decide the OpenAL format; anything else is refused.
static int FormatFor(unsigned int channels, unsigned int blockAlign) {
    if (channels == 1 && blockAlign == 1) {
        return AL_FORMAT_MONO8;
    }
    if (channels == 1 && blockAlign == 2) {
        return AL_FORMAT_MONO16;
    }
    if (channels == 2 && blockAlign == 2) {
        return AL_FORMAT_STEREO8;
    }
    if (channels == 2 && blockAlign == 4) {
        return AL_FORMAT_STEREO16;
    }
    return 0;
}

int ParseWav(const unsigned char* bytes, unsigned int length, WavSound* out) {
    if (!bytes || !out || length < 12 || memcmp(bytes, "RIFF", 4) != 0 || memcmp(bytes + 8, "WAVE", 4) != 0) {
        return 0;
    }
    int format = 0;
    unsigned int rate = 0;
    const unsigned char* data = nullptr;
    unsigned long long dataLength = 0;
    unsigned long long dataOffset = 0;
    // Positions are 64-bit so that a chunk size near 4 GiB cannot wrap around.
    unsigned long long pos = 12;
    while (pos < length) {
        if (length - pos < 8) {
            return 0;
        }
        const unsigned char* chunk = bytes + pos;
        unsigned int size = ReadU32(chunk + 4);
        pos += 8;
        if (memcmp(chunk, "fmt ", 4) == 0) {
            if (size != 16 || length - pos < 16) {
                return 0;
            }
            const unsigned char* body = bytes + pos;
            format = FormatFor(ReadU16(body + 2), ReadU16(body + 12));
            rate = ReadU32(body + 4);
            if (!format) {
                return 0;
            }
        } else if (memcmp(chunk, "data", 4) == 0) {
            dataOffset = pos;
            dataLength = size;
            data = bytes + pos;
        }
        pos += size;
    }
    if (!format || !data || dataOffset + dataLength > length) {
        return 0;
    }
    out->format = format;
    out->data = data;
    out->length = static_cast<unsigned int>(dataLength);
    out->rate = rate;
    return 1;
}

static void PutU16(std::vector<unsigned char>& out, unsigned int v) {
    out.push_back(v & 0xFF);
    out.push_back((v >> 8) & 0xFF);
}

static void PutU32(std::vector<unsigned char>& out, unsigned int v) {
    PutU16(out, v & 0xFFFF);
    PutU16(out, v >> 16);
}

int WriteWav(int channels, int bitsPerSample, unsigned int rate, const void* samples,
             unsigned int sampleBytes, std::vector<unsigned char>& out) {
    if ((channels != 1 && channels != 2) || (bitsPerSample != 8 && bitsPerSample != 16)) {
        return 0;
    }
    unsigned int blockAlign = channels * bitsPerSample / 8;
    out.clear();
    out.insert(out.end(), {'R', 'I', 'F', 'F'});
    PutU32(out, 36 + sampleBytes);
    out.insert(out.end(), {'W', 'A', 'V', 'E', 'f', 'm', 't', ' '});
    PutU32(out, 16);
    PutU16(out, 1);  // PCM
    PutU16(out, channels);
    PutU32(out, rate);
    PutU32(out, rate * blockAlign);
    PutU16(out, blockAlign);
    PutU16(out, bitsPerSample);
    out.insert(out.end(), {'d', 'a', 't', 'a'});
    PutU32(out, sampleBytes);
    const unsigned char* p = static_cast<const unsigned char*>(samples);
    out.insert(out.end(), p, p + sampleBytes);
    return 1;
}
