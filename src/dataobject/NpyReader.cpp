#include "dataobject/NpyReader.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string>
#include <vector>

#include "com/StreamReader.h"
#include "dataobject/NpyHeader.h"

namespace vexplot {

namespace {

constexpr uint8_t kMagic[6] = {0x93, 'N', 'U', 'M', 'P', 'Y'};
// Longer headers than this are not written by NumPy for a plain array.
constexpr uint32_t kMaxHeader = 1u << 20;
// Elements converted per block: big enough to amortise the reads, small
// enough to stay in cache.
constexpr size_t kBlockElements = 1u << 16;

template <size_t N> struct UnsignedOf;
template <> struct UnsignedOf<1> { using type = uint8_t; };
template <> struct UnsignedOf<2> { using type = uint16_t; };
template <> struct UnsignedOf<4> { using type = uint32_t; };
template <> struct UnsignedOf<8> { using type = uint64_t; };

template <class U>
U Swapped(U v) {
    U out = 0;
    for (size_t i = 0; i < sizeof(U); ++i) out = static_cast<U>((out << 8) | ((v >> (8 * i)) & 0xFF));
    return out;
}

// Converts n stored elements of type T to doubles; one instance per type and
// byte order, chosen once per file, so the loop has no per-element dispatch.
template <class T, bool Swap>
void Convert(const uint8_t* in, size_t n, double* out) {
    using U = typename UnsignedOf<sizeof(T)>::type;
    for (size_t i = 0; i < n; ++i) {
        U bits;
        std::memcpy(&bits, in + i * sizeof(T), sizeof(T));
        if constexpr (Swap) bits = Swapped(bits);
        if constexpr (std::is_same_v<T, bool>) out[i] = bits != 0 ? 1.0 : 0.0;
        else out[i] = static_cast<double>(std::bit_cast<T>(bits));
    }
}

using Converter = void (*)(const uint8_t*, size_t, double*);

template <class T>
Converter ConverterFor(bool swap) {
    return swap ? &Convert<T, true> : &Convert<T, false>;
}

Converter ChooseConverter(const NpyHeader& h) {
    const bool swap = h.bigEndian != (std::endian::native == std::endian::big);
    using K = NpyHeader::Kind;
    switch (h.kind) {
        case K::Float: return h.itemSize == 4 ? ConverterFor<float>(swap) : ConverterFor<double>(swap);
        case K::Bool: return ConverterFor<bool>(false);
        case K::Signed:
            switch (h.itemSize) {
                case 1: return ConverterFor<int8_t>(false);
                case 2: return ConverterFor<int16_t>(swap);
                case 4: return ConverterFor<int32_t>(swap);
                default: return ConverterFor<int64_t>(swap);
            }
        case K::Unsigned:
            switch (h.itemSize) {
                case 1: return ConverterFor<uint8_t>(false);
                case 2: return ConverterFor<uint16_t>(swap);
                case 4: return ConverterFor<uint32_t>(swap);
                default: return ConverterFor<uint64_t>(swap);
            }
    }
    return nullptr;
}

NpyHeader ReadHeader(StreamReader& reader) {
    uint8_t magic[6];
    reader.ReadBytes(magic, "NPY magic bytes");
    if (!std::equal(std::begin(magic), std::end(magic), std::begin(kMagic)))
        reader.Fail(STG_E_INVALIDHEADER, "not a NumPy array file: wrong magic bytes");
    uint8_t version[2];
    reader.ReadBytes(version, "NPY version");
    if (version[0] < 1 || version[0] > 3 || version[1] != 0)
        reader.Fail(STG_E_DOCFILECORRUPT, "unsupported NPY version " + std::to_string(version[0]) + "." +
                                              std::to_string(version[1]));
    uint32_t length = 0;
    if (version[0] == 1) {
        uint8_t bytes[2];
        reader.ReadBytes(bytes, "NPY header length");
        length = bytes[0] | (uint32_t{bytes[1]} << 8);
    } else {
        uint8_t bytes[4];
        reader.ReadBytes(bytes, "NPY header length");
        length = bytes[0] | (uint32_t{bytes[1]} << 8) | (uint32_t{bytes[2]} << 16) | (uint32_t{bytes[3]} << 24);
    }
    if (length > kMaxHeader) reader.Fail(STG_E_DOCFILECORRUPT, "NPY header length " + std::to_string(length) + " is implausible");
    reader.Require(length, "NPY header");
    std::string text(length, '\0');
    reader.ReadBytes({reinterpret_cast<uint8_t*>(text.data()), text.size()}, "NPY header");
    NpyHeader header;
    std::string fault;
    if (!NpyHeader::Parse(text, &header, &fault)) reader.Fail(STG_E_DOCFILECORRUPT, "NPY header: " + fault);
    return header;
}

std::string ShapeText(const std::vector<uint64_t>& shape) {
    std::string text = "(";
    for (size_t i = 0; i < shape.size(); ++i) text += (i ? ", " : "") + std::to_string(shape[i]);
    return text + (shape.size() == 1 ? ",)" : ")");
}

// The elements of the file, converted to doubles block by block.
class ElementSource {
public:
    ElementSource(StreamReader& reader, const NpyHeader& h)
        : reader_(reader), convert_(ChooseConverter(h)), itemSize_(h.itemSize), raw_(kBlockElements * h.itemSize) {}

