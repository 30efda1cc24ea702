// Text batches: glyph lookup in the Windows-1252 font, entry limits, and the
// geometry Build lays out (alignment, 80 % advance, texture cells, array end).
#include "ui/text_batch.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "ui/engine_texts.h"

namespace {

// Vertex v of the built array: x y z nx ny nz u v.
const float* Vertex(const TextBatch& batch, int v) {
    return batch.vertices + v * TextBatch::kVertexFloats;
}

}  // namespace

TEST(TextBatchGlyphs, CharacterSetPlacesEveryRow) {
    EXPECT_EQ(TextBatch::GlyphIndex('A'), 0);
    EXPECT_EQ(TextBatch::GlyphIndex('P'), 15);
    EXPECT_EQ(TextBatch::GlyphIndex('Q'), 16);
    EXPECT_EQ(TextBatch::GlyphIndex(':'), 31);
    EXPECT_EQ(TextBatch::GlyphIndex('1'), 32);
    EXPECT_EQ(TextBatch::GlyphIndex('0'), 41);
    EXPECT_EQ(TextBatch::GlyphIndex(0xA3), 44);  // pound sign
    EXPECT_EQ(TextBatch::GlyphIndex('^'), 47);
    EXPECT_EQ(TextBatch::GlyphIndex('&'), 48);
    EXPECT_EQ(TextBatch::GlyphIndex('\\'), 60);
    EXPECT_EQ(TextBatch::GlyphIndex('|'), 61);
    EXPECT_EQ(TextBatch::GlyphIndex(0xAE), 62);  // registered sign
    EXPECT_EQ(TextBatch::GlyphIndex(0xA9), 63);  // copyright sign
    EXPECT_EQ(TextBatch::GlyphIndex(','), 64);
    EXPECT_EQ(TextBatch::GlyphIndex(0xB0), 70);  // degree sign
    EXPECT_EQ(TextBatch::GlyphIndex(0xB7), 71);  // middle dot
    EXPECT_EQ(TextBatch::GlyphIndex(' '), 72);
    EXPECT_EQ(TextBatch::GlyphIndex(0x95), 73);  // bullet, the console cursor
    EXPECT_EQ(TextBatch::GlyphIndex('a'), 80);
    EXPECT_EQ(TextBatch::GlyphIndex('p'), 95);
    EXPECT_EQ(TextBatch::GlyphIndex('q'), 96);
    EXPECT_EQ(TextBatch::GlyphIndex('z'), 105);
}

TEST(TextBatchGlyphs, UnknownCharactersBecomeA) {
    EXPECT_EQ(TextBatch::GlyphIndex(0xE9), 0);  // e acute
    EXPECT_EQ(TextBatch::GlyphIndex(0x99), 0);  // trade mark
    EXPECT_EQ(TextBatch::GlyphIndex('\t'), 0);
    TextBatch batch;
    int index = batch.AddEntry("x\xE9y", 0, 0, 800, 10, 1.0f, 0);
    ASSERT_EQ(index, 0);
    ASSERT_EQ(batch.entries[0].length, 3);
    EXPECT_EQ(batch.entries[0].glyphs[0], 103);
    EXPECT_EQ(batch.entries[0].glyphs[1], 0);
    EXPECT_EQ(batch.entries[0].glyphs[2], 104);
}

TEST(TextBatchGlyphs, CornersAddressTheCellFromTheBottomOfTheImage) {
    float u, v;
    // 'R' is glyph 17: column 1, row 1 from the top.
    TextBatch::GlyphCorner(17, 0, &u, &v);
    EXPECT_FLOAT_EQ(u, 32.0f / 512.0f);
    EXPECT_FLOAT_EQ(v, 224.0f / 256.0f);
    TextBatch::GlyphCorner(17, 1, &u, &v);
    EXPECT_FLOAT_EQ(u, 64.0f / 512.0f);
    EXPECT_FLOAT_EQ(v, 224.0f / 256.0f);
    TextBatch::GlyphCorner(17, 2, &u, &v);
    EXPECT_FLOAT_EQ(u, 32.0f / 512.0f);
    EXPECT_FLOAT_EQ(v, 192.0f / 256.0f);
    TextBatch::GlyphCorner(17, 3, &u, &v);
    EXPECT_FLOAT_EQ(u, 64.0f / 512.0f);
    EXPECT_FLOAT_EQ(v, 192.0f / 256.0f);
    // The bottom-right cell of the last row.
    TextBatch::GlyphCorner(127, 3, &u, &v);
    EXPECT_FLOAT_EQ(u, 1.0f);
    EXPECT_FLOAT_EQ(v, 0.0f);
}

