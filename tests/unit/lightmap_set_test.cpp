// The lightmap block byte for byte, and the rectangle allocator.
#include "resources/lightmap_set.h"

#include <gtest/gtest.h>

#include <algorithm>
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

// Header, piece records in increasing piece order (an empty one kept), then the pages; read back
// byte for byte.
TEST(LightmapBlock, LayoutAndRoundTripAreByteForByteInPieceOrder) {
    std::unique_ptr<LightmapSet> set(new LightmapSet);
    SetCoords(*set, 300, 12);
    SetCoords(*set, 9, 3);
    SetCoords(*set, 511, 0);
    set->EnsurePage(0);
    unsigned char* page = set->EnsurePage(1);
    for (int i = 0; i < LightmapSet::kPageBytes; i++) {
        page[i] = static_cast<unsigned char>(i ^ (i >> 9));
    }
    set->areaCount = 4;
    std::vector<unsigned char> bytes = Serialised(*set);
    ASSERT_EQ(bytes.size(), 18u + 3 * 6 + 15 * 12 + 2 * 196608);
    // Tag, size, pages, areas, record count; piece 9 with 3 entries comes first.
    const unsigned char header[24] = {'V', 'L', 'L', 'M', 0xD8, 0x00, 0x06, 0, 2, 0, 0, 0,
                                      4,   0,   0,   0,   3,    0,    9,    0, 3,  0, 0, 0};
    EXPECT_EQ(0, memcmp(bytes.data(), header, sizeof(header)));
    EXPECT_EQ(bytes[bytes.size() - 196608 + 5], page[5]);  // page 1 right after page 0
    std::unique_ptr<LightmapSet> again(new LightmapSet);
    ASSERT_EQ(again->Parse(bytes.data(), bytes.size()), bytes.size());
    EXPECT_EQ(Serialised(*again), bytes);
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
    // The tag, 129 pages, piece index 516, about a billion entries.
    const std::pair<size_t, unsigned char> patches[] = {{0, 'v'}, {8, 129}, {19, 2}, {23, 0x40}};
    for (const auto& patch : patches) {
        std::vector<unsigned char> bad = bytes;
        bad[patch.first] = patch.second;
        refused(bad, "patched");
    }
    // The same piece twice.
    std::unique_ptr<LightmapSet> twice(new LightmapSet);
    SetCoords(*twice, 4, 3);
    SetCoords(*twice, 5, 3);
    std::vector<unsigned char> dup = Serialised(*twice);
    dup[18 + 6 + 36] = 4;
    refused(dup, "duplicate piece");
}

// The allocator against the literal first fit over a plain cell map (pages, then rows, then
// columns), through random takes and give-backs.
TEST(LightmapAllocator, FragmentedPagesGiveTheLiteralFirstFit) {
    std::unique_ptr<LightmapSet> set(new LightmapSet);
    std::vector<unsigned char> free(128 * 64 * 64, 1);
    auto mark = [&](int w, int h, int p, int x, int y, unsigned char v) {
        for (int j = 0; j < h; j++) {
            std::fill_n(free.begin() + (p * 64 + y + j) * 64 + x, w, v);
        }
    };
    auto plainFits = [&](int w, int h, int p, int x, int y) {
        for (int j = 0; j < h; j++) {
            const unsigned char* row = &free[(p * 64 + y + j) * 64 + x];
            if (std::find(row, row + w, 0) != row + w) {
                return false;
            }
        }
        return true;
    };
    std::vector<std::vector<int>> taken;  // w, h, page, column, row
    unsigned state = 7;
    auto next = [&state](int n) {
        state = state * 1103515245u + 12345u;
        return static_cast<int>((state >> 8) % n);
    };
    for (int step = 0; step < 1500; step++) {
        if (!taken.empty() && next(3) == 0) {
            size_t k = static_cast<size_t>(next(static_cast<int>(taken.size())));
            std::vector<int> t = taken[k];
            taken.erase(taken.begin() + static_cast<long>(k));
            set->FreeArea(t[0], t[1], t[2], t[3], t[4]);
            mark(t[0], t[1], t[2], t[3], t[4], 1);
            continue;
        }
        int w = 1 + next(step < 1000 ? 32 : 8), h = 1 + next(step < 1000 ? 32 : 8);
        std::vector<int> want = {w, h, -1, -1, -1}, got = {w, h, -1, -1, -1};
        for (int p = 0; p < 128 && want[2] < 0; p++) {
            for (int y = 0; y + h <= 64 && want[2] < 0; y++) {
                for (int x = 0; x + w <= 64 && want[2] < 0; x++) {
                    if (plainFits(w, h, p, x, y)) {
                        want = {w, h, p, x, y};
                    }
                }
            }
        }
        int ok = set->AllocateArea(w, h, &got[2], &got[3], &got[4]);
        ASSERT_EQ(ok, want[2] >= 0) << "step " << step;
        ASSERT_EQ(got, want) << "step " << step;
        if (ok) {
            mark(w, h, got[2], got[3], got[4], 0);
            taken.push_back(got);
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
