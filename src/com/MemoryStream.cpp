#include "com/MemoryStream.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <stdexcept>

namespace vexplot {

HRESULT MemoryStream::Read(void* buffer, uint32_t size, uint32_t* read) {
    if (read) *read = 0;
    if (!buffer && size > 0) return E_POINTER;
    const uint64_t available = position_ < bytes_.size() ? bytes_.size() - position_ : 0;
    const auto n = static_cast<uint32_t>(std::min<uint64_t>(size, available));
    if (n > 0) std::memcpy(buffer, bytes_.data() + position_, n);
    position_ += n;
    if (read) *read = n;
    return S_OK;
}

HRESULT MemoryStream::Write(const void* buffer, uint32_t size, uint32_t* written) {
    if (written) *written = 0;
    if (!buffer && size > 0) return E_POINTER;
    if (size == 0) return S_OK;
    const uint64_t end = position_ + size;
    if (end > bytes_.max_size()) return E_OUTOFMEMORY;
    try {
        if (end > bytes_.size()) bytes_.resize(end);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const std::length_error&) {
        return E_OUTOFMEMORY;
    }
    std::memcpy(bytes_.data() + position_, buffer, size);
    position_ = end;
    if (written) *written = size;
    return S_OK;
}

HRESULT MemoryStream::Seek(int64_t move, uint32_t origin, uint64_t* newPosition) {
    int64_t base = 0;
    switch (origin) {
        case STREAM_SEEK_SET: base = 0; break;
        case STREAM_SEEK_CUR: base = static_cast<int64_t>(position_); break;
        case STREAM_SEEK_END: base = static_cast<int64_t>(bytes_.size()); break;
        default: return STG_E_INVALIDFUNCTION;
    }
    if ((move < 0 && base + move < 0) || (move > 0 && base > INT64_MAX - move)) return STG_E_INVALIDFUNCTION;
    position_ = static_cast<uint64_t>(base + move);
    if (newPosition) *newPosition = position_;
    return S_OK;
}

HRESULT MemoryStream::SetSize(uint64_t size) {
    if (size > bytes_.max_size()) return E_OUTOFMEMORY;
    try {
        bytes_.resize(size);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    return S_OK;
}

HRESULT MemoryStream::Commit(uint32_t) { return S_OK; }

HRESULT MemoryStream::Stat(uint64_t* size) {
    if (!size) return E_POINTER;
    *size = bytes_.size();
    return S_OK;
}

}  // namespace vexplot