TEST(TextBatchEntries, SixtyFifthEntryIsRefusedAndChangesNothing) {
    TextBatch batch;
    for (int i = 0; i < 64; i++) {
        ASSERT_EQ(batch.AddEntry("AB", float(i), 0, 800, 10, 1.0f, 0), i);
    }
    TextEntry before = batch.entries[63];
    EXPECT_EQ(batch.AddEntry("ZZZ", 500, 500, 800, 10, 1.0f, 0), -1);
    EXPECT_EQ(batch.count, 64);
    EXPECT_EQ(memcmp(&before, &batch.entries[63], sizeof(TextEntry)), 0);
    EXPECT_EQ(batch.Build(), 64u * 2 * 2);

    batch.ClearEntry(-1);
    EXPECT_EQ(batch.count, 0);
    EXPECT_EQ(batch.AddEntry("C", 0, 0, 800, 10, 1.0f, 0), 0);
    EXPECT_EQ(batch.Build(), 2u);
}

TEST(TextBatchEntries, NullAndOverlongTextsAreRefused) {
    TextBatch batch;
    EXPECT_EQ(batch.AddEntry(nullptr, 0, 0, 800, 10, 1.0f, 0), -1);
    std::string text(1024, 'a');
    EXPECT_EQ(batch.AddEntry(text.c_str(), 0, 0, 800, 10, 1.0f, 0), -1);
    text.resize(1023);
    EXPECT_EQ(batch.AddEntry(text.c_str(), 0, 0, 800, 10, 1.0f, 0), 0);
    EXPECT_EQ(batch.entries[0].length, 1023);
    EXPECT_EQ(batch.count, 1);
}

TEST(TextBatchEntries, SetClearAppendKeepGeometry) {
    TextBatch batch;
    batch.AddEntry("ABC", 12, 34, 800, 16, 1.0f, 2);
    batch.SetTextF(0, "%d:%s", 42, "x");
    ASSERT_EQ(batch.entries[0].length, 4);
    EXPECT_EQ(batch.entries[0].glyphs[0], TextBatch::GlyphIndex('4'));
    EXPECT_EQ(batch.entries[0].glyphs[3], TextBatch::GlyphIndex('x'));
    batch.AppendText(0, "yz");
    EXPECT_EQ(batch.entries[0].length, 6);
    batch.ClearEntry(0);
    EXPECT_EQ(batch.entries[0].length, 0);
    EXPECT_EQ(batch.entries[0].glyphs[0], 0);
    EXPECT_FLOAT_EQ(batch.entries[0].x, 12.0f);
    EXPECT_FLOAT_EQ(batch.entries[0].y, 34.0f);
    EXPECT_EQ(batch.entries[0].align, 2u);
    EXPECT_EQ(batch.count, 1);
    // Bad indices and null texts are ignored.
    batch.SetText(64, "A");
    batch.SetText(0, nullptr);
    batch.AppendText(-5, "A");
    batch.ClearEntry(200);
    EXPECT_EQ(batch.entries[0].length, 0);
    EXPECT_EQ(batch.Build(), 0u);
}

TEST(TextBatchBuild, CentredEntryStartsHalfTheSpareWidthIn) {
    TextBatch batch;
    batch.AddEntry("ABCDEFGHIJ", 5, 20, 800, 10, 1.0f, 1);
    ASSERT_EQ(batch.Build(), 20u);
    EXPECT_FLOAT_EQ(Vertex(batch, 0)[0], 365.0f);
    EXPECT_FLOAT_EQ(Vertex(batch, 0)[1], 20.0f);
    // The last glyph ends where a run of 10 x 8 units centred on 405 ends, plus the overlap.
    EXPECT_FLOAT_EQ(Vertex(batch, 9 * 6 + 2)[0], 365.0f + 9 * 8.0f + 10.0f);
}

TEST(TextBatchBuild, RightAlignedBuildLineStartsAt726) {
    TextBatch batch;
    batch.AddEntry("Build 1010", 710, 8, 80, 8, 1.0f, 2);
    ASSERT_EQ(batch.Build(), 20u);
    EXPECT_FLOAT_EQ(Vertex(batch, 0)[0], 726.0f);
    const unsigned char expected[10] = {1, 100, 88, 91, 83, 72, 32, 41, 32, 41};
    for (int i = 0; i < 10; i++) {
        EXPECT_EQ(batch.entries[0].glyphs[i], expected[i]) << "glyph " << i;
    }
}

