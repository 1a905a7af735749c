// SPDX-License-Identifier: Zlib
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <string>
#include <vector>

#include "drawing/OpenGLDrawer.h"

// Writes down what is painted, textures by the size of their picture. It paints on no window.
class RecordingDrawer : public OpenGLDrawer {
public:
    RecordingDrawer() : OpenGLDrawer(1280, 720) {
        testing::internal::CaptureStdout(); // the drawer's report
        createWindow(1280, 720, false, 0);
        testing::internal::GetCapturedStdout();
    }

    void setBlendMode(int mode) override { write("blend", {static_cast<float>(mode)}); }
    void drawTexture(std::uint32_t handle, float x, float y, float scaleX, float scaleY, float r,
                     float g, float b, float a) override {
        write(pictureOf(handle), {x, y, scaleX, scaleY, r, g, b, a});
    }
    void drawTextureRotated(std::uint32_t handle, float x, float y, float, float, float, float,
                            float, float, float, float, float) override {
        write("turned " + pictureOf(handle), {x, y});
    }
    void drawText(const std::string& text, std::int32_t font, float x, float y, float wrapWidth,
                  float scale, float r, float g, float b, float a) override {
        write("text " + text, {static_cast<float>(font), x, y, wrapWidth, scale, r, g, b, a});
    }
    void fillRect(float x, float y, float w, float h, std::uint8_t r, std::uint8_t g,
                  std::uint8_t b, std::uint8_t a) override {
        write("rect", {x, y, w, h, float(r), float(g), float(b), float(a)});
    }
    void fillGradient(float x, float y, float w, float h, std::uint8_t r1, std::uint8_t g1,
                      std::uint8_t b1, std::uint8_t a1, std::uint8_t r2, std::uint8_t g2,
                      std::uint8_t b2, std::uint8_t a2) override {
        write("gradient", {x, y, w, h, float(r1), float(g1), float(b1), float(a1), float(r2),
                           float(g2), float(b2), float(a2)});
    }

    struct Call {
        std::string name;
        std::vector<float> numbers;

        bool operator==(const Call&) const = default;
        friend std::ostream& operator<<(std::ostream& out, const Call& call) {
            out << call.name;
            for (const float number : call.numbers) out << " " << number;
            return out;
        }
    };
    std::vector<Call> calls;

private:
    std::string pictureOf(std::uint32_t handle) const {
        const TextureRecord* record = textureRecord(handle);
        if (!record) return "nothing";
        return std::to_string(record->width) + "x" + std::to_string(record->height);
    }
    void write(const std::string& name, std::initializer_list<float> numbers) {
        calls.push_back({name, numbers});
    }
};
