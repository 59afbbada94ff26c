#pragma once
#include <algorithm>
#include <cstdint>
#include <vector>

#include "com/ComObject.h"
#include "com/IStream.h"

namespace vexplot::test {

// A stream over fixed bytes for device faults: it can claim a size other
// than it holds, fail every read with `readResult`, and remembers the
// largest read it was asked for. Writes fail with `writeResult`, or accept
// half and say all is well. Seeks do not move it.
class ScriptedStream final : public ComObject<IStream> {
public:
    ScriptedStream(std::vector<uint8_t> bytes, uint64_t claimedSize, HRESULT readResult = S_OK,
                   HRESULT writeResult = S_OK)
        : bytes_(std::move(bytes)), claimedSize_(claimedSize), readResult_(readResult), writeResult_(writeResult) {}

    HRESULT Read(void* buffer, uint32_t size, uint32_t* read) override {
        largestRead = std::max(largestRead, size);
        if (FAILED(readResult_)) return readResult_;
        const uint32_t n = static_cast<uint32_t>(std::min<uint64_t>(size, bytes_.size() - position_));
        std::copy_n(bytes_.begin() + static_cast<ptrdiff_t>(position_), n, static_cast<uint8_t*>(buffer));
        position_ += n;
        *read = n;
        return S_OK;
    }
    HRESULT Write(const void*, uint32_t size, uint32_t* written) override {
        if (FAILED(writeResult_)) return writeResult_;
        *written = size / 2;
        return S_OK;
    }
    HRESULT Seek(int64_t, uint32_t, uint64_t* position) override {
        if (position) *position = position_;
        return S_OK;
    }
    HRESULT SetSize(uint64_t) override { return E_NOTIMPL; }
    HRESULT Commit(uint32_t) override { return S_OK; }
    HRESULT Stat(uint64_t* size) override {
        *size = claimedSize_;
        return S_OK;
    }

    uint32_t largestRead = 0;

private:
    ~ScriptedStream() override = default;
    std::vector<uint8_t> bytes_;
    uint64_t claimedSize_;
    HRESULT readResult_, writeResult_;
    uint64_t position_ = 0;
};

}  // namespace vexplot::test