TEST(TextBatchBuild, GlyphsAdvanceByEightyPercentAsTwoTriangles) {
    TextBatch batch;
    batch.AddEntry("QR", 100, 50, 800, 20, 1.0f, 0);
    ASSERT_EQ(batch.Build(), 4u);
    // Expected corners of each of the six vertices of a glyph: x offset, y offset, corner.
    const float dx[6] = {0, 0, 1, 1, 1, 0};
    const float dy[6] = {0, 1, 1, 1, 0, 0};
    const int corner[6] = {0, 2, 3, 3, 1, 0};
    for (int g = 0; g < 2; g++) {
        float x0 = 100.0f + g * 16.0f;
        for (int k = 0; k < 6; k++) {
            const float* v = Vertex(batch, g * 6 + k);
            EXPECT_FLOAT_EQ(v[0], x0 + dx[k] * 20.0f) << g << "/" << k;
            EXPECT_FLOAT_EQ(v[1], 50.0f + dy[k] * 20.0f) << g << "/" << k;
            EXPECT_EQ(v[2], 0.0f);
            EXPECT_EQ(v[3], 0.0f);
            EXPECT_EQ(v[4], 0.0f);
            EXPECT_EQ(v[5], 1.0f);
            float u, t;
            TextBatch::GlyphCorner(16 + g, corner[k], &u, &t);
            EXPECT_EQ(v[6], u);
            EXPECT_EQ(v[7], t);
        }
    }
}

TEST(TextBatchBuild, EmptyEntriesBuildNothingAndSlotsBeyondCountAreIncluded) {
    TextBatch batch;
    for (int i = 0; i < 9; i++) {
        batch.AddEntry("", 12, 32.0f + 16 * i, 800, 12, 1.0f, 0);
    }
    EXPECT_EQ(batch.Build(), 0u);
    batch.SetText(3, "ok");
    EXPECT_EQ(batch.Build(), 4u);
    EXPECT_FLOAT_EQ(Vertex(batch, 0)[1], 80.0f);
    // An entry slot past count that was given text still draws.
    batch.SetText(40, "x");
    EXPECT_EQ(batch.Build(), 6u);
}

TEST(TextBatchBuild, OverfullBatchStopsAtTheArrayEnd) {
    TextBatch batch;
    std::string line(1000, 'M');
    for (int i = 0; i < 8; i++) {
        ASSERT_EQ(batch.AddEntry(line.c_str(), 0, float(i), 800, 4, 1.0f, 0), i);
    }
    // 8000 glyphs asked for, 6826 whole glyphs fit in 40,960 vertices.
    EXPECT_EQ(batch.Build(), 6826u * 2);
    const float* last = Vertex(batch, 6826 * 6 - 1);
    EXPECT_FLOAT_EQ(last[1], 6.0f);  // entry 6, glyph 825, its closing top-left vertex
    EXPECT_FLOAT_EQ(last[0], static_cast<float>(825 * 4 * static_cast<double>(0.8f)));

    batch.Reset();
    EXPECT_EQ(batch.vertices, nullptr);
    EXPECT_EQ(batch.count, 0);
    EXPECT_EQ(batch.Build(), 0u);
    EXPECT_NE(batch.vertices, nullptr);
}

TEST(EngineTexts, StartUpBatchesHoldTheirLines) {
    g_loadingText.Reset();
    g_debugValues.Reset();
    g_netDebugText.Reset();
    g_debugTitles.Reset();
    FillEngineTextBatches();
    ASSERT_EQ(g_loadingText.count, 1);
    EXPECT_EQ(g_loadingText.entries[0].length, 7);
    EXPECT_EQ(g_loadingText.entries[0].align, 1u);
    EXPECT_EQ(g_loadingText.triangleCount, 14u);
    // "LOADING" centred in 800 at size 10: 7 x 8 units wide, starting at 372.
    EXPECT_FLOAT_EQ(g_loadingText.vertices[0], 372.0f);
    EXPECT_FLOAT_EQ(g_loadingText.vertices[1], 320.0f);
    EXPECT_EQ(g_debugValues.count, 9);
    EXPECT_FLOAT_EQ(g_debugValues.entries[8].y, 160.0f);
    EXPECT_EQ(g_debugValues.triangleCount, 0u);
    ASSERT_EQ(g_netDebugText.count, 6);
    EXPECT_FLOAT_EQ(g_netDebugText.entries[4].y, 104.0f);
    EXPECT_FLOAT_EQ(g_netDebugText.entries[5].x, 680.0f);
    EXPECT_FLOAT_EQ(g_netDebugText.entries[5].width, 780.0f);
    ASSERT_EQ(g_debugTitles.count, 5);
    EXPECT_FLOAT_EQ(g_debugTitles.entries[1].size, 32.0f);
    EXPECT_FLOAT_EQ(g_debugTitles.entries[2].x, 720.0f);
    EXPECT_EQ(g_debugTitles.entries[3].align, 2u);
    EXPECT_EQ(g_debugTitles.entries[3].length, 10);
    EXPECT_GT(g_debugTitles.entries[4].length, 0);
}
