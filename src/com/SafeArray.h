#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "com/HResult.h"

namespace vexplot {

// One dimension of a SafeArray: its element count and its lower bound.
struct SafeArrayBound {
    uint32_t count = 0;
    int32_t lower = 0;
};

// An array of doubles (VT_R8) in one or two dimensions with lower bounds, the
// form in which grids and scales cross component boundaries.
//
// Dimension 0 varies fastest in memory, as in an automation array a(i, j):
// element (i, j) lies at (j - lower1) * count0 + (i - lower0). A grid of
// X count by Y count, stored with the Y index fastest, is therefore the array
// with dimension 0 = Y and dimension 1 = X.
//
// Copies share their storage until one of them is written to (copy on
// write), so handing a 4096 x 4096 grid across an interface costs nothing
// until someone changes it.
class SafeArray {
public:
    SafeArray() = default;  // the null array: no dimensions, no data

    // Zero-filled arrays; throw std::bad_alloc (or std::length_error when the
    // element count overflows) before allocating anything unreasonable.
    static SafeArray Create1D(uint32_t count, int32_t lower = 0);
    static SafeArray Create2D(uint32_t count0, uint32_t count1, int32_t lower0 = 0, int32_t lower1 = 0);
    // As Create2D, but the elements are left unset: for readers that fill
    // every element at once (a file load), so that the pages are touched once.
    static SafeArray Create2DForOverwrite(uint32_t count0, uint32_t count1, int32_t lower0 = 0,
                                          int32_t lower1 = 0);
    // Copies `values` into a new one-dimensional array.
    static SafeArray FromValues(std::span<const double> values, int32_t lower = 0);

    bool IsNull() const { return dims_ == 0; }
    uint32_t Dims() const { return dims_; }
    // Bounds of dimension `dim` (0-based here; automation counts from 1).
    SafeArrayBound Bound(uint32_t dim) const { return dim < dims_ ? bounds_[dim] : SafeArrayBound{}; }
    int32_t LowerBound(uint32_t dim) const { return Bound(dim).lower; }
    int64_t UpperBound(uint32_t dim) const { return int64_t{Bound(dim).lower} + Bound(dim).count - 1; }
    size_t ElementCount() const { return size_; }

    // Whole storage in memory order.
    std::span<const double> Values() const { return {data_.get(), size_}; }
    const double* Data() const { return data_.get(); }
    // Writable storage; copies first when the storage is shared.
    double* MutableData();

    // Element by subscripts (with the lower bounds applied), as
    // SafeArrayGetElement/PutElement: DISP_E_BADINDEX when out of range.
    HRESULT GetElement(std::span<const int32_t> indices, double* value) const;
    HRESULT PutElement(std::span<const int32_t> indices, double value);

    // True when both arrays use the same storage (for tests of copy counts).
    bool SharesStorageWith(const SafeArray& other) const { return data_ && data_ == other.data_; }

private:
    static SafeArray Allocate(uint32_t dims, const SafeArrayBound* bounds, bool zeroed);
    bool Offset(std::span<const int32_t> indices, size_t* offset) const;

    uint32_t dims_ = 0;
    SafeArrayBound bounds_[2]{};
    size_t size_ = 0;
    std::shared_ptr<double[]> data_;
};

}  // namespace vexplot
