// The lightmap block byte for byte, and the rectangle allocator.
#include "resources/lightmap_set.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace {

std::vector<unsigned char> Serialised(const LightmapSet& set) {
    std::vector<unsigned char> out(set.Size());
    EXPECT_EQ(set.Serialise(out.data()), out.size());
    return out;
}

void SetCoords(LightmapSet& set, int piece, unsigned count) {
    set.coords[piece] = static_cast<LightmapVertex*>(malloc(count * sizeof(LightmapVertex)));
    set.coordCounts[piece] = count;
    for (unsigned i = 0; i < count; i++) {
        set.coords[piece][i] = {static_cast<unsigned>(piece + i), i * 0.125f, piece * 0.5f};
    }
}

TEST(LightmapBlock, TwoPagesAndOnePieceOfFourTrianglesHasTheDocumentedSize) {
    std::unique_ptr<LightmapSet> set(new LightmapSet);
    SetCoords(*set, 9, 12);
    set->EnsurePage(0);
    set->EnsurePage(1)[5] = 200;
    set->areaCount = 4;
    std::vector<unsigned char> bytes = Serialised(*set);
    ASSERT_EQ(bytes.size(), 18u + 6 + 144 + 393216);
    // Header: tag, size, pages, areas, one record for piece 9 with 12 entries.
    const unsigned char header[24] = {'V', 'L', 'L', 'M', 0xA8, 0x00, 0x06, 0, 2, 0, 0, 0,
                                      4,   0,   0,   0,   1,    0,    9,    0, 12, 0, 0, 0};
    EXPECT_EQ(0, memcmp(bytes.data(), header, sizeof(header)));
    // Page 1's sixth byte sits right after page 0.
    EXPECT_EQ(bytes[18 + 6 + 144 + 196608 + 5], 200);
}

TEST(LightmapBlock, RoundTripIsByteForByteInPieceOrder) {
    std::unique_ptr<LightmapSet> set(new LightmapSet);
    SetCoords(*set, 300, 6);
    SetCoords(*set, 2, 3);
    SetCoords(*set, 511, 0);
    unsigned char* page = set->EnsurePage(0);
    for (int i = 0; i < LightmapSet::kPageBytes; i++) {
        page[i] = static_cast<unsigned char>(i ^ (i >> 9));
    }
    std::vector<unsigned char> bytes = Serialised(*set);
    EXPECT_EQ(bytes[18], 2);  // increasing piece index
    std::unique_ptr<LightmapSet> again(new LightmapSet);
    ASSERT_EQ(again->Parse(bytes.data(), bytes.size()), bytes.size());
    EXPECT_EQ(Serialised(*again), bytes);
    EXPECT_EQ(again->coordCounts[300], 6u);
    EXPECT_FLOAT_EQ(again->coords[300][4].u, 0.5f);
    ASSERT_NE(again->coords[511], nullptr);
    EXPECT_EQ(again->coordCounts[511], 0u);
}

TEST(LightmapBlock, BadBlocksAreRefusedAndLeaveTheSetEmpty) {
    std::unique_ptr<LightmapSet> set(new LightmapSet);
    SetCoords(*set, 4, 3);
    set->EnsurePage(0);
    std::vector<unsigned char> bytes = Serialised(*set);
    std::unique_ptr<LightmapSet> again(new LightmapSet);
    auto refused = [&](const std::vector<unsigned char>& b, const char* what) {
        EXPECT_EQ(again->Parse(b.data(), b.size()), 0u) << what;
        EXPECT_EQ(again->pageCount, 0u) << what;
        EXPECT_EQ(again->pages[0], nullptr) << what;
        EXPECT_EQ(again->coords[4], nullptr) << what;
    };
    for (size_t cut = 0; cut < bytes.size(); cut += cut < 80 ? 1 : 4099) {
        refused(std::vector<unsigned char>(bytes.begin(), bytes.begin() + cut), "truncated");
    }
    std::vector<unsigned char> tag = bytes;
    tag[0] = 'v';
    refused(tag, "tag");
    std::vector<unsigned char> pages = bytes;
    pages[8] = 129;
    refused(pages, "129 pages");
    std::vector<unsigned char> index = bytes;
    index[19] = 2;  // piece 516
    refused(index, "piece index 516");
    std::vector<unsigned char> count = bytes;
    count[23] = 0x40;  // about a billion entries
    refused(count, "entry count");
    // The same piece twice.
    std::unique_ptr<LightmapSet> twice(new LightmapSet);
    SetCoords(*twice, 4, 3);
    SetCoords(*twice, 5, 3);
    std::vector<unsigned char> dup = Serialised(*twice);
    dup[18 + 6 + 36] = 4;
    refused(dup, "duplicate piece");
}

