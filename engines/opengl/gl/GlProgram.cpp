#include "opengl/gl/GlProgram.h"

#include <stdexcept>
#include <utility>
#include <vector>

namespace vexplot {

namespace {

std::string InfoLog(GLuint object, bool isProgram) {
    GLint length = 0;
    if (isProgram) glGetProgramiv(object, GL_INFO_LOG_LENGTH, &length);
    else glGetShaderiv(object, GL_INFO_LOG_LENGTH, &length);
    std::vector<char> log(static_cast<size_t>(length > 0 ? length : 1), '\0');
    if (isProgram) glGetProgramInfoLog(object, length, nullptr, log.data());
    else glGetShaderInfoLog(object, length, nullptr, log.data());
    return log.data();
}

GLuint Compile(GLenum stage, std::string_view source) {
    const GLuint shader = glCreateShader(stage);
    const char* text = source.data();
    const auto length = static_cast<GLint>(source.size());
    glShaderSource(shader, 1, &text, &length);
    glCompileShader(shader);
    GLint ok = GL_FALSE;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &ok);
    if (!ok) {
        std::string message = "shader compilation failed: ";
        message += InfoLog(shader, false);
        glDeleteShader(shader);
        throw std::runtime_error(message);
    }
    return shader;
}

}  // namespace

GlProgram::GlProgram(std::string_view vertexSource, std::string_view fragmentSource,
                     std::string_view geometrySource) {
    std::vector<GLuint> shaders;
    try {
        shaders.push_back(Compile(GL_VERTEX_SHADER, vertexSource));
        shaders.push_back(Compile(GL_FRAGMENT_SHADER, fragmentSource));
        if (!geometrySource.empty()) shaders.push_back(Compile(GL_GEOMETRY_SHADER, geometrySource));
    } catch (...) {
        for (GLuint shader : shaders) glDeleteShader(shader);
        throw;
    }
    id_ = glCreateProgram();
    for (GLuint shader : shaders) glAttachShader(id_, shader);
    glLinkProgram(id_);
    for (GLuint shader : shaders) glDeleteShader(shader);
    GLint ok = GL_FALSE;
    glGetProgramiv(id_, GL_LINK_STATUS, &ok);
    if (!ok) {
        std::string message = "shader linking failed: ";
        message += InfoLog(id_, true);
        glDeleteProgram(id_);
        throw std::runtime_error(message);
    }
}

GlProgram::~GlProgram() {
    if (id_) glDeleteProgram(id_);
}

GlProgram::GlProgram(GlProgram&& other) noexcept
    : id_(std::exchange(other.id_, 0)), uniforms_(std::move(other.uniforms_)) {}

void GlProgram::Use() const { glUseProgram(id_); }

GLint GlProgram::Uniform(const char* name) const {
    auto found = uniforms_.find(name);
    if (found != uniforms_.end()) return found->second;
    const GLint location = glGetUniformLocation(id_, name);
    uniforms_.emplace(name, location);
    return location;
}

}  // namespace vexplot
