// SPDX-License-Identifier: Zlib
#include "tests/support/GlStandIn.h"

#include <GL/glew.h>
#include <GL/glu.h>
#include <SDL.h>

#include <cstdlib>
#include <utility>

void GlStandIn::start() {
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    setenv("XDG_CONFIG_HOME", "/dev/null", 1); // nothing can exist there
}

static void count() {
    ++GlStandIn::calls;
}

extern "C" {
// --- SDL: the linker redirects these calls (--wrap). SDL's own threads keep the real clock.

SDL_Surface* __wrap_SDL_SetVideoMode(int width, int height, int /*depth*/, Uint32 /*flags*/) {
    static SDL_Surface window = {};
    if (GlStandIn::fails()) return nullptr;
    window.w = width;
    window.h = height;
    GlStandIn::windowOpened();
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

// --- GLEW: the entry points that the game requires; the others stay null.

GLenum glewInit() {
    return GlStandIn::fails() ? GLEW_ERROR_NO_GL_VERSION : GLEW_OK;
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

#define COUNTED(name, ...)                                                                         \
    void name(__VA_ARGS__) {                                                                       \
        count();                                                                                   \
    }

COUNTED(glBegin, GLenum)
COUNTED(glBindTexture, GLenum, GLuint)
COUNTED(glBlendFunc, GLenum, GLenum)
COUNTED(glClear, GLbitfield)
COUNTED(glClearColor, GLclampf, GLclampf, GLclampf, GLclampf)
COUNTED(glClearDepth, GLclampd)
COUNTED(glColor4f, GLfloat, GLfloat, GLfloat, GLfloat)
COUNTED(glColor4ub, GLubyte, GLubyte, GLubyte, GLubyte)
COUNTED(glDeleteTextures, GLsizei, const GLuint*)
COUNTED(glDepthFunc, GLenum)
COUNTED(glDisable, GLenum)
COUNTED(glEnable, GLenum)
COUNTED(glEnd)
COUNTED(glHint, GLenum, GLenum)
COUNTED(glLoadIdentity)
COUNTED(glMatrixMode, GLenum)
COUNTED(glPixelStorei, GLenum, GLint)
COUNTED(glPopMatrix)
COUNTED(glPushMatrix)
COUNTED(glRotatef, GLfloat, GLfloat, GLfloat, GLfloat)
COUNTED(glScalef, GLfloat, GLfloat, GLfloat)
COUNTED(glShadeModel, GLenum)
COUNTED(glTexCoord2f, GLfloat, GLfloat)
COUNTED(glTexEnvi, GLenum, GLenum, GLint)
COUNTED(glTexImage2D, GLenum, GLint, GLint, GLsizei, GLsizei, GLint, GLenum, GLenum, const void*)
COUNTED(glTexParameteri, GLenum, GLenum, GLint)
COUNTED(glTranslatef, GLfloat, GLfloat, GLfloat)
COUNTED(glVertex2f, GLfloat, GLfloat)
COUNTED(glViewport, GLint, GLint, GLsizei, GLsizei)
COUNTED(gluOrtho2D, GLdouble, GLdouble, GLdouble, GLdouble)

static GLenum error = GL_NO_ERROR;

// There is no memory for copies of the screen, so that everything is painted every time.
void glReadPixels(GLint, GLint, GLsizei, GLsizei, GLenum, GLenum, void*) {
    count();
    error = GL_OUT_OF_MEMORY;
}

GLenum glGetError() {
    count();
    return std::exchange(error, GLenum{GL_NO_ERROR});
}

void glGenTextures(GLsizei number, GLuint* names) {
    count();
    static GLuint last = 0;
    for (GLsizei i = 0; i < number; ++i) names[i] = ++last;
}
}
