#pragma once
#include <cstdint>

#include "com/IUnknown.h"

namespace vexplot {

inline constexpr uint32_t STREAM_SEEK_SET = 0;
inline constexpr uint32_t STREAM_SEEK_CUR = 1;
inline constexpr uint32_t STREAM_SEEK_END = 2;

// A byte stream that objects save themselves into and load from.
// Read returns S_OK with *read < size at the end of the stream; a failing
// device returns STG_E_READFAULT / STG_E_WRITEFAULT / STG_E_MEDIUMFULL.
class IStream : public IUnknown {
public:
    using Base = IUnknown;
    static constexpr IID kIid = GUID::FromLiteral("{0000000C-0000-0000-C000-000000000046}");

    virtual HRESULT Read(void* buffer, uint32_t size, uint32_t* read) = 0;               // slot 3
    virtual HRESULT Write(const void* buffer, uint32_t size, uint32_t* written) = 0;     // slot 4
    virtual HRESULT Seek(int64_t move, uint32_t origin, uint64_t* newPosition) = 0;      // slot 5
    virtual HRESULT SetSize(uint64_t size) = 0;                                          // slot 6
    // Slots 7 to 11 (CopyTo, Commit, Revert, LockRegion, UnlockRegion) are
    // reduced to the one the control uses.
    virtual HRESULT Commit(uint32_t flags) = 0;                                          // slot 7
    // Total size of the stream in bytes (the cbSize field of Stat).
    virtual HRESULT Stat(uint64_t* size) = 0;                                            // slot 8

protected:
    ~IStream() = default;
};

}  // namespace vexplot
