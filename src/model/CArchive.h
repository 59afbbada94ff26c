#pragma once
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "com/ComPtr.h"
#include "com/IStream.h"
#include "model/ArchiveError.h"

namespace vexplot {

class ArchiveClass;
class ArchiveObject;

// A sequential archive in which model objects write and read their records:
// the form of plot files (".vxg") and of the control's saved state.
//
// One direction per archive (store or load) over any IStream: a FileStream
// for files, a MemoryStream for the registry path and for tests. Bytes pass
// through a buffer (4096 bytes unless told otherwise); Flush() empties it
// into the stream, which must happen before anyone else writes to the
// stream (embedded objects do it themselves through WriteObject).
//
// Primitives, all little-endian: int32, int16, uint32, bool (an int32, 1 or
// 0; any non-zero reads true), colour (a uint32 0x00BBGGRR), double
// (binary64), and strings as a length prefix then the UTF-8 bytes without a
// terminator: a length below 255 is one byte; below 65535 the byte 0xFF and
// a 2-byte length; otherwise 0xFF, 0xFFFF and a 4-byte length.
//
// Loading is bounded by what the stream holds: every read checks that its
// bytes remain, lengths are checked against the rest before anything is
// allocated, and a malformed or truncated stream raises ArchiveError saying
// what was expected and at which offset. `what` names the item read, for
// that message ("X axis label", "colour count").
class CArchive {
public:
    enum class Mode { Store, Load };
    static constexpr size_t kDefaultBufferSize = 4096;

    // `stream` is borrowed and must outlive the archive; the archive starts
    // at the stream's current position.
    CArchive(IStream* stream, Mode mode, size_t bufferSize = kDefaultBufferSize);
    // Flushes a storing archive, swallowing errors: call Close() to see them.
    ~CArchive();
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;

    bool IsStoring() const { return mode_ == Mode::Store; }
    bool IsLoading() const { return mode_ == Mode::Load; }
    // Position in the stream of the next byte read or written (buffer included).
    uint64_t Offset() const;
    // Loading: bytes left in the stream after the current position.
    uint64_t Remaining() const;

    // Storing: writes the buffer to the stream. Loading: gives back to the
    // stream what was read ahead, so the stream's position is Offset().
    void Flush();
    // Flush(), and the archive is done; errors raise.
    void Close();

    // storing:
    void WriteInt32(int32_t value);
    void WriteInt16(int16_t value);
    void WriteUInt32(uint32_t value);
    void WriteBool(bool value);
    void WriteColor(uint32_t color);
    void WriteDouble(double value);
    void WriteBytes(std::span<const uint8_t> bytes);
    void WriteString(std::string_view text);

    // loading:
    int32_t ReadInt32(std::string_view what);
    int16_t ReadInt16(std::string_view what);
    uint32_t ReadUInt32(std::string_view what);
    bool ReadBool(std::string_view what);
    uint32_t ReadColor(std::string_view what);
    double ReadDouble(std::string_view what);
    void ReadBytes(std::span<uint8_t> bytes, std::string_view what);
    std::string ReadString(std::string_view what);
    // Reads a string and raises ArchiveError unless it equals `marker`.
    void ExpectString(std::string_view marker);
    // Raises ArchiveError unless `bytes` remain: checks a block of counted
    // items (count x item size) before it is allocated.
    void Require(uint64_t bytes, std::string_view what) const;
    // Raises ArchiveError("<what>: <fault> at offset <Offset()>").
    [[noreturn]] void Fail(std::string_view what, std::string_view fault) const;

    // embedded objects (a component saved through its own IPersistStream):
    // Storing: flushes, then writes the object's class id and its data
    // (OleSaveToStream); an object without IPersistStream, or null, is
    // written as the null object. Loading: creates and loads the object,
    // null for the null object; failures raise ArchiveError.
    void WriteObject(IUnknown* object);
    ComPtr<IUnknown> ReadObject(std::string_view what);

    // class records: objects written by class name with their schema, so a
    // list of mixed model objects reads back as the same classes. The first
    // object of a class in an archive writes the class record (name and
    // schema); later ones refer to it by its index. A class unknown to the
    // reader, or stored with another schema, raises ArchiveError.
    void WriteObjectRecord(const ArchiveObject* object);  // null allowed
    std::unique_ptr<ArchiveObject> ReadObjectRecord(std::string_view what);

private:
    class Impl;
    Mode mode_;
    std::unique_ptr<Impl> impl_;
};

}  // namespace vexplot
