// Music decoding, the work the main loop does inside a tick whenever a stream
// buffer has played out. The same Ogg Vorbis bytes are decoded fill by fill
// (262,144 bytes, as the music stream does) two ways side by side: through
// our memory callbacks, and by vorbisfile reading the same bytes from a file.
// Printed: how much faster than playback each runs, the ratio of the two, and
// the average and slowest single fill against the 20 ms tick it has to fit in.
//
//   build/bench/bench_music_decode [seconds of music] [rounds]
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "audio/music_stream.h"
#include "audio/ogg_decoder.h"
#include "audio/ogg_encoder.h"

namespace {

const long kRate = 44100;

// A stereo test piece: a chord whose notes change every half second, with a
// little noise, so the encoder has real work to describe.
std::vector<short> MakePiece(unsigned int frames) {
    std::vector<short> pcm(frames * 2);
    const double notes[6] = {220.0, 261.6, 329.6, 392.0, 440.0, 523.3};
    unsigned int noise = 12345;
    for (unsigned int i = 0; i < frames; i++) {
        int bar = static_cast<int>(i / (kRate / 2));
        double t = static_cast<double>(i) / kRate;
        double v = 0;
        for (int n = 0; n < 3; n++) {
            v += sin(2.0 * M_PI * notes[(bar + 2 * n) % 6] * t) * 3000.0;
        }
        noise = noise * 1103515245u + 12345u;
        v += static_cast<int>((noise >> 16) & 0x3FF) - 512;
        pcm[2 * i] = static_cast<short>(v);
        pcm[2 * i + 1] = static_cast<short>(v * 0.8);
    }
    return pcm;
}

double Now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// Decodes fills of the stream through our decoder until `bytes` are out; returns the total time and
// the slowest fill.
double DecodeFromMemory(const std::vector<unsigned char>& ogg, unsigned long bytes, double* slowest) {
    static unsigned char fill[MusicStream::kFillBytes];
    OggDecoder decoder;
    double start = Now();
    if (!decoder.Open(ogg.data(), static_cast<unsigned int>(ogg.size()))) {
        fprintf(stderr, "bench: the encoded piece does not open\n");
        exit(1);
    }
    for (unsigned long done = 0; done < bytes; done += MusicStream::kFillBytes) {
        double before = Now();
        if (!decoder.Decode(fill, MusicStream::kFillBytes)) {
            fprintf(stderr, "bench: decode failed\n");
            exit(1);
        }
        double took = Now() - before;
        *slowest = took > *slowest ? took : *slowest;
    }
    return Now() - start;
}

// The same fills with vorbisfile reading a file itself (looping by the same seek back to 0).
double DecodeFromFile(const char* path, unsigned long bytes) {
    static char fill[MusicStream::kFillBytes];
    OggVorbis_File vf;
    double start = Now();
    if (ov_fopen(path, &vf) < 0) {
        fprintf(stderr, "bench: %s does not open\n", path);
        exit(1);
    }
    for (unsigned long done = 0; done < bytes;) {
        int bitstream = 0;
        long got = ov_read(&vf, fill, MusicStream::kFillBytes, 0, 2, 1, &bitstream);
        if (got < 0) {
            fprintf(stderr, "bench: decode failed\n");
            exit(1);
        }
        if (got == 0) {
            ov_time_seek(&vf, 0.0);
        }
        done += static_cast<unsigned long>(got);
    }
    ov_clear(&vf);
    return Now() - start;
}

}  // namespace

int main(int argc, char** argv) {
    int seconds = argc > 1 ? atoi(argv[1]) : 20;
    int rounds = argc > 2 ? atoi(argv[2]) : 3;
    if (seconds < 1 || rounds < 1) {
        fprintf(stderr, "usage: bench_music_decode [seconds of music] [rounds]\n");
        return 1;
    }
    std::vector<short> pcm = MakePiece(static_cast<unsigned int>(seconds * kRate));
    std::vector<unsigned char> ogg;
    if (!EncodeOggVorbis(pcm.data(), static_cast<unsigned int>(seconds * kRate), 2, kRate, 0.3f, ogg)) {
        fprintf(stderr, "bench: encoding failed\n");
        return 1;
    }
    std::filesystem::path path = std::filesystem::temp_directory_path() / "vantle_bench_music.ogg";
    FILE* f = fopen(path.c_str(), "wb");
    if (!f || fwrite(ogg.data(), 1, ogg.size(), f) != ogg.size()) {
        fprintf(stderr, "bench: cannot write %s\n", path.c_str());
        return 1;
    }
    fclose(f);

    // Twice the piece: the second pass goes through the loop point.
    unsigned long bytes = static_cast<unsigned long>(seconds) * kRate * 4 * 2;
    double memoryTime = 0, fileTime = 0, slowest = 0;
    for (int r = 0; r < rounds; r++) {
        memoryTime += DecodeFromMemory(ogg, bytes, &slowest);
        fileTime += DecodeFromFile(path.c_str(), bytes);
    }
    std::filesystem::remove(path);
    double played = 2.0 * seconds * rounds;
    double fillSeconds = MusicStream::kFillBytes / (kRate * 4.0);
    printf("%d s stereo 44.1 kHz piece (%zu bytes Ogg), played twice through, %d rounds\n", seconds,
           ogg.size(), rounds);
    printf("memory callbacks: %.1fx faster than playback; file reads: %.1fx; memory/file time ratio %.2f\n",
           played / memoryTime, played / fileTime, memoryTime / fileTime);
    double averageFill = memoryTime / (played / fillSeconds);
    printf("one fill (%.2f s of music): %.2f ms on average (%.0f%% of a 20 ms tick), slowest %.2f ms\n",
           fillSeconds, averageFill * 1000, averageFill * 1000 / 20.0 * 100, slowest * 1000);
    return 0;
}
