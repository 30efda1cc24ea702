// What a text batch entry shows, read back from its glyphs, for the tests of the screens
// built from text batches. Characters the font lacks read back as "A", as they are drawn.
#pragma once

#include <string>

#include "ui/text_batch.h"

namespace test {

inline std::string Shown(const TextBatch& batch, int index) {
    const TextEntry& entry = batch.entries[index];
    std::string text;
    for (int i = 0; i < entry.length; i++) {
        for (int b = 32; b < 256; b++) {
            if (TextBatch::GlyphIndex(static_cast<unsigned char>(b)) == entry.glyphs[i]) {
                text += static_cast<char>(b);
                break;
            }
        }
    }
    return text;
}

}  // namespace test