    // The next n (at most kBlockElements) elements into `out`.
    void Next(size_t n, double* out) {
        reader_.ReadBytes({raw_.data(), n * itemSize_}, "array data");
        convert_(raw_.data(), n, out);
    }

private:
    StreamReader& reader_;
    Converter convert_;
    size_t itemSize_;
    std::vector<uint8_t> raw_;
};

// A C-order file holds row iy, column ix at iy * X + ix; the grid wants it at
// ix * Y + iy. Whole rows are read a block at a time and transposed so that
// each X index receives a run of consecutive Y values (cache-friendly); rows
// longer than a block go element by element.
void TransposeRows(ElementSource& source, uint32_t xCount, uint32_t yCount, double* grid) {
    const size_t rowsPerBlock = std::max<size_t>(1, kBlockElements / xCount);
    std::vector<double> block(std::min<size_t>(rowsPerBlock * xCount, kBlockElements));
    for (size_t iy0 = 0; iy0 < yCount; iy0 += rowsPerBlock) {
        const size_t rows = std::min<size_t>(rowsPerBlock, yCount - iy0);
        if (xCount > kBlockElements) {  // one long row, in pieces
            for (size_t ix0 = 0; ix0 < xCount; ix0 += kBlockElements) {
                const size_t n = std::min<size_t>(kBlockElements, xCount - ix0);
                source.Next(n, block.data());
                for (size_t j = 0; j < n; ++j) grid[(ix0 + j) * yCount + iy0] = block[j];
            }
            continue;
        }
        source.Next(rows * xCount, block.data());
        for (size_t ix = 0; ix < xCount; ++ix)
            for (size_t r = 0; r < rows; ++r) grid[ix * yCount + iy0 + r] = block[r * xCount + ix];
    }
}

void ReadElements(StreamReader& reader, const NpyHeader& h, uint32_t xCount, uint32_t yCount, double* grid) {
    const size_t cells = size_t{xCount} * yCount;
    const bool gridOrder = h.fortranOrder || yCount == 1 || xCount == 1;  // a vector is in both orders
    if (gridOrder && h.kind == NpyHeader::Kind::Float && h.itemSize == 8 && !h.bigEndian) {
        reader.ReadDoubles({grid, cells}, "array data");  // straight into the grid
        return;
    }
    ElementSource source(reader, h);
    if (!gridOrder) return TransposeRows(source, xCount, yCount, grid);
    for (size_t first = 0; first < cells; first += kBlockElements)
        source.Next(std::min(kBlockElements, cells - first), grid + first);
}

}  // namespace

GraphContents NpyReader::Read(StreamReader& reader) {
    const NpyHeader header = ReadHeader(reader);
    const std::vector<uint64_t>& shape = header.shape;
    if (shape.empty() || shape.size() > 2)
        reader.Fail(STG_E_DOCFILECORRUPT, "NPY shape " + ShapeText(shape) + " is not one or two dimensions");
    const uint64_t yCount = shape.size() == 2 ? shape[0] : 1;
    const uint64_t xCount = shape.back();
    if (xCount == 0 || yCount == 0) reader.Fail(STG_E_DOCFILECORRUPT, "NPY shape " + ShapeText(shape) + " holds no values");
    if (xCount > INT32_MAX || yCount > INT32_MAX || xCount * yCount > GraphContents::kMaxCells)
        reader.Fail(STG_E_DOCFILECORRUPT, "NPY shape " + ShapeText(shape) + " exceeds the limit of " +
                                              std::to_string(GraphContents::kMaxCells) + " cells");
    reader.Require(xCount * yCount * header.itemSize, "array data of shape " + ShapeText(shape));

    GraphContents contents;
    contents.grid = SafeArray::Create2DForOverwrite(static_cast<uint32_t>(yCount), static_cast<uint32_t>(xCount));
    ReadElements(reader, header, static_cast<uint32_t>(xCount), static_cast<uint32_t>(yCount),
                 contents.grid.MutableData());
    contents.xScale = GraphContents::IndexScale(static_cast<uint32_t>(xCount));
    contents.yScale = GraphContents::IndexScale(static_cast<uint32_t>(yCount));
    return contents;
}

}  // namespace vexplot
