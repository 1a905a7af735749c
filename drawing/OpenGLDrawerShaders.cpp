// SPDX-License-Identifier: Zlib
// Shader programs, which the game does not use, and what the driver supports.
#include "drawing/OpenGLDrawer.h"

#include <iostream>

#include "base/FilePath.h"

static constexpr int featureShaders = 0;
static constexpr int featureFrameBuffer = 1;

void OpenGLDrawer::findShaders() {
    shaderSupport = glUniform1iARB != nullptr;
    if (!shaderSupport) {
        std::cout << "Shader support: OpenGL shaders *NOT* available." << std::endl;
        shaderCalls = ShaderCalls();
        return;
    }
    std::cout << "Shader support: OpenGL shaders available." << std::endl;
    shaderCalls = {glUniform1iARB,       glUniform1fARB,     glCreateShaderObjectARB,
                   glShaderSourceARB,    glCompileShaderARB, glCreateProgramObjectARB,
                   glAttachObjectARB,    glLinkProgramARB,   glGetUniformLocationARB,
                   glUseProgramObjectARB};
}

bool OpenGLDrawer::canSupport(int feature) {
    switch (feature) {
    case featureShaders: {
        const bool supported = glUniform1iARB != nullptr;
        std::cout << "canSupport(Shaders) => " << supported << std::endl;
        return supported;
    }
    case featureFrameBuffer:
        std::cout << "canSupport(FrameBuffer) => " << true << std::endl;
        return true;
    default: return false;
    }
}

// The text of a file up to its first zero byte; empty if the file cannot be read.
static std::string readText(const std::string& path) {
    std::ifstream file = FilePath(path).open();
    std::string text;
    std::getline(file, text, '\0');
    return text;
}

std::uint32_t OpenGLDrawer::createShader(const std::string& vertexFile,
                                         const std::string& fragmentFile) {
    if (!hasContext || !shaderSupport) return 0;
    const auto compile = [this](GLenum kind, const std::string& file) {
        const GLhandleARB shader = shaderCalls.createShaderObject(kind);
        const std::string text = readText(file);
        const char* source = text.c_str();
        shaderCalls.shaderSource(shader, 1, &source, nullptr);
        shaderCalls.compileShader(shader);
        return shader;
    };
    const GLhandleARB vertexShader = compile(GL_VERTEX_SHADER_ARB, vertexFile);
    const GLhandleARB fragmentShader = compile(GL_FRAGMENT_SHADER_ARB, fragmentFile);
    const GLhandleARB program = shaderCalls.createProgramObject();
    shaderCalls.attachObject(program, vertexShader);
    shaderCalls.attachObject(program, fragmentShader);
    shaderCalls.linkProgram(program);
    std::cout << "OpenGLDrawer Shader InfoLog:" << std::endl
              << "----------------------------" << std::endl
              << vertexFile << ":" << std::endl
              << fragmentFile << ":" << std::endl;
    baseUniform = shaderCalls.getUniformLocation(program, "base");
    secondUniform = shaderCalls.getUniformLocation(program, "second");
    paramUniform = shaderCalls.getUniformLocation(program, "shaderParam");
    return program;
}

void OpenGLDrawer::setShaderParam(std::uint32_t program, float value) {
    if (!hasContext) return;
    shaderCalls.useProgramObject(program);
    shaderCalls.uniform1f(paramUniform, value);
}
