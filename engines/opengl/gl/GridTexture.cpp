#include "opengl/gl/GridTexture.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>

namespace vexplot {

namespace {

constexpr int32_t kBandRows = 256;

// Four independent lanes, so that the multiplications of neighbouring
// values overlap; each step is a bijection of the lane's state for a given
// value, so a grid differing in one value always gets another digest.
class ValueDigest {
public:
    void Add(size_t index, double value) {
        uint64_t& lane = lanes_[index & 3];
        lane = (lane ^ std::bit_cast<uint64_t>(value)) * 0x9E3779B97F4A7C15ull;
    }
    uint64_t Value(size_t count) const {
        uint64_t h = count;
        for (uint64_t lane : lanes_) {
            h = std::rotl(h, 23) ^ lane;
            h ^= h >> 32;
            h *= 0xD6E8FEB86659FD93ull;
        }
        return h ^ (h >> 29);
    }

private:
    std::array<uint64_t, 4> lanes_{1, 2, 3, 4};
};

GLint MaxTextureSize() {
    GLint maxSize = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &maxSize);
    return maxSize;
}

}  // namespace

void GridTexture::Allocate(int32_t xCount, int32_t yCount) {
    texture_ = GlTexture::Create();
    glBindTexture(GL_TEXTURE_2D, texture_.Id());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, 0);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_R32F, yCount, xCount, 0, GL_RED, GL_FLOAT, nullptr);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    xCount_ = xCount;
    yCount_ = yCount;
}

std::shared_ptr<GridTexture> GridTexture::Upload(const double* values, int32_t xCount, int32_t yCount) {
    if (!Fits(xCount, yCount))
        throw std::runtime_error("grid larger than the texture limit of " + std::to_string(MaxTextureSize()));
    std::shared_ptr<GridTexture> grid(new GridTexture());
    grid->Allocate(xCount, yCount);

    ValueDigest digest;
    double minPositive = std::numeric_limits<double>::infinity();
    double lo = std::numeric_limits<double>::infinity(), hi = -lo;
    float finiteLo = std::numeric_limits<float>::infinity(), finiteHi = -finiteLo;
    const size_t rowLength = static_cast<size_t>(yCount);
    std::vector<float> band(rowLength * static_cast<size_t>(std::min(kBandRows, xCount)));
    for (int32_t row = 0; row < xCount; row += kBandRows) {
        const int32_t rows = std::min(kBandRows, xCount - row);
        const size_t offset = static_cast<size_t>(row) * rowLength;
        const double* source = values + offset;
        const size_t count = rowLength * static_cast<size_t>(rows);
        for (size_t i = 0; i < count; ++i) {
            const double v = source[i];
            const auto f = static_cast<float>(v);
            band[i] = f;
            digest.Add(offset + i, v);
            if (v > 0 && v < minPositive) minPositive = v;
            if (v < lo) lo = v;  // false for NaN
            if (v > hi) hi = v;
            if (std::isfinite(f)) finiteLo = std::min(finiteLo, f), finiteHi = std::max(finiteHi, f);
        }
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, row, yCount, rows, GL_RED, GL_FLOAT, band.data());
    }
    glBindTexture(GL_TEXTURE_2D, 0);
    if (glGetError() == GL_OUT_OF_MEMORY) throw std::bad_alloc();
    grid->digest_ = digest.Value(static_cast<size_t>(xCount) * rowLength);
    grid->minPositive_ = std::isfinite(minPositive) ? minPositive : std::numeric_limits<double>::quiet_NaN();
    grid->range_ = hi > lo && std::isfinite(hi - lo) ? hi - lo : 0.0;
    grid->finiteLow_ = finiteLo;
    grid->finiteHigh_ = finiteHi;
    return grid;
}

std::shared_ptr<GridTexture> GridTexture::Sampled(std::span<const float> rowsOfX, int32_t xCount, int32_t yCount) {
    const GLint maxSize = std::max(MaxTextureSize(), 1);
    const int32_t stepX = (xCount + maxSize - 1) / maxSize, stepY = (yCount + maxSize - 1) / maxSize;
    const int32_t nx = (xCount + stepX - 1) / stepX, ny = (yCount + stepY - 1) / stepY;
    std::shared_ptr<GridTexture> grid(new GridTexture());
    grid->Allocate(nx, ny);
    grid->sampledDown_ = stepX > 1 || stepY > 1;
    // One texture row (a node ix) at a time: a column of the source.
    std::vector<float> row(static_cast<size_t>(ny));
    for (int32_t ix = 0; ix < nx; ++ix) {
        const size_t column = size_t(ix) * size_t(stepX);
        for (int32_t iy = 0; iy < ny; ++iy)
            row[size_t(iy)] = rowsOfX[size_t(iy) * size_t(stepY) * size_t(xCount) + column];
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, ix, ny, 1, GL_RED, GL_FLOAT, row.data());
    }
    glBindTexture(GL_TEXTURE_2D, 0);
    if (glGetError() == GL_OUT_OF_MEMORY) throw std::bad_alloc();
    return grid;
}

bool GridTexture::Fits(int32_t xCount, int32_t yCount) {
    const GLint maxSize = MaxTextureSize();
    return xCount <= maxSize && yCount <= maxSize;
}

uint64_t GridTexture::Fingerprint(const double* values, size_t count) {
    ValueDigest digest;
    for (size_t i = 0; i < count; ++i) digest.Add(i, values[i]);
    return digest.Value(count);
}

std::vector<float> GridTexture::ReadLine(bool alongY, int32_t index) const {
    const int32_t last = alongY ? xCount_ - 1 : yCount_ - 1;
    if (!texture_ || index < 0 || index > last) return {};
    // An R32F texture is colour-renderable: attached to a framebuffer, one
    // line of it reads back without copying the rest.
    std::vector<float> line(static_cast<size_t>(alongY ? yCount_ : xCount_));
    // The caller may be amid a frame: its read binding is put back after.
    GLint previous = 0;
    glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &previous);
    GlFramebuffer framebuffer = GlFramebuffer::Create();
    glBindFramebuffer(GL_READ_FRAMEBUFFER, framebuffer.Id());
    glFramebufferTexture2D(GL_READ_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture_.Id(), 0);
    glReadBuffer(GL_COLOR_ATTACHMENT0);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    if (alongY) glReadPixels(0, index, yCount_, 1, GL_RED, GL_FLOAT, line.data());
    else glReadPixels(index, 0, 1, xCount_, GL_RED, GL_FLOAT, line.data());
    glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(previous));
    return line;
}

}  // namespace vexplot
