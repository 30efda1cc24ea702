// Text batches: glyph lookup in the Windows-1252 font, entry limits, and the
// geometry Build lays out (alignment, 80 % advance, texture cells, array end).
#include "ui/text_batch.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "text_shown.h"

namespace {

// Vertex v of the built array: x y z nx ny nz u v.
const float* Vertex(const TextBatch& batch, int v) {
    return batch.vertices + v * TextBatch::kVertexFloats;
}

}  // namespace

TEST(TextBatchGlyphs, EveryRowOfTheFontAndUnknownCharactersAsA) {
    // A few of each row of the font, the code page's signs, and "A" for what it lacks.
    const struct {
        unsigned char character;
        int glyph;
    } cases[] = {{'Q', 16}, {'0', 41}, {0xA3, 44}, {'|', 61}, {' ', 72}, {0x95, 73}, {'z', 105}, {0xE9, 0}, {'\t', 0}};
    for (const auto& c : cases) {
        EXPECT_EQ(TextBatch::GlyphIndex(c.character), c.glyph) << int(c.character);
    }
    // Corners address the cell from the bottom of the 512 x 256 image: 'R' is column 1, row 1.
    float u, v;
    TextBatch::GlyphCorner(17, 0, &u, &v);
    EXPECT_FLOAT_EQ(u, 32.0f / 512.0f);
    EXPECT_FLOAT_EQ(v, 224.0f / 256.0f);
    TextBatch::GlyphCorner(127, 3, &u, &v);
    EXPECT_FLOAT_EQ(u, 1.0f);
    EXPECT_FLOAT_EQ(v, 0.0f);
}

TEST(TextBatchEntries, SixtyFifthEntryAndOverlongTextsAreRefused) {
    TextBatch batch;
    EXPECT_EQ(batch.AddEntry(nullptr, 0, 0, 800, 10, 1.0f, 0), -1);
    EXPECT_EQ(batch.AddEntry(std::string(1024, 'a').c_str(), 0, 0, 800, 10, 1.0f, 0), -1);
    EXPECT_EQ(batch.AddEntry(std::string(1023, 'a').c_str(), 0, 0, 800, 10, 1.0f, 0), 0);
    for (int i = 1; i < 64; i++) {
        ASSERT_EQ(batch.AddEntry("AB", float(i), 0, 800, 10, 1.0f, 0), i);
    }
    EXPECT_EQ(batch.AddEntry("ZZZ", 500, 500, 800, 10, 1.0f, 0), -1);
    EXPECT_EQ(batch.Build(), (1023u + 63 * 2) * 2);
    batch.ClearEntry(-1);
    EXPECT_EQ(batch.AddEntry("C", 0, 0, 800, 10, 1.0f, 0), 0);
    EXPECT_EQ(batch.Build(), 2u);
}

TEST(TextBatchEntries, SetAppendAndClearKeepTheEntrysPlace) {
    TextBatch batch;
    batch.AddEntry("ABC", 12, 34, 800, 16, 1.0f, 0);
    batch.SetTextF(0, "%d:%s", 42, "x");
    batch.AppendText(0, "yz");
    EXPECT_EQ(test::Shown(batch, 0), "42:xyz");
    batch.ClearEntry(0);
    EXPECT_EQ(batch.Build(), 0u);
    // Bad indices and null texts are ignored; a slot past count that is given text draws.
    batch.SetText(64, "A");
    batch.SetText(0, nullptr);
    batch.AppendText(-5, "A");
    batch.SetText(40, "x");
    batch.SetText(0, "ok");
    EXPECT_EQ(batch.Build(), 6u);
    EXPECT_FLOAT_EQ(Vertex(batch, 0)[1], 34.0f);
}

TEST(TextBatchBuild, AlignmentPlacesTheFirstGlyph) {
    // Centred: half the spare width in; right-aligned: the build line's 726.
    const struct {
        const char* text;
        float x, width, size;
        unsigned int align;
        float first;
    } cases[] = {{"ABCDEFGHIJ", 5, 800, 10, 1, 365}, {"Build 1010", 710, 80, 8, 2, 726}, {"AB", 7, 80, 8, 0, 7}};
    for (const auto& c : cases) {
        TextBatch batch;
        batch.AddEntry(c.text, c.x, 20, c.width, c.size, 1.0f, c.align);
        batch.Build();
        EXPECT_FLOAT_EQ(Vertex(batch, 0)[0], c.first) << c.text;
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
        for (int k = 0; k < 6; k++) {
            const float* v = Vertex(batch, g * 6 + k);
            EXPECT_FLOAT_EQ(v[0], 100.0f + g * 16.0f + dx[k] * 20.0f) << g << "/" << k;
            EXPECT_FLOAT_EQ(v[1], 50.0f + dy[k] * 20.0f) << g << "/" << k;
            float u, t;
            TextBatch::GlyphCorner(16 + g, corner[k], &u, &t);
            EXPECT_EQ(v[6], u);
            EXPECT_EQ(v[7], t);
        }
    }
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
}
