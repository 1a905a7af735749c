// SPDX-License-Identifier: Zlib
#include "bench/GlStandIn.h"

#include <GL/glew.h>
#include <GL/glu.h>
#include <SDL.h>

#include <cstdlib>

void GlStandIn::start() {
    setenv("SDL_VIDEODRIVER", "dummy", 1);
}

static void count() {
    ++GlStandIn::calls;
}

extern "C" {
// --- SDL: the linker leads these calls here (--wrap). SDL's own threads keep the real clock.

SDL_Surface* __wrap_SDL_SetVideoMode(int width, int height, int /*depth*/, Uint32 /*flags*/) {
    static SDL_Surface window = {};
    window.w = width;
    window.h = height;
    return &window;
}

int __wrap_SDL_GL_SetAttribute(SDL_GLattr /*attribute*/, int /*value*/) {
    return 0;
}

void __wrap_SDL_GL_SwapBuffers() {
    ++GlStandIn::swaps;
}

Uint32 __wrap_SDL_GetTicks() {
    return GlStandIn::clock;
}

void __wrap_SDL_Delay(Uint32 milliseconds) {
    GlStandIn::waits.push_back(milliseconds);
    GlStandIn::clock += milliseconds;
}

// --- GLEW: the entry points that the game cannot do without; the others stay null.

GLenum glewInit() {
    return GLEW_OK;
}

const GLubyte* glewGetString(GLenum /*name*/) {
    return reinterpret_cast<const GLubyte*>("none");
}

const GLubyte* glewGetErrorString(GLenum /*error*/) {
    return reinterpret_cast<const GLubyte*>("none");
}

PFNGLACTIVETEXTUREARBPROC __glewActiveTextureARB = [](GLenum) { count(); };
PFNGLMULTITEXCOORD2FARBPROC __glewMultiTexCoord2fARB = [](GLenum, GLfloat, GLfloat) { count(); };
PFNGLBLENDEQUATIONPROC __glewBlendEquation = [](GLenum) { count(); };

// --- OpenGL and GLU

void glBegin(GLenum) {
    count();
}
void glBindTexture(GLenum, GLuint) {
    count();
}
void glBlendFunc(GLenum, GLenum) {
    count();
}
void glClear(GLbitfield) {
    count();
}
void glClearColor(GLclampf, GLclampf, GLclampf, GLclampf) {
    count();
}
void glClearDepth(GLclampd) {
    count();
}
void glColor4f(GLfloat, GLfloat, GLfloat, GLfloat) {
    count();
}
void glColor4ub(GLubyte, GLubyte, GLubyte, GLubyte) {
    count();
}
void glDeleteTextures(GLsizei, const GLuint*) {
    count();
}
void glDepthFunc(GLenum) {
    count();
}
void glDisable(GLenum) {
    count();
}
void glEnable(GLenum) {
    count();
}
void glEnd() {
    count();
}
void glHint(GLenum, GLenum) {
    count();
}
void glLoadIdentity() {
    count();
}
void glMatrixMode(GLenum) {
    count();
}
void glPixelStorei(GLenum, GLint) {
    count();
}
void glPopMatrix() {
    count();
}
void glPushMatrix() {
    count();
}
void glReadPixels(GLint, GLint, GLsizei, GLsizei, GLenum, GLenum, void*) {
    count();
}
void glRotatef(GLfloat, GLfloat, GLfloat, GLfloat) {
    count();
}
void glScalef(GLfloat, GLfloat, GLfloat) {
    count();
}
void glShadeModel(GLenum) {
    count();
}
void glTexCoord2f(GLfloat, GLfloat) {
    count();
}
void glTexImage2D(GLenum, GLint, GLint, GLsizei, GLsizei, GLint, GLenum, GLenum, const void*) {
    count();
}
void glTexParameteri(GLenum, GLenum, GLint) {
    count();
}
void glTranslatef(GLfloat, GLfloat, GLfloat) {
    count();
}
void glVertex2f(GLfloat, GLfloat) {
    count();
}
void glViewport(GLint, GLint, GLsizei, GLsizei) {
    count();
}
void gluOrtho2D(GLdouble, GLdouble, GLdouble, GLdouble) {
    count();
}

GLenum glGetError() {
    count();
    return GL_NO_ERROR;
}

void glGenTextures(GLsizei number, GLuint* names) {
    count();
    static GLuint last = 0;
    for (GLsizei i = 0; i < number; ++i) names[i] = ++last;
}
}
