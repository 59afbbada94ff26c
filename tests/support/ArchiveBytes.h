#pragma once
// Records in memory: archives over bytes, and bytes built by hand
// (independently of the archive's writer) for records and their faults.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "com/MemoryStream.h"
#include "model/ArchiveError.h"
#include "model/CArchive.h"

namespace vexplot::test {

using Bytes = std::vector<uint8_t>;

// -- bytes by hand --

inline void Append(Bytes& out, std::initializer_list<int> bytes) {
    for (int b : bytes) out.push_back(static_cast<uint8_t>(b));
}
inline void AppendInt32(Bytes& out, int32_t value) {
    for (int i = 0; i < 4; ++i) out.push_back(static_cast<uint8_t>(static_cast<uint32_t>(value) >> (8 * i)));
}
inline void AppendUInt16(Bytes& out, uint16_t value) { Append(out, {value & 0xFF, value >> 8}); }
// A string shorter than 255 bytes: one length byte, then the text.
inline void AppendShortString(Bytes& out, std::string_view text) {
    out.push_back(static_cast<uint8_t>(text.size()));
    for (char c : text) out.push_back(static_cast<uint8_t>(c));  // insert() trips a GCC 12 bounds warning
}
inline int32_t Int32At(const Bytes& bytes, size_t at) {
    uint32_t v = 0;
    for (int i = 0; i < 4; ++i) v |= uint32_t{bytes[at + static_cast<size_t>(i)]} << (8 * i);
    return static_cast<int32_t>(v);
}
inline void PutInt32At(Bytes& bytes, size_t at, int32_t value) {
    for (size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<uint8_t>(static_cast<uint32_t>(value) >> (8 * i));
}

// -- archives over memory --

// The bytes `write` stores through an archive with the given buffer size.
inline Bytes Stored(const std::function<void(CArchive&)>& write, size_t bufferSize = CArchive::kDefaultBufferSize) {
    auto stream = MakeComObject<MemoryStream>();
    CArchive archive(stream.Get(), CArchive::Mode::Store, bufferSize);
    write(archive);
    archive.Close();
    return stream->Bytes();
}

// Runs `read` on a loading archive over `bytes`.
inline void Loaded(const Bytes& bytes, const std::function<void(CArchive&)>& read,
                   size_t bufferSize = CArchive::kDefaultBufferSize) {
    auto stream = MakeComObject<MemoryStream>(bytes);
    CArchive archive(stream.Get(), CArchive::Mode::Load, bufferSize);
    read(archive);
}

// The ArchiveError `read` raises on `bytes` (a failed expectation when none).
inline ArchiveError LoadError(const Bytes& bytes, const std::function<void(CArchive&)>& read) {
    try {
        Loaded(bytes, read);
    } catch (const ArchiveError& e) {
        return e;
    }
    ADD_FAILURE() << "no ArchiveError";
    return ArchiveError("none", 0);
}

}  // namespace vexplot::test
