#pragma once
#include <GL/glcorearb.h>

#include <string>
#include <string_view>
#include <unordered_map>

namespace vexplot {

// A linked shader program. Construction compiles and links with the
// context current and throws std::runtime_error carrying the info log when
// either fails. Move-only.
class GlProgram {
public:
    GlProgram(std::string_view vertexSource, std::string_view fragmentSource, std::string_view geometrySource = {});
    ~GlProgram();
    GlProgram(GlProgram&& other) noexcept;
    GlProgram& operator=(GlProgram&&) = delete;
    GlProgram(const GlProgram&) = delete;
    GlProgram& operator=(const GlProgram&) = delete;

    void Use() const;
    // The location of a uniform, -1 when the program has none of that name
    // (GL ignores writes to -1). Cached per name.
    GLint Uniform(const char* name) const;
    GLuint Id() const { return id_; }

private:
    GLuint id_ = 0;
    mutable std::unordered_map<std::string, GLint> uniforms_;
};

}  // namespace vexplot
