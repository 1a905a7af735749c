// SPDX-License-Identifier: Zlib
#include "drawing/ImageLoader.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "drawing/PictureFile.h"
#include "tests/support/PngBytes.h"

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

// A BMP of 24 bits: rows from the bottom, each padded to a multiple of 4 bytes.
static Bytes bmpFile(std::uint32_t width, std::uint32_t height, const Bytes& rows) {
    Bytes bytes = {'B', 'M'};
    const auto length = static_cast<std::uint32_t>(54 + rows.size());
    const std::uint32_t planeOf24Bits = 1 | 24 << 16;
    for (const std::uint32_t number : {length, 0u, 54u, 40u, width, height, planeOf24Bits}) {
        for (int i = 0; i < 4; ++i) bytes.push_back(static_cast<std::uint8_t>(number >> 8 * i));
    }
    bytes.resize(54);
    bytes.insert(bytes.end(), rows.begin(), rows.end());
    return bytes;
}

TEST(ImageLoader, ThreeBytesPerPixelGetAnOpaqueAlphaWhateverTheRowPitch) {
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

TEST(ImageLoader, FourBytesPerPixelAreKeptInClearPixelsToo) {
    const Bytes samples = {1, 2, 3, 0, 4, 5, 6, 128, 200, 100, 50, 0, 9, 8, 7, 1};
    EXPECT_EQ(pixelsOf(load(PngBytes::file(PngBytes::rgba, 2, samples))), samples);
}

TEST(ImageLoader, GreyAndPaletteAreUnreadableUnlessTheyHaveAnAlpha) {
    const Bytes colours = {10, 20, 30, 40, 50, 60};
    expectUnreadable(load(PngBytes::file(PngBytes::grey, 2, {0, 255, 100, 200})));
    expectUnreadable(load(PngBytes::file(PngBytes::palette, 2, {0, 1}, colours)));
    EXPECT_EQ(pixelsOf(load(PngBytes::file(PngBytes::greyAlpha, 2, {9, 0, 80, 255}))),
              (Bytes{9, 9, 9, 0, 80, 80, 80, 255}));
}

TEST(ImageLoader, BottomUpPicturesComeFromTheTop) {
    const Bytes rows = {1, 2, 3, 4, 5, 6, 0, 0, 11, 12, 13, 14, 15, 16, 0, 0};
    EXPECT_EQ(pixelsOf(load(bmpFile(2, 2, rows))),
              (Bytes{11, 12, 13, 255, 14, 15, 16, 255, 1, 2, 3, 255, 4, 5, 6, 255}));
}

TEST(ImageLoader, BrokenFilesAreUnreadable) {
    const Bytes png = PngBytes::file(PngBytes::rgb, 2, {1, 2, 3, 4, 5, 6});
    const Bytes bmp = bmpFile(2, 1, Bytes(8));
    for (std::size_t length = 0; length < png.size() - 16; ++length) {
        // If a file ends after the head of a chunk, the library alone would never return.
        expectUnreadable(load(Bytes(png.begin(), png.begin() + static_cast<long>(length))));
    }
    // The library makes surfaces of absurd sizes from these.
    for (const auto& [width, height] :
         {std::pair(1u, 0x80000000), std::pair(0x80000000, 1u), std::pair(65536u, 65536u)}) {
        expectUnreadable(load(bmpFile(width, height, {})));
    }
    for (std::size_t length = 0; length < 54; ++length) { // the missing bytes may have any value
        Bytes cut(bmp.begin(), bmp.begin() + static_cast<long>(length));
        if (length > 22) cut[length - 1] = 0x80;
        load(cut); // returns
    }
    expectUnreadable(load(Bytes(1000, 'x')));
    expectUnreadable(ImageLoader().loadFromMemory(nullptr, 10));
    expectUnreadable(ImageLoader().loadFromMemory(png.data(), (std::size_t{1} << 32) + png.size()));
}

static PictureFile::Format formatOf(const Bytes& file) {
    return PictureFile(SDL_RWFromConstMem(file.data(), static_cast<int>(file.size()))).getFormat();
}

static Bytes changed(Bytes file, std::size_t place, const Bytes& bytes) {
    for (const std::uint8_t byte : bytes) file.at(place++) = byte;
    return file;
}

// The library can also decode the first formats here, but crashes or never ends on files like
// these.
TEST(ImageLoader, WhatIsNotWorthDecodingIsUnreadableBeforeItIsDecoded) {
    using Format = PictureFile::Format;
    for (const std::string start : {"gimp xcf file", "/* XPM */", "FORM    ILBM", "RIFF    WEBP",
                                    "GIF89a", "P6 1 1 255 ", "II*"}) {
        Bytes file(start.begin(), start.end());
        file.resize(300);
        EXPECT_EQ(formatOf(file), Format::unreadable) << start;
    }
    const Bytes png = PngBytes::file(PngBytes::rgb, 1, {1, 2, 3});
    EXPECT_EQ(formatOf(changed(png, 16, {0, 0, 0x20, 0, 0, 0, 0x20, 0})), Format::png);
    EXPECT_EQ(formatOf(changed(png, 16, {0, 0, 0x20, 1, 0, 0, 0x20, 0})), Format::unreadable);
    EXPECT_EQ(formatOf(changed(png, 33, {0, 1})), Format::unreadable) << "a chunk beyond the end";

    // A frame of 1 by 1 pixels with three components, and the start of their pixels.
    const Bytes jpeg = {0xFF, 0xD8, 0xFF, 0xC0, 0,    17, 8,  0, 1, 0, 1, 3, 1, 17, 0, 2,  17, 0,
                        3,    17,   0,    0xFF, 0xDA, 0,  12, 3, 1, 0, 2, 0, 3, 0,  0, 63, 0};
    EXPECT_EQ(formatOf(jpeg), Format::jpeg);
    EXPECT_EQ(formatOf(changed(jpeg, 3, {0xC2})), Format::unreadable) << "progressive";
    EXPECT_EQ(formatOf(changed(jpeg, 25, {1})), Format::unreadable) << "more passes than one";
    EXPECT_EQ(formatOf(changed(jpeg, 7, {1, 0, 1, 0})), Format::unreadable) << "too few bytes";
    EXPECT_EQ(formatOf(changed(jpeg, 7, {0, 0})), Format::unreadable) << "no height";

    const Bytes bmp = bmpFile(2, 1, Bytes(8));
    EXPECT_EQ(formatOf(bmp), Format::bmp);
    EXPECT_EQ(formatOf(changed(bmp, 28, {8})), Format::unreadable) << "a palette";
    EXPECT_EQ(formatOf(changed(bmp, 30, {1})), Format::unreadable) << "packed";
    EXPECT_EQ(formatOf(changed(bmp, 18, {100})), Format::unreadable) << "too few bytes";
}

TEST(ImageLoader, FilesAreRecognisedByTheirContentAndFailuresPrintNothing) {
    const std::string path = testing::TempDir() + "ImageLoaderTest.bmp." + std::to_string(getpid());
    const Bytes png = PngBytes::file(PngBytes::rgb, 1, {1, 2, 3});
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(png.data()), static_cast<long>(png.size()));
    testing::internal::CaptureStdout();
    EXPECT_EQ(pixelsOf(ImageLoader().loadFromFile(path)), (Bytes{1, 2, 3, 255}));
    std::filesystem::remove(path);
    for (const std::string& none : {path, testing::TempDir(), std::string()}) {
        expectUnreadable(ImageLoader().loadFromFile(none));
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}
