#pragma once
#include <cstdint>
#include <span>
#include <string_view>

#include "com/IStream.h"

namespace vexplot {

// Writes the archive primitives, little-endian, to an IStream:
//   int32   4 bytes, two's complement
//   bool    an int32, 1 or 0
//   colour  an int32 holding 0x00BBGGRR
//   double  8 bytes, IEEE 754 binary64
//   string  a length prefix, then the UTF-8 bytes without a terminator; the
//           prefix is one byte for a length below 255, else 0xFF and a 2-byte
//           length below 65535, else 0xFF, 0xFFFF and a 4-byte length
//
// Nothing is buffered here: each call is one or more IStream::Write calls, so
// a caller that writes many small items puts its own buffer underneath.
// Every failure throws StreamError carrying the stream's HRESULT
// (STG_E_WRITEFAULT when the stream accepted fewer bytes than offered).
class StreamWriter {
public:
    // Writes at the stream's current position. `stream` is borrowed and must
    // outlive the writer.
    explicit StreamWriter(IStream* stream) : stream_(stream) {}

    void WriteInt32(int32_t value);
    void WriteBool(bool value);
    void WriteColour(uint32_t colour);
    void WriteDouble(double value);
    // Many doubles in one pass, straight from `values` on little-endian hosts.
    void WriteDoubles(std::span<const double> values);
    void WriteBytes(std::span<const uint8_t> bytes);
    // E_INVALIDARG (as StreamError) for text of 4 GiB or more.
    void WriteString(std::string_view text);

    // Bytes written through this writer so far.
    uint64_t BytesWritten() const { return written_; }
    // The bytes WriteString(text) puts into the stream, prefix included.
    static uint64_t StringSize(std::string_view text);

private:
    void Put(const void* bytes, uint64_t size);

    IStream* stream_;
    uint64_t written_ = 0;
};

}  // namespace vexplot
