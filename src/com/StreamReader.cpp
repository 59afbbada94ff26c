#include "com/StreamReader.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "com/StreamError.h"

namespace vexplot {

namespace {

// IStream::Read takes 32-bit sizes; big blocks come in pieces of this size.
constexpr uint64_t kMaxPiece = uint64_t{1} << 30;

uint64_t LoadLittleEndian(const uint8_t* bytes, size_t size) {
    uint64_t value = 0;
    for (size_t i = 0; i < size; ++i) value |= uint64_t{bytes[i]} << (8 * i);
    return value;
}

std::string ByteCount(uint64_t n) { return std::to_string(n) + (n == 1 ? " byte" : " bytes"); }

}  // namespace

StreamReader::StreamReader(IStream* stream) : stream_(stream) {
    uint64_t size = 0;
    HRESULT hr = stream_->Seek(0, STREAM_SEEK_CUR, &position_);
    if (SUCCEEDED(hr)) hr = stream_->Stat(&size);
    if (FAILED(hr)) throw StreamError(hr, "cannot find the size of the stream");
    end_ = std::max(size, position_);
}

void StreamReader::Fail(HRESULT hr, std::string_view fault) const {
    throw StreamError(hr, std::string(fault) + " at offset " + std::to_string(position_));
}

void StreamReader::Require(uint64_t bytes, std::string_view what) const {
    if (bytes <= Remaining()) return;
    Fail(STG_E_READFAULT, std::string(what) + " needs " + ByteCount(bytes) + " but only " +
                              std::to_string(Remaining()) + " remain");
}

void StreamReader::Get(void* bytes, uint64_t size, std::string_view what) {
    Require(size, what);
    auto* p = static_cast<uint8_t*>(bytes);
    uint64_t done = 0;
    while (done < size) {
        const auto piece = static_cast<uint32_t>(std::min(size - done, kMaxPiece));
        uint32_t got = 0;
        const HRESULT hr = stream_->Read(p + done, piece, &got);
        if (FAILED(hr)) Fail(hr, "reading " + std::string(what) + " failed");
        done += got;
        if (got < piece) {
            // The stream is shorter than its size said (a file truncated
            // meanwhile): what was read is not trusted.
            Fail(STG_E_READFAULT, std::string(what) + " needs " + ByteCount(size) +
                                      " but the stream ended after " + std::to_string(done));
        }
    }
    position_ += size;
}

uint32_t StreamReader::ReadFixed32(std::string_view what) {
    uint8_t bytes[4];
    Get(bytes, sizeof bytes, what);
    return static_cast<uint32_t>(LoadLittleEndian(bytes, sizeof bytes));
}

int32_t StreamReader::ReadInt32(std::string_view what) { return static_cast<int32_t>(ReadFixed32(what)); }

bool StreamReader::ReadBool(std::string_view what) { return ReadFixed32(what) != 0; }

uint32_t StreamReader::ReadColour(std::string_view what) { return ReadFixed32(what); }

double StreamReader::ReadDouble(std::string_view what) {
    uint8_t bytes[8];
    Get(bytes, sizeof bytes, what);
    return std::bit_cast<double>(LoadLittleEndian(bytes, sizeof bytes));
}

void StreamReader::ReadDoubles(std::span<double> values, std::string_view what) {
    Get(values.data(), values.size_bytes(), what);
    if constexpr (std::endian::native != std::endian::little) {
        for (double& v : values) {
            uint8_t bytes[8];
            std::memcpy(bytes, &v, 8);
            v = std::bit_cast<double>(LoadLittleEndian(bytes, 8));
        }
    }
}

void StreamReader::ReadBytes(std::span<uint8_t> bytes, std::string_view what) {
    Get(bytes.data(), bytes.size(), what);
}

std::string StreamReader::ReadString(std::string_view what) {
    const std::string lengthName = std::string(what) + " length";
    uint8_t first = 0;
    Get(&first, 1, lengthName);
    uint64_t length = first;
    if (first == 0xFF) {
        uint8_t second[2];
        Get(second, sizeof second, lengthName);
        length = LoadLittleEndian(second, sizeof second);
        if (length == 0xFFFF) length = ReadFixed32(lengthName);
    }
    Require(length, what);
    std::string text(length, '\0');
    Get(text.data(), length, what);
    return text;
}

void StreamReader::Skip(uint64_t bytes, std::string_view what) {
    Require(bytes, what);
    uint64_t moved = 0;
    const HRESULT hr = stream_->Seek(static_cast<int64_t>(bytes), STREAM_SEEK_CUR, &moved);
    if (FAILED(hr)) Fail(hr, "skipping " + std::string(what) + " failed");
    position_ += bytes;
}

}  // namespace vexplot
