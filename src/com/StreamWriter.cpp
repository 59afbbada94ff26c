#include "com/StreamWriter.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "com/StreamError.h"

namespace vexplot {

namespace {

// IStream::Write takes 32-bit sizes; big blocks go in pieces of this size.
constexpr uint64_t kMaxPiece = uint64_t{1} << 30;

template <class T>
void StoreLittleEndian(T value, uint8_t* out) {
    auto bits = std::bit_cast<std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>>(value);
    for (size_t i = 0; i < sizeof(T); ++i) out[i] = static_cast<uint8_t>(bits >> (8 * i));
}

}  // namespace

void StreamWriter::Put(const void* bytes, uint64_t size) {
    const auto* p = static_cast<const uint8_t*>(bytes);
    while (size > 0) {
        const auto piece = static_cast<uint32_t>(std::min(size, kMaxPiece));
        uint32_t done = 0;
        const HRESULT hr = stream_->Write(p, piece, &done);
        if (FAILED(hr) || done != piece) {
            const HRESULT code = FAILED(hr) ? hr : STG_E_WRITEFAULT;
            // The cause first ("disk full"), then where the stream stopped.
            throw StreamError(code, HResultWords(code) + " while writing " + std::to_string(size) +
                                        " bytes after " + std::to_string(written_) + " bytes had been written");
        }
        p += piece;
        size -= piece;
        written_ += piece;
    }
}

void StreamWriter::WriteInt32(int32_t value) {
    uint8_t bytes[4];
    StoreLittleEndian(value, bytes);
    Put(bytes, sizeof bytes);
}

void StreamWriter::WriteBool(bool value) { WriteInt32(value ? 1 : 0); }

void StreamWriter::WriteColour(uint32_t colour) { WriteInt32(static_cast<int32_t>(colour)); }

void StreamWriter::WriteDouble(double value) {
    uint8_t bytes[8];
    StoreLittleEndian(value, bytes);
    Put(bytes, sizeof bytes);
}

void StreamWriter::WriteDoubles(std::span<const double> values) {
    if constexpr (std::endian::native == std::endian::little) {
        Put(values.data(), values.size_bytes());
    } else {
        // Converted in blocks so that a big grid never needs a second full copy.
        constexpr size_t kBlock = 8192;
        std::vector<uint8_t> block(kBlock * 8);
        for (size_t first = 0; first < values.size(); first += kBlock) {
            const size_t n = std::min(kBlock, values.size() - first);
            for (size_t i = 0; i < n; ++i) StoreLittleEndian(values[first + i], &block[i * 8]);
            Put(block.data(), n * 8);
        }
    }
}

void StreamWriter::WriteBytes(std::span<const uint8_t> bytes) { Put(bytes.data(), bytes.size()); }

uint64_t StreamWriter::StringSize(std::string_view text) {
    const uint64_t n = text.size();
    if (n < 0xFF) return 1 + n;
    if (n < 0xFFFF) return 3 + n;
    return 7 + n;
}

void StreamWriter::WriteString(std::string_view text) {
    const uint64_t n = text.size();
    if (n > std::numeric_limits<uint32_t>::max())
        throw StreamError(E_INVALIDARG, "a string of " + std::to_string(n) + " bytes is too long to store");
    uint8_t prefix[7];
    size_t prefixSize = 0;
    if (n < 0xFF) {
        prefix[prefixSize++] = static_cast<uint8_t>(n);
    } else {
        prefix[prefixSize++] = 0xFF;
        const uint16_t shortLength = n < 0xFFFF ? static_cast<uint16_t>(n) : uint16_t{0xFFFF};
        prefix[prefixSize++] = static_cast<uint8_t>(shortLength);
        prefix[prefixSize++] = static_cast<uint8_t>(shortLength >> 8);
        if (shortLength == 0xFFFF) {
            StoreLittleEndian(static_cast<uint32_t>(n), &prefix[prefixSize]);
            prefixSize += 4;
        }
    }
    Put(prefix, prefixSize);
    Put(text.data(), n);
}

}  // namespace vexplot
