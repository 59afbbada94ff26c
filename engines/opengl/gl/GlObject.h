#pragma once
#include <GL/glcorearb.h>

#include <utility>

namespace vexplot {

// A move-only owner of one GL object name. The context that made the
// object must be current when it is destroyed; the engine keeps every
// owner inside the lifetime of its context.
template <void (*Delete)(GLuint)>
class GlHandle {
public:
    GlHandle() = default;
    explicit GlHandle(GLuint id) : id_(id) {}
    ~GlHandle() { Reset(); }
    GlHandle(GlHandle&& other) noexcept : id_(std::exchange(other.id_, 0)) {}
    GlHandle& operator=(GlHandle&& other) noexcept {
        if (this != &other) {
            Reset();
            id_ = std::exchange(other.id_, 0);
        }
        return *this;
    }
    GlHandle(const GlHandle&) = delete;
    GlHandle& operator=(const GlHandle&) = delete;

    GLuint Id() const { return id_; }
    explicit operator bool() const { return id_ != 0; }
    void Reset() {
        if (id_) Delete(std::exchange(id_, 0));
    }

private:
    GLuint id_ = 0;
};

namespace gl_detail {
inline void DeleteBuffer(GLuint id) { glDeleteBuffers(1, &id); }
inline void DeleteTexture(GLuint id) { glDeleteTextures(1, &id); }
inline void DeleteVertexArray(GLuint id) { glDeleteVertexArrays(1, &id); }
inline void DeleteFramebuffer(GLuint id) { glDeleteFramebuffers(1, &id); }
inline void DeleteRenderbuffer(GLuint id) { glDeleteRenderbuffers(1, &id); }
template <void (*Generate)(GLsizei, GLuint*)>
GLuint Generated() {
    GLuint id = 0;
    Generate(1, &id);
    return id;
}
}  // namespace gl_detail

// Each wrapper's Create() makes a new object name (the context must be current).
#define VEXPLOT_GL_HANDLE(Name, Delete, Generate)                                          \
    class Name : public GlHandle<gl_detail::Delete> {                                       \
    public:                                                                                 \
        using GlHandle::GlHandle;                                                           \
        static Name Create() { return Name(gl_detail::Generated<Generate>()); }             \
    };
VEXPLOT_GL_HANDLE(GlBuffer, DeleteBuffer, glGenBuffers)
VEXPLOT_GL_HANDLE(GlTexture, DeleteTexture, glGenTextures)
VEXPLOT_GL_HANDLE(GlVertexArray, DeleteVertexArray, glGenVertexArrays)
VEXPLOT_GL_HANDLE(GlFramebuffer, DeleteFramebuffer, glGenFramebuffers)
VEXPLOT_GL_HANDLE(GlRenderbuffer, DeleteRenderbuffer, glGenRenderbuffers)
#undef VEXPLOT_GL_HANDLE

}  // namespace vexplot
