#include "com/SafeArray.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace vexplot {

SafeArray SafeArray::Allocate(uint32_t dims, const SafeArrayBound* bounds, bool zeroed) {
    size_t size = 1;
    for (uint32_t d = 0; d < dims; ++d) {
        if (bounds[d].count != 0 && size > std::numeric_limits<size_t>::max() / sizeof(double) / bounds[d].count)
            throw std::length_error("array element count overflows");
        size *= bounds[d].count;
    }
    SafeArray a;
    a.dims_ = dims;
    std::copy(bounds, bounds + dims, a.bounds_);
    a.size_ = size;
    if (size > 0) a.data_ = zeroed ? std::make_shared<double[]>(size) : std::make_shared_for_overwrite<double[]>(size);
    return a;
}

SafeArray SafeArray::Create1D(uint32_t count, int32_t lower) {
    const SafeArrayBound b[1] = {{count, lower}};
    return Allocate(1, b, true);
}

SafeArray SafeArray::Create2D(uint32_t count0, uint32_t count1, int32_t lower0, int32_t lower1) {
    const SafeArrayBound b[2] = {{count0, lower0}, {count1, lower1}};
    return Allocate(2, b, true);
}

SafeArray SafeArray::Create2DForOverwrite(uint32_t count0, uint32_t count1, int32_t lower0, int32_t lower1) {
    const SafeArrayBound b[2] = {{count0, lower0}, {count1, lower1}};
    return Allocate(2, b, false);
}

SafeArray SafeArray::FromValues(std::span<const double> values, int32_t lower) {
    if (values.size() > std::numeric_limits<uint32_t>::max()) throw std::length_error("array too long");
    SafeArray a = Create1D(static_cast<uint32_t>(values.size()), lower);
    std::copy(values.begin(), values.end(), a.data_.get());
    return a;
}

double* SafeArray::MutableData() {
    if (data_ && data_.use_count() > 1) {
        auto copy = std::make_shared_for_overwrite<double[]>(size_);
        std::copy(data_.get(), data_.get() + size_, copy.get());
        data_ = std::move(copy);
    }
    return data_.get();
}

bool SafeArray::Offset(std::span<const int32_t> indices, size_t* offset) const {
    if (indices.size() != dims_ || dims_ == 0) return false;
    size_t result = 0, stride = 1;
    for (uint32_t d = 0; d < dims_; ++d) {
        const int64_t i = int64_t{indices[d]} - bounds_[d].lower;
        if (i < 0 || i >= bounds_[d].count) return false;
        result += static_cast<size_t>(i) * stride;
        stride *= bounds_[d].count;
    }
    *offset = result;
    return true;
}

HRESULT SafeArray::GetElement(std::span<const int32_t> indices, double* value) const {
    if (!value) return E_POINTER;
    size_t at = 0;
    if (!Offset(indices, &at)) return DISP_E_BADINDEX;
    *value = data_[at];
    return S_OK;
}

HRESULT SafeArray::PutElement(std::span<const int32_t> indices, double value) {
    size_t at = 0;
    if (!Offset(indices, &at)) return DISP_E_BADINDEX;
    MutableData()[at] = value;
    return S_OK;
}

}  // namespace vexplot
