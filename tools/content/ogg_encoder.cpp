#include "ogg_encoder.h"

#include <vorbis/vorbisenc.h>

#include <cstring>

static void AppendPage(std::vector<uint8_t>* out, const ogg_page& page) {
    out->insert(out->end(), page.header, page.header + page.header_len);
    out->insert(out->end(), page.body, page.body + page.body_len);
}

// Pulls every finished block out of the analyser and into pages.
static void Drain(vorbis_dsp_state* vd, vorbis_block* vb, ogg_stream_state* os, std::vector<uint8_t>* out) {
    ogg_packet packet;
    ogg_page page;
    while (vorbis_analysis_blockout(vd, vb) == 1) {
        vorbis_analysis(vb, nullptr);
        vorbis_bitrate_addblock(vb);
        while (vorbis_bitrate_flushpacket(vd, &packet)) {
            ogg_stream_packetin(os, &packet);
            while (ogg_stream_pageout(os, &page)) {
                AppendPage(out, page);
            }
        }
    }
}

std::vector<uint8_t> EncodeOggVorbis(const std::vector<float>& samples, int channels, int rate,
                                     uint32_t serial, float quality) {
    std::vector<uint8_t> out;
    vorbis_info vi;
    vorbis_info_init(&vi);
    if (vorbis_encode_init_vbr(&vi, channels, rate, quality) != 0) {
        vorbis_info_clear(&vi);
        return out;
    }
    vorbis_comment vc;
    vorbis_comment_init(&vc);
    vorbis_comment_add_tag(&vc, "ENCODER", "vantle-content");
    vorbis_dsp_state vd;
    vorbis_block vb;
    vorbis_analysis_init(&vd, &vi);
    vorbis_block_init(&vd, &vb);
    ogg_stream_state os;
    ogg_stream_init(&os, static_cast<int>(serial));

    ogg_packet header, comments, codebooks;
    vorbis_analysis_headerout(&vd, &vc, &header, &comments, &codebooks);
    ogg_stream_packetin(&os, &header);
    ogg_stream_packetin(&os, &comments);
    ogg_stream_packetin(&os, &codebooks);
    ogg_page page;
    while (ogg_stream_flush(&os, &page)) {
        AppendPage(&out, page);
    }

    const size_t frames = samples.size() / channels;
    const size_t chunk = 4096;
    for (size_t at = 0; at < frames; at += chunk) {
        size_t n = frames - at < chunk ? frames - at : chunk;
        float** buffer = vorbis_analysis_buffer(&vd, static_cast<int>(n));
        for (size_t i = 0; i < n; i++) {
            for (int c = 0; c < channels; c++) {
                buffer[c][i] = samples[(at + i) * channels + c];
            }
        }
        vorbis_analysis_wrote(&vd, static_cast<int>(n));
        Drain(&vd, &vb, &os, &out);
    }
    vorbis_analysis_wrote(&vd, 0);
    Drain(&vd, &vb, &os, &out);
    while (ogg_stream_flush(&os, &page)) {
        AppendPage(&out, page);
    }

    ogg_stream_clear(&os);
    vorbis_block_clear(&vb);
    vorbis_dsp_clear(&vd);
    vorbis_comment_clear(&vc);
    vorbis_info_clear(&vi);
    return out;
}
