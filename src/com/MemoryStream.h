#pragma once
#include <cstdint>
#include <vector>

#include "com/ComObject.h"
#include "com/IStream.h"

namespace vexplot {

// An IStream over a byte vector that grows as it is written: for saving an
// object into memory (clipboard, undo, tests) and reading it back.
// Seek may move past the end; a later Write fills the gap with zeros.
// E_OUTOFMEMORY when the vector cannot grow.
class MemoryStream final : public ComObject<IStream> {
public:
    // A stream holding `bytes`, positioned at the start.
    explicit MemoryStream(std::vector<uint8_t> bytes = {}) : bytes_(std::move(bytes)) {}

    HRESULT Read(void* buffer, uint32_t size, uint32_t* read) override;
    HRESULT Write(const void* buffer, uint32_t size, uint32_t* written) override;
    HRESULT Seek(int64_t move, uint32_t origin, uint64_t* newPosition) override;
    HRESULT SetSize(uint64_t size) override;
    HRESULT Commit(uint32_t flags) override;
    HRESULT Stat(uint64_t* size) override;

    const std::vector<uint8_t>& Bytes() const { return bytes_; }

private:
    ~MemoryStream() override = default;

    std::vector<uint8_t> bytes_;
    uint64_t position_ = 0;
};

}  // namespace vexplot
