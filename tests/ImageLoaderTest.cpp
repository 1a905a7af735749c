// SPDX-License-Identifier: Zlib
#include "drawing/ImageLoader.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/PngBytes.h"

static LoadedImage load(const Bytes& file) {
    return ImageLoader().loadFromMemory(file.data(), file.size());
}

static Bytes pixelsOf(const LoadedImage& image) {
    const std::size_t bytes = std::size_t{image.width} * image.height * 4;
    return image.pixels ? Bytes(image.pixels.get(), image.pixels.get() + bytes) : Bytes();
}

static void expectUnreadable(const LoadedImage& image) {
    EXPECT_EQ(image.pixels, nullptr);
    EXPECT_EQ(image.width, 0u);
    EXPECT_EQ(image.height, 0u);
}

static void appendLittle(Bytes& bytes, std::uint32_t number, int count) {
    for (int i = 0; i < count; ++i) bytes.push_back(static_cast<std::uint8_t>(number >> 8 * i));
}

// A BMP of 24 bits; rows from the bottom, blue first, each row filled up to a multiple of 4 bytes.
static Bytes bmpFile(std::uint32_t width, std::uint32_t height, const Bytes& rows) {
    Bytes bytes = {'B', 'M'};
    appendLittle(bytes, static_cast<std::uint32_t>(54 + rows.size()), 4);
    appendLittle(bytes, 0, 4);
    appendLittle(bytes, 54, 4);
    appendLittle(bytes, 40, 4);
    appendLittle(bytes, width, 4);
    appendLittle(bytes, height, 4);
    appendLittle(bytes, 1, 2);
    appendLittle(bytes, 24, 2);
    bytes.insert(bytes.end(), 24, 0);
    bytes.insert(bytes.end(), rows.begin(), rows.end());
    return bytes;
}

TEST(ImageLoader, ThreeBytesAPixelGetAnOpaqueAlphaWhateverTheRowPitch) {
    for (const std::uint32_t width : {1u, 2u, 3u, 5u}) {
        Bytes samples, expected;
        for (std::uint32_t i = 0; i < width * 3; ++i) { // three rows
            for (std::uint8_t channel = 0; channel < 3; ++channel) {
                samples.push_back(static_cast<std::uint8_t>(10 * i + channel));
                expected.push_back(samples.back());
            }
            expected.push_back(255);
        }
        const LoadedImage image = load(PngBytes::file(PngBytes::rgb, width, samples));
        EXPECT_EQ(image.width, width);
        EXPECT_EQ(image.height, 3u);
        EXPECT_EQ(pixelsOf(image), expected);
    }
}

TEST(ImageLoader, FourBytesAPixelComeAsTheyStandTheColourOfClearPixelsToo) {
    const Bytes samples = {1,   2,   3,  0, 4, 5, 6, 128, 7, 8, 9, 255,
                           200, 100, 50, 0, 9, 8, 7, 1,   6, 5, 4, 127};
    const LoadedImage image = load(PngBytes::file(PngBytes::rgba, 3, samples));
    EXPECT_EQ(image.width, 3u);
    EXPECT_EQ(image.height, 2u);
    EXPECT_EQ(pixelsOf(image), samples);
}

TEST(ImageLoader, GreyAndPaletteAreUnreadableUnlessTheyHaveAnAlpha) {
    const Bytes colours = {10, 20, 30, 40, 50, 60};
    expectUnreadable(load(PngBytes::file(PngBytes::grey, 2, {0, 255, 100, 200})));
    expectUnreadable(load(PngBytes::file(PngBytes::palette, 2, {0, 1}, colours)));
    EXPECT_EQ(pixelsOf(load(PngBytes::file(PngBytes::greyAlpha, 2, {9, 0, 80, 255}))),
              (Bytes{9, 9, 9, 0, 80, 80, 80, 255}));
    EXPECT_EQ(pixelsOf(load(PngBytes::file(PngBytes::palette, 2, {1, 0}, colours, {7, 99}))),
              (Bytes{40, 50, 60, 99, 10, 20, 30, 7}));
}

