#include "audio/ogg_encoder.h"

#include <vorbis/vorbisenc.h>

#include <cstring>

static void WritePage(const ogg_page& page, std::vector<unsigned char>& out) {
    out.insert(out.end(), page.header, page.header + page.header_len);
    out.insert(out.end(), page.body, page.body + page.body_len);
}

// Pulls every finished block out of the analysis stage into pages.
static void DrainBlocks(vorbis_dsp_state& dsp, vorbis_block& block, ogg_stream_state& stream,
                        std::vector<unsigned char>& out) {
    ogg_packet packet;
    ogg_page page;
    while (vorbis_analysis_blockout(&dsp, &block) == 1) {
        vorbis_analysis(&block, nullptr);
        vorbis_bitrate_addblock(&block);
        while (vorbis_bitrate_flushpacket(&dsp, &packet)) {
            ogg_stream_packetin(&stream, &packet);
            while (ogg_stream_pageout(&stream, &page)) {
                WritePage(page, out);
            }
        }
    }
}

int EncodeOggVorbis(const short* samples, unsigned int frames, int channels, long rate, float quality,
                    std::vector<unsigned char>& out) {
    out.clear();
    if ((!samples && frames) || channels < 1 || channels > 2) {
        return 0;
    }
    vorbis_info vi;
    vorbis_info_init(&vi);
    if (vorbis_encode_init_vbr(&vi, channels, rate, quality) != 0) {
        vorbis_info_clear(&vi);
        return 0;
    }
    vorbis_comment comment;
    vorbis_comment_init(&comment);
    vorbis_dsp_state dsp;
    vorbis_block block;
    vorbis_analysis_init(&dsp, &vi);
    vorbis_block_init(&dsp, &block);
    ogg_stream_state stream;
    ogg_stream_init(&stream, 0x56414E54);  // fixed serial: identical input, identical file

    ogg_packet header, commentHeader, codeHeader;
    vorbis_analysis_headerout(&dsp, &comment, &header, &commentHeader, &codeHeader);
    ogg_stream_packetin(&stream, &header);
    ogg_stream_packetin(&stream, &commentHeader);
    ogg_stream_packetin(&stream, &codeHeader);
    ogg_page page;
    while (ogg_stream_flush(&stream, &page)) {
        WritePage(page, out);
    }

    const unsigned int kChunk = 4096;
    for (unsigned int done = 0; done < frames; done += kChunk) {
        unsigned int count = frames - done < kChunk ? frames - done : kChunk;
        float** planes = vorbis_analysis_buffer(&dsp, count);
        for (unsigned int i = 0; i < count; i++) {
            for (int c = 0; c < channels; c++) {
                planes[c][i] = samples[(done + i) * channels + c] / 32768.0f;
            }
        }
        vorbis_analysis_wrote(&dsp, count);
        DrainBlocks(dsp, block, stream, out);
    }
    vorbis_analysis_wrote(&dsp, 0);
    DrainBlocks(dsp, block, stream, out);
    while (ogg_stream_flush(&stream, &page)) {
        WritePage(page, out);
    }

    ogg_stream_clear(&stream);
    vorbis_block_clear(&block);
    vorbis_dsp_clear(&dsp);
    vorbis_comment_clear(&comment);
    vorbis_info_clear(&vi);
    return 1;
}

void FixOggChecksums(unsigned char* bytes, unsigned int length) {
    unsigned int pos = 0;
    while (pos + 27 <= length && memcmp(bytes + pos, "OggS", 4) == 0) {
        unsigned int segments = bytes[pos + 26];
        if (pos + 27 + segments > length) {
            return;
        }
        unsigned int bodyLength = 0;
        for (unsigned int i = 0; i < segments; i++) {
            bodyLength += bytes[pos + 27 + i];
        }
        unsigned int headerLength = 27 + segments;
        if (bodyLength > length - pos - headerLength) {
            return;
        }
        ogg_page page;
        page.header = bytes + pos;
        page.header_len = headerLength;
        page.body = bytes + pos + headerLength;
        page.body_len = bodyLength;
        ogg_page_checksum_set(&page);
        pos += headerLength + bodyLength;
    }
}
