#pragma once
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "com/HResult.h"
#include "com/IStream.h"

namespace vexplot {

// Reads the primitives that StreamWriter writes (see there for the layout),
// bounded by the stream's size: before each item it checks that the item's
// bytes remain, so it never reads past the end and never allocates for a
// length it has not checked against what is left.
//
// Every failure throws StreamError with a description saying what was
// expected and at which byte offset (offsets are positions in the stream):
//   STG_E_READFAULT      the data ends before the item, or the stream
//                        delivered fewer bytes than its size promised
//   STG_E_DOCFILECORRUPT an item's value is impossible (see Fail)
//   the stream's own code when a Read, Seek or Stat fails.
// `what` names the item in those descriptions ("X count", "grid").
class StreamReader {
public:
    // Reads from the stream's current position to its end (its Stat size).
    // `stream` is borrowed and must outlive the reader; nobody else may move
    // its position meanwhile.
    explicit StreamReader(IStream* stream);

    int32_t ReadInt32(std::string_view what = "int");
    // Any non-zero int32 reads as true.
    bool ReadBool(std::string_view what = "bool");
    uint32_t ReadColour(std::string_view what = "colour");
    double ReadDouble(std::string_view what = "double");
    // Fills `values`, straight into their storage on little-endian hosts.
    void ReadDoubles(std::span<double> values, std::string_view what = "doubles");
    void ReadBytes(std::span<uint8_t> bytes, std::string_view what = "bytes");
    // The stored bytes as they are (expected to be UTF-8, not validated).
    std::string ReadString(std::string_view what = "string");
    void Skip(uint64_t bytes, std::string_view what = "bytes");

    // Throws STG_E_READFAULT unless `bytes` remain: a format checks a whole
    // block (a grid of n doubles) with this before allocating for it.
    void Require(uint64_t bytes, std::string_view what) const;
    // Throws StreamError(hr, "<fault> at offset <Offset()>").
    [[noreturn]] void Fail(HRESULT hr, std::string_view fault) const;

    uint64_t Offset() const { return position_; }
    uint64_t Remaining() const { return end_ - position_; }

private:
    void Get(void* bytes, uint64_t size, std::string_view what);
    uint32_t ReadFixed32(std::string_view what);

    IStream* stream_;
    uint64_t position_ = 0;
    uint64_t end_ = 0;
};

}  // namespace vexplot