TEST(ImageLoader, BottomUpPicturesComeFromTheTopWithTheirBytesInTheFilesOrder) {
    const Bytes rows = {1, 2, 3, 4, 5, 6, 0, 0, 11, 12, 13, 14, 15, 16, 0, 0};
    EXPECT_EQ(pixelsOf(load(bmpFile(2, 2, rows))),
              (Bytes{11, 12, 13, 255, 14, 15, 16, 255, 1, 2, 3, 255, 4, 5, 6, 255}));
}

TEST(ImageLoader, BrokenFilesAreUnreadable) {
    const Bytes png = PngBytes::file(PngBytes::rgb, 2, {1, 2, 3, 4, 5, 6});
    const Bytes bmp = bmpFile(2, 1, Bytes(8));
    for (std::size_t length = 0; length < png.size() - 16; ++length) {
        expectUnreadable(load(Bytes(png.begin(), png.begin() + static_cast<long>(length))));
    }
    // The library gives surfaces of absurd sizes for these.
    expectUnreadable(load(bmpFile(1, 0x80000000, {})));
    expectUnreadable(load(bmpFile(1, 0x80000001, {})));
    expectUnreadable(load(bmpFile(0x80000000, 1, {})));
    expectUnreadable(load(bmpFile(0, 0, {})));
    expectUnreadable(load(bmpFile(65536, 65536, {})));
    for (std::size_t length = 0; length < 54; ++length) {
        Bytes cut(bmp.begin(), bmp.begin() + static_cast<long>(length));
        load(cut); // only to be survived: missing bytes count as anything
        if (length > 22) cut[length - 1] = 0x80;
        load(cut);
    }
    expectUnreadable(load(Bytes(1000, 'x')));
    expectUnreadable(ImageLoader().loadFromMemory(nullptr, 10));
    expectUnreadable(ImageLoader().loadFromMemory(png.data(), (std::size_t{1} << 32) + png.size()));
}

TEST(ImageLoader, TheLongestSidesAreTaken) {
    const LoadedImage tall = load(PngBytes::file(PngBytes::rgb, 1, Bytes(3 * 16383, 5)));
    EXPECT_EQ(tall.height, 16383u);
    const LoadedImage wide = load(PngBytes::file(PngBytes::rgb, 16383, Bytes(3 * 16383, 5)));
    EXPECT_EQ(wide.width, 16383u);
    EXPECT_EQ(pixelsOf(wide).back(), 255);
    expectUnreadable(load(PngBytes::file(PngBytes::rgb, 16384, Bytes(3 * 16384, 5))));
}

TEST(ImageLoader, FilesAreKnownByTheirContentAndFailuresAreSilent) {
    const std::filesystem::path folder =
        testing::TempDir() + "ImageLoaderTest." + std::to_string(getpid());
    std::filesystem::create_directories(folder);
    const Bytes png = PngBytes::file(PngBytes::rgb, 1, {1, 2, 3});
    std::ofstream(folder / "level.bmp", std::ios::binary)
        .write(reinterpret_cast<const char*>(png.data()), static_cast<long>(png.size()));

    std::ostringstream printed;
    std::streambuf* const before = std::cout.rdbuf(printed.rdbuf());
    EXPECT_EQ(pixelsOf(ImageLoader().loadFromFile(folder / "level.bmp")), (Bytes{1, 2, 3, 255}));
    expectUnreadable(ImageLoader().loadFromFile(folder / "missing.png"));
    expectUnreadable(ImageLoader().loadFromFile(folder));
    expectUnreadable(ImageLoader().loadFromFile(""));
    std::cout.rdbuf(before);
    EXPECT_EQ(printed.str(), "");
    std::filesystem::remove_all(folder);
}
