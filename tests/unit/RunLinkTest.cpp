// SPDX-License-Identifier: Zlib
// Runs as links: the form that the page of the game reads and writes, and links that are refused.
#include "tools/replay/RunLink.h"

#include <random>
#include <stdexcept>

#include <gtest/gtest.h>

static std::string refusalOf(const std::string& argument) {
    try {
        RunLink::read(argument);
        return "";
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

TEST(RunLink, KeepsEachByteOfTheText) {
    std::mt19937 random(1);
    for (std::size_t size = 0; size < 300; ++size) {
        std::string text;
        while (text.size() < size) text += static_cast<char>(random());
        EXPECT_EQ(RunLink::textOf("https://example.com/" + RunLink::of(text)), text) << size;
    }
}

TEST(RunLink, ReadsRawDeflateInBase64Url) {
    EXPECT_EQ(RunLink::textOf("#run=AQMA_P_7_34"), "\xFB\xFF~");
    EXPECT_EQ(RunLink::read("x#run=M1AoykzPKOEyVkjNSwEA").getEnd(), 3u);
}

TEST(RunLink, RefusesWhatIsBrokenOrTooLarge) {
    const std::string good = RunLink::of("0 right\n5 end\n");
    EXPECT_EQ(refusalOf(good), "");
    for (std::size_t size = RunLink::mark.size(); size < good.size() - 1; ++size) {
        EXPECT_EQ(refusalOf(good.substr(0, size)), "the link is broken") << size;
    }
    for (const std::string end : {"AAAA", "=", "+/", "\xC3\xA4", "%20", " "}) {
        EXPECT_EQ(refusalOf(good + end), "the link is broken") << end;
    }
    EXPECT_EQ(refusalOf(RunLink::of("0 jump\n")), "the link, line 1: \"jump\" is not a key");

    const std::string most(RunLink::mostText, '\n');
    EXPECT_EQ(RunLink::textOf(RunLink::of(most)), most);
    EXPECT_THROW(RunLink::of(most + "\n"), std::runtime_error);
    std::string lines = "#run=7MEhAQAAAICg7v_BHgEK"; // empty lines, 774 for each further letter
    lines.resize(lines.size() + 1500, 'A');
    EXPECT_EQ(refusalOf(lines), "the run in the link is too long");
    lines.resize(RunLink::mark.size() + RunLink::mostLetters + 1, 'A');
    EXPECT_EQ(refusalOf(lines), "the link is too long");
}
