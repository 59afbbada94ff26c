#pragma once
#include <array>
#include <cmath>

namespace vexplot {

struct Vec3 {
    double x = 0, y = 0, z = 0;
    Vec3 operator+(const Vec3& o) const { return {x + o.x, y + o.y, z + o.z}; }
    Vec3 operator-(const Vec3& o) const { return {x - o.x, y - o.y, z - o.z}; }
    Vec3 operator*(double s) const { return {x * s, y * s, z * s}; }
    double Dot(const Vec3& o) const { return x * o.x + y * o.y + z * o.z; }
    Vec3 Cross(const Vec3& o) const { return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x}; }
    double Length() const { return std::sqrt(Dot(*this)); }
    Vec3 Normalized() const {
        const double l = Length();
        return l > 0 ? *this * (1.0 / l) : *this;
    }
};

struct Vec4 {
    double x = 0, y = 0, z = 0, w = 0;
};

// A 4 x 4 matrix in column-major order, as GL takes it; doubles on the CPU,
// converted to floats when uploaded.
struct Matrix4 {
    std::array<double, 16> m{};

    static Matrix4 Identity() {
        Matrix4 r;
        r.m[0] = r.m[5] = r.m[10] = r.m[15] = 1;
        return r;
    }
    double& At(int row, int column) { return m[static_cast<size_t>(column * 4 + row)]; }
    double At(int row, int column) const { return m[static_cast<size_t>(column * 4 + row)]; }