// The literal first fit over a plain cell map: pages, then rows, then columns.
struct PlainCells {
    std::vector<unsigned char> free = std::vector<unsigned char>(128 * 64 * 64, 1);
    unsigned char& At(int p, int y, int x) { return free[(p * 64 + y) * 64 + x]; }
    int Allocate(int w, int h, int* page, int* column, int* row) {
        for (int p = 0; p < 128; p++) {
            for (int y = 0; y + h <= 64; y++) {
                for (int x = 0; x + w <= 64; x++) {
                    int fits = 1;
                    for (int j = 0; j < h && fits; j++) {
                        for (int i = 0; i < w && fits; i++) {
                            fits = At(p, y + j, x + i);
                        }
                    }
                    if (fits) {
                        for (int j = 0; j < h; j++) {
                            for (int i = 0; i < w; i++) {
                                At(p, y + j, x + i) = 0;
                            }
                        }
                        *page = p;
                        *column = x;
                        *row = y;
                        return 1;
                    }
                }
            }
        }
        return 0;
    }
};

TEST(LightmapAllocator, FragmentedPagesGiveTheLiteralFirstFit) {
    std::unique_ptr<LightmapSet> set(new LightmapSet);
    std::unique_ptr<PlainCells> plain(new PlainCells);
    struct Taken {
        int w, h, page, column, row;
    };
    std::vector<Taken> taken;
    unsigned state = 7;
    auto next = [&state](int n) {
        state = state * 1103515245u + 12345u;
        return static_cast<int>((state >> 8) % n);
    };
    for (int step = 0; step < 1500; step++) {
        if (!taken.empty() && next(3) == 0) {
            // Give back a random rectangle, sometimes one that overlaps free cells too.
            size_t k = static_cast<size_t>(next(static_cast<int>(taken.size())));
            Taken t = taken[k];
            taken.erase(taken.begin() + static_cast<long>(k));
            int w = t.w + (next(4) == 0), h = t.h;
            if (t.column + w > 64) {
                w = t.w;
            }
            set->FreeArea(w, h, t.page, t.column, t.row);
            for (int j = 0; j < h; j++) {
                for (int i = 0; i < w; i++) {
                    plain->At(t.page, t.row + j, t.column + i) = 1;
                }
            }
            continue;
        }
        int w = 1 + next(step < 1000 ? 32 : 8), h = 1 + next(step < 1000 ? 32 : 8);
        Taken a = {w, h, -1, -1, -1}, b = {w, h, -1, -1, -1};
        int okA = set->AllocateArea(w, h, &a.page, &a.column, &a.row);
        int okB = plain->Allocate(w, h, &b.page, &b.column, &b.row);
        ASSERT_EQ(okA, okB) << "step " << step;
        ASSERT_EQ(a.page, b.page) << "step " << step;
        ASSERT_EQ(a.column, b.column) << "step " << step;
        ASSERT_EQ(a.row, b.row) << "step " << step;
        if (okA) {
            taken.push_back(a);
        }
    }
    EXPECT_GT(taken.size(), 100u);
}

TEST(LightmapAllocator, AfterParsingEveryCellIsFree) {
    std::unique_ptr<LightmapSet> set(new LightmapSet);
    int page, column, row;
    set->AllocateArea(8, 8, &page, &column, &row);
    set->EnsurePage(0);
    std::vector<unsigned char> bytes = Serialised(*set);
    std::unique_ptr<LightmapSet> again(new LightmapSet);
    again->AllocateArea(8, 8, &page, &column, &row);
    ASSERT_NE(again->Parse(bytes.data(), bytes.size()), 0u);
    ASSERT_EQ(again->AllocateArea(2, 2, &page, &column, &row), 1);
    EXPECT_EQ(page, 0);
    EXPECT_EQ(column, 0);
    EXPECT_EQ(row, 0);
}

}  // namespace
