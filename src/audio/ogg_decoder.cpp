#include "audio/ogg_decoder.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

static size_t ReadCallback(void* destination, size_t itemSize, size_t itemCount, void* source) {
    OggDecoder* d = static_cast<OggDecoder*>(source);
    size_t want = itemSize * itemCount;
    size_t left = d->size - d->readPos;
    size_t count = want < left ? want : left;
    memcpy(destination, d->data + d->readPos, count);
    d->readPos += static_cast<unsigned int>(count);
    return count;
}

static int SeekCallback(void* source, ogg_int64_t offset, int origin) {
    OggDecoder* d = static_cast<OggDecoder*>(source);
    ogg_int64_t pos = d->readPos;
    if (origin == SEEK_SET) {
        pos = offset;
    } else if (origin == SEEK_CUR) {
        pos += offset;
    } else {
        pos = d->size;
    }
    // Clamped both ways: a corrupt file must not walk the position outside our copy.
    if (pos < 0) {
        pos = 0;
    }
    if (pos > d->size) {
        pos = d->size;
    }
    d->readPos = static_cast<unsigned int>(pos);
    return 0;
}

static int CloseCallback(void*) {
    return 1;  // the decoder frees its bytes itself
}

static long TellCallback(void* source) {
    return static_cast<OggDecoder*>(source)->readPos;
}

OggDecoder::OggDecoder() : data(nullptr), size(0), readPos(0), info(nullptr), broken(0) {
    memset(&vorbisFile, 0, sizeof(vorbisFile));
}

OggDecoder::~OggDecoder() {
    Close();
}

int OggDecoder::Open(const unsigned char* bytes, unsigned int length) {
    Close();
    if (!bytes) {
        return 0;
    }
    data = static_cast<unsigned char*>(malloc(length ? length : 1));
    if (!data) {
        return 0;
    }
    memcpy(data, bytes, length);
    size = length;
    readPos = 0;
    ov_callbacks callbacks = {ReadCallback, SeekCallback, CloseCallback, TellCallback};
    if (ov_open_callbacks(this, &vorbisFile, nullptr, 0, callbacks) < 0) {
        // vorbisfile has already released its state on failure.
        memset(&vorbisFile, 0, sizeof(vorbisFile));
        free(data);
        data = nullptr;
        size = readPos = 0;
        return 0;
    }
    info = ov_info(&vorbisFile, -1);
    // OpenAL 1.x has mono and stereo formats only; anything else would play as noise.
    if (!info || info->channels < 1 || info->channels > 2 || info->rate <= 0) {
        Close();
        return 0;
    }
    return 1;
}

void OggDecoder::Close() {
    if (!data) {
        return;
    }
    ov_clear(&vorbisFile);
    memset(&vorbisFile, 0, sizeof(vorbisFile));
    free(data);
    data = nullptr;
    size = readPos = 0;
    info = nullptr;
    broken = 0;
}

int OggDecoder::Decode(unsigned char* out, unsigned int length) {
    if (!data || !out || broken) {
        return 0;
    }
    unsigned int filled = 0;
    bool emptySinceSeek = false;  // true right after looping, until samples come out
    while (filled < length) {
        int bitstream = 0;
        long got = ov_read(&vorbisFile, reinterpret_cast<char*>(out + filled),
                           static_cast<int>(length - filled), 0, 2, 1, &bitstream);
        if (got < 0) {
            // A gap in the pages is worth decoding past next time; anything
            // else means the stream's setup is bad.
            broken = got != OV_HOLE;
            return 0;
        }
        if (got == 0) {
            // End of the stream: loop. A stream that ends again before giving a
            // single sample would loop forever, so it fails the fill instead.
            if (emptySinceSeek || !SeekTime(0.0)) {
                return 0;
            }
            emptySinceSeek = true;
            continue;
        }
        emptySinceSeek = false;
        filled += static_cast<unsigned int>(got);
    }
    return 1;
}

int OggDecoder::SeekTime(double seconds) {
    if (!data || broken) {
        return 0;
    }
    int result = ov_time_seek(&vorbisFile, seconds);
    broken = result != 0;
    return result == 0;
}

int OggDecoder::Channels() const {
    return info ? info->channels : 0;
}

long OggDecoder::Rate() const {
    return info ? info->rate : 0;
}
