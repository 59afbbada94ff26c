#pragma once
#include <cstdint>
#include <vector>

#include "com/ComObject.h"
#include "com/IStream.h"

namespace vexplot {

// An IStream that puts a buffer in front of another stream, for one
// direction: a reader that takes a few bytes at a time, or a writer that
// puts them, makes one call on the base stream per buffer instead of one per
// item. Blocks at least as large as the buffer pass straight through.
//
// Reading fills the buffer ahead of the user, so the base stream stands
// further on than Position(); Flush() gives those bytes back by seeking the
// base stream to Position(). Writing keeps bytes until Flush() or until the
// buffer is full. Calls of the other direction answer STG_E_ACCESSDENIED.
//
// Anybody else may use the base stream only between a Flush() and a
// Resync(): an embedded object loads or saves itself straight through the
// base stream, and Resync() then takes over where it left the stream.
//
// The first failure the base stream reports is kept (DeviceFault) and
// answered by every later call, so a user can tell a failing device from
// data that merely ended.
class BufferedStream final : public ComObject<IStream> {
public:
    enum class Direction { Read, Write };

    // `base` is borrowed and must outlive this object; `start` is the base
    // stream's current position. A capacity of 0 counts as 1.
    BufferedStream(IStream* base, Direction direction, size_t capacity, uint64_t start);

    // IStream. Seek within the bytes already read ahead costs nothing;
    // others flush and seek the base stream. Stat answers the base stream's
    // size, or, while writing, the end of what was written if that is later.
    HRESULT Read(void* buffer, uint32_t size, uint32_t* read) override;
    HRESULT Write(const void* buffer, uint32_t size, uint32_t* written) override;
    HRESULT Seek(int64_t move, uint32_t origin, uint64_t* newPosition) override;
    HRESULT SetSize(uint64_t size) override;
    HRESULT Commit(uint32_t flags) override;
    HRESULT Stat(uint64_t* size) override;

    // Position of the next byte the user reads or writes.
    uint64_t Position() const;
    // Writing: sends the buffer to the base stream. Reading: drops the
    // read-ahead and moves the base stream back to Position().
    HRESULT Flush();
    // Empties the buffer and takes the base stream's current position as
    // Position(), after someone else moved the base stream.
    HRESULT Resync();
    // The first failure of the base stream, S_OK while there was none.
    HRESULT DeviceFault() const { return fault_; }

private:
    ~BufferedStream() override = default;

    HRESULT Fill();
    HRESULT SendBuffer();
    HRESULT ReadDirect(uint8_t* bytes, uint32_t size, uint32_t* read);
    HRESULT WriteDirect(const uint8_t* bytes, uint32_t size);
    HRESULT MoveBase(uint64_t position);
    HRESULT Fault(HRESULT hr);

    IStream* base_;
    Direction direction_;
    std::vector<uint8_t> buffer_;
    // Reading: buffer_[begin_, end_) are the bytes just before the base
    // position. Writing: buffer_[0, end_) go to the base position next.
    size_t begin_ = 0;
    size_t end_ = 0;
    uint64_t basePosition_;
    HRESULT fault_ = S_OK;
};

}  // namespace vexplot
