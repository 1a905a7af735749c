// SPDX-License-Identifier: Zlib
#include "drawing/TextLayout.h"

#include <algorithm>

const FontGlyph* findGlyph(const std::vector<FontGlyph>& font, char character) {
    const auto found = std::find_if(font.begin(), font.end(), [character](const FontGlyph& glyph) {
        return glyph.character == character;
    });
    return found == font.end() ? nullptr : &*found;
}

float advanceOf(const std::vector<FontGlyph>& font, const FontGlyph* entry) {
    const FontGlyph* glyph = entry ? entry : findGlyph(font, ' ');
    return glyph ? glyph->advance : 0;
}

static bool isBlank(const FontGlyph* entry) {
    return entry && entry->character == ' ';
}

std::vector<TextLine> breakIntoLines(const std::vector<FontGlyph>& font, const std::string& text,
                                     float wrapWidth, float scale) {
    std::vector<TextLine> lines;
    TextLine line;
    float measure = 0; // units
    bool brokenAtBlank = false;
    const auto endLine = [&] {
        lines.push_back(line);
        line.clear();
        measure = 0;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n') {
            endLine();
            continue;
        }
        line.push_back(findGlyph(font, text[i]));
        measure += scale * advanceOf(font, line.back());
        if (!(measure >= wrapWidth)) continue;

        // A line has one entry per character, so i goes back by the number of entries removed.
        const auto lastBlank = std::find_if(line.rbegin(), line.rend(), isBlank);
        if (lastBlank != line.rend()) {
            const auto taken = lastBlank - line.rbegin() + 1;
            i -= static_cast<std::size_t>(taken - 1); // on the blank, which is dropped
            line.resize(line.size() - static_cast<std::size_t>(taken));
            brokenAtBlank = true;
        } else if (!brokenAtBlank && line.size() > 1) {
            line.pop_back();
            --i;
        }
        endLine();
    }
    if (!line.empty()) lines.push_back(line);
    return lines;
}