    Matrix4 operator*(const Matrix4& o) const {
        Matrix4 r;
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j) {
                double s = 0;
                for (int k = 0; k < 4; ++k) s += At(i, k) * o.At(k, j);
                r.At(i, j) = s;
            }
        return r;
    }
    Vec4 operator*(const Vec4& v) const {
        return {At(0, 0) * v.x + At(0, 1) * v.y + At(0, 2) * v.z + At(0, 3) * v.w,
                At(1, 0) * v.x + At(1, 1) * v.y + At(1, 2) * v.z + At(1, 3) * v.w,
                At(2, 0) * v.x + At(2, 1) * v.y + At(2, 2) * v.z + At(2, 3) * v.w,
                At(3, 0) * v.x + At(3, 1) * v.y + At(3, 2) * v.z + At(3, 3) * v.w};
    }
    std::array<float, 16> ToFloats() const {
        std::array<float, 16> r{};
        for (size_t i = 0; i < 16; ++i) r[i] = static_cast<float>(m[i]);
        return r;
    }

    // The inverse by cofactors. A singular matrix gives all zeros; the
    // callers invert view-projection matrices, which are regular.
    Matrix4 Inverse() const {
        const auto& a = m;
        Matrix4 r;
        auto& inv = r.m;
        inv[0] = a[5] * a[10] * a[15] - a[5] * a[11] * a[14] - a[9] * a[6] * a[15] + a[9] * a[7] * a[14] +
                 a[13] * a[6] * a[11] - a[13] * a[7] * a[10];
        inv[4] = -a[4] * a[10] * a[15] + a[4] * a[11] * a[14] + a[8] * a[6] * a[15] - a[8] * a[7] * a[14] -
                 a[12] * a[6] * a[11] + a[12] * a[7] * a[10];
        inv[8] = a[4] * a[9] * a[15] - a[4] * a[11] * a[13] - a[8] * a[5] * a[15] + a[8] * a[7] * a[13] +
                 a[12] * a[5] * a[11] - a[12] * a[7] * a[9];
        inv[12] = -a[4] * a[9] * a[14] + a[4] * a[10] * a[13] + a[8] * a[5] * a[14] - a[8] * a[6] * a[13] -
                  a[12] * a[5] * a[10] + a[12] * a[6] * a[9];
        inv[1] = -a[1] * a[10] * a[15] + a[1] * a[11] * a[14] + a[9] * a[2] * a[15] - a[9] * a[3] * a[14] -
                 a[13] * a[2] * a[11] + a[13] * a[3] * a[10];
        inv[5] = a[0] * a[10] * a[15] - a[0] * a[11] * a[14] - a[8] * a[2] * a[15] + a[8] * a[3] * a[14] +
                 a[12] * a[2] * a[11] - a[12] * a[3] * a[10];
        inv[9] = -a[0] * a[9] * a[15] + a[0] * a[11] * a[13] + a[8] * a[1] * a[15] - a[8] * a[3] * a[13] -
                 a[12] * a[1] * a[11] + a[12] * a[3] * a[9];
        inv[13] = a[0] * a[9] * a[14] - a[0] * a[10] * a[13] - a[8] * a[1] * a[14] + a[8] * a[2] * a[13] +
                  a[12] * a[1] * a[10] - a[12] * a[2] * a[9];
        inv[2] = a[1] * a[6] * a[15] - a[1] * a[7] * a[14] - a[5] * a[2] * a[15] + a[5] * a[3] * a[14] +
                 a[13] * a[2] * a[7] - a[13] * a[3] * a[6];
        inv[6] = -a[0] * a[6] * a[15] + a[0] * a[7] * a[14] + a[4] * a[2] * a[15] - a[4] * a[3] * a[14] -
                 a[12] * a[2] * a[7] + a[12] * a[3] * a[6];
        inv[10] = a[0] * a[5] * a[15] - a[0] * a[7] * a[13] - a[4] * a[1] * a[15] + a[4] * a[3] * a[13] +
                  a[12] * a[1] * a[7] - a[12] * a[3] * a[5];
        inv[14] = -a[0] * a[5] * a[14] + a[0] * a[6] * a[13] + a[4] * a[1] * a[14] - a[4] * a[2] * a[13] -
                  a[12] * a[1] * a[6] + a[12] * a[2] * a[5];
        inv[3] = -a[1] * a[6] * a[11] + a[1] * a[7] * a[10] + a[5] * a[2] * a[11] - a[5] * a[3] * a[10] -
                 a[9] * a[2] * a[7] + a[9] * a[3] * a[6];
        inv[7] = a[0] * a[6] * a[11] - a[0] * a[7] * a[10] - a[4] * a[2] * a[11] + a[4] * a[3] * a[10] +
                 a[8] * a[2] * a[7] - a[8] * a[3] * a[6];
        inv[11] = -a[0] * a[5] * a[11] + a[0] * a[7] * a[9] + a[4] * a[1] * a[11] - a[4] * a[3] * a[9] -
                  a[8] * a[1] * a[7] + a[8] * a[3] * a[5];
        inv[15] = a[0] * a[5] * a[10] - a[0] * a[6] * a[9] - a[4] * a[1] * a[10] + a[4] * a[2] * a[9] +
                  a[8] * a[1] * a[6] - a[8] * a[2] * a[5];
        const double det = a[0] * inv[0] + a[1] * inv[4] + a[2] * inv[8] + a[3] * inv[12];
        const double scale = det != 0 ? 1.0 / det : 0.0;
        for (double& v : inv) v *= scale;
        return r;
    }

    // A right-handed view looking from `eye` at `target` with `up` upwards.
    static Matrix4 LookAt(const Vec3& eye, const Vec3& target, const Vec3& up) {
        const Vec3 f = (target - eye).Normalized();
        const Vec3 s = f.Cross(up).Normalized();
        const Vec3 u = s.Cross(f);
        Matrix4 r = Identity();
        r.At(0, 0) = s.x, r.At(0, 1) = s.y, r.At(0, 2) = s.z, r.At(0, 3) = -s.Dot(eye);
        r.At(1, 0) = u.x, r.At(1, 1) = u.y, r.At(1, 2) = u.z, r.At(1, 3) = -u.Dot(eye);
        r.At(2, 0) = -f.x, r.At(2, 1) = -f.y, r.At(2, 2) = -f.z, r.At(2, 3) = f.Dot(eye);
        return r;
    }
    // A perspective projection from the tangents of the half view angles.
    static Matrix4 Perspective(double tanHalfX, double tanHalfY, double zNear, double zFar) {
        Matrix4 r;
        r.At(0, 0) = 1.0 / tanHalfX;
        r.At(1, 1) = 1.0 / tanHalfY;
        r.At(2, 2) = -(zFar + zNear) / (zFar - zNear);
        r.At(2, 3) = -2.0 * zFar * zNear / (zFar - zNear);
        r.At(3, 2) = -1.0;
        return r;
    }
};

}  // namespace vexplot
