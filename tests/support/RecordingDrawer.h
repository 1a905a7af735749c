// SPDX-License-Identifier: Zlib
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "drawing/OpenGLDrawer.h"

// Records what is drawn, one line a call: its name and its numbers. Textures are named by their
// size. It draws on no window.
class RecordingDrawer : public OpenGLDrawer {
public:
    RecordingDrawer() : OpenGLDrawer(1280, 720) {
        testing::internal::CaptureStdout(); // the drawer's report
        createWindow(1280, 720, false, 0);
        testing::internal::GetCapturedStdout();
    }

    void setBlendMode(int mode) override { record("blend", mode); }
    void drawTexture(std::uint32_t handle, float x, float y, float scaleX, float scaleY, float r,
                     float g, float b, float a) override {
        record(sizeOf(handle), x, y, scaleX, scaleY, r, g, b, a);
    }
    void drawTextureRotated(std::uint32_t handle, float x, float y, float, float, float, float,
                            float, float, float, float, float) override {
        record("rotated " + sizeOf(handle), x, y);
    }
    void drawText(const std::string& text, std::int32_t font, float x, float y, float wrapWidth,
                  float scale, float r, float g, float b, float a) override {
        record((font > 0 ? "text " : "glyphs ") + text, x, y, wrapWidth, scale, r, g, b, a);
    }
    void fillRect(float x, float y, float w, float h, std::uint8_t r, std::uint8_t g,
                  std::uint8_t b, std::uint8_t a) override {
        record("rect", x, y, w, h, r, g, b, a);
    }
    void fillGradient(float x, float y, float w, float h, std::uint8_t r1, std::uint8_t g1,
                      std::uint8_t b1, std::uint8_t a1, std::uint8_t r2, std::uint8_t g2,
                      std::uint8_t b2, std::uint8_t a2) override {
        record("gradient", x, y, w, h, r1, g1, b1, a1, r2, g2, b2, a2);
    }

    std::vector<std::string> calls;

private:
    std::string sizeOf(std::uint32_t handle) const {
        const TextureRecord* record = textureRecord(handle);
        if (!record) return "nothing";
        return std::to_string(record->width) + "x" + std::to_string(record->height);
    }
    template <typename... Numbers>
    void record(const std::string& name, Numbers... numbers) {
        std::ostringstream call;
        call << name;
        ((call << " " << +numbers), ...);
        calls.push_back(call.str());
    }
};
