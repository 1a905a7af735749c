// SPDX-License-Identifier: Zlib
#pragma once

#include <GL/glew.h>

// How the drawer and its fonts paint with the texture that is bound to unit 0. A GL context must
// exist.

// A rectangle in texture coordinates or in units of the virtual screen.
struct QuadBox {
    float left, top, right, bottom;
};

// Adds a corner between glBegin and glEnd: its texture coordinates, then its position.
inline void quadCorner(float u, float v, float x, float y) {
    glMultiTexCoord2fARB(GL_TEXTURE0_ARB, u, v);
    glVertex2f(x, y);
}

// Paints a part of the texture into a box, in the current colour.
inline void paintQuad(const QuadBox& source, const QuadBox& target) {
    glBegin(GL_QUADS);
    quadCorner(source.left, source.top, target.left, target.top);
    quadCorner(source.right, source.top, target.right, target.top);
    quadCorner(source.right, source.bottom, target.right, target.bottom);
    quadCorner(source.left, source.bottom, target.left, target.bottom);
    glEnd();
}

// Unbinds the texture and sets the current colour to white.
inline void releaseTexture() {
    glColor4f(1, 1, 1, 1);
    glBindTexture(GL_TEXTURE_2D, 0);
}
