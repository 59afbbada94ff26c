#include "dataobject/GraphContents.h"

namespace vexplot {

namespace {

std::string CheckScale(const SafeArray& scale, const char* axis, int32_t count) {
    if (scale.Dims() != 1)
        return std::string("the ") + axis + " scale has " + std::to_string(scale.Dims()) +
               " dimensions instead of one";
    if (scale.ElementCount() != static_cast<size_t>(count))
        return std::string("the ") + axis + " scale has " + std::to_string(scale.ElementCount()) +
               " values but the grid has " + std::to_string(count) + " " + axis + " indices";
    return {};
}

}  // namespace

std::string GraphContents::CheckSize(int64_t xCount, int64_t yCount) {
    const std::string size = std::to_string(xCount) + " x " + std::to_string(yCount);
    if (xCount < 0 || yCount < 0) return "grid size " + size + " is negative";
    if ((xCount == 0) != (yCount == 0)) return "grid size " + size + " is empty in one direction only";
    if (xCount > INT32_MAX || yCount > INT32_MAX ||
        static_cast<uint64_t>(xCount) * static_cast<uint64_t>(yCount) > kMaxCells)
        return "grid size " + size + " exceeds the limit of " + std::to_string(kMaxCells) + " cells";
    return {};
}

std::string GraphContents::Check() const {
    if (!HasGrid()) {
        if (!xScale.IsNull() && xScale.ElementCount() > 0) return "an empty grid has an X scale";
        if (!yScale.IsNull() && yScale.ElementCount() > 0) return "an empty grid has a Y scale";
        return {};
    }
    if (grid.Dims() != 2)
        return "the grid has " + std::to_string(grid.Dims()) + " dimensions instead of two";
    if (std::string fault = CheckSize(grid.Bound(1).count, grid.Bound(0).count); !fault.empty()) return fault;
    if (std::string fault = CheckScale(xScale, "X", XCount()); !fault.empty()) return fault;
    return CheckScale(yScale, "Y", YCount());
}

SafeArray GraphContents::IndexScale(uint32_t count) {
    SafeArray scale = SafeArray::Create1D(count);
    double* values = scale.MutableData();
    for (uint32_t i = 0; i < count; ++i) values[i] = i;
    return scale;
}

}  // namespace vexplot
