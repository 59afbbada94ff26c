#include "model/CArchive.h"

#include <map>
#include <optional>
#include <stdexcept>
#include <utility>

#include "com/ComError.h"
#include "com/ErrorInfo.h"
#include "com/IPersist.h"
#include "com/OleStream.h"
#include "com/StreamError.h"
#include "com/StreamReader.h"
#include "com/StreamWriter.h"
#include "model/ArchiveClass.h"
#include "model/ArchiveObject.h"
#include "model/BufferedStream.h"
#include "model/ClassRecordTag.h"

// Which failures are which. A loading archive raises ArchiveError for
// everything the bytes are to blame for: data that ends early, impossible
// values, unknown classes, an embedded object that will not load. A failure
// the stream itself reports (a read or seek fault of the device) stays the
// StreamError (a ComError) it is, so that "the file is broken" and "the disk
// is broken" reach the user as different messages. Storing raises only
// ComError: every failure there is the device's.

namespace vexplot {

namespace {

// Deep enough for any model object; shallow enough that hostile nesting
// cannot exhaust the stack.
constexpr int kMaxNesting = 64;

[[noreturn]] void FailAt(uint64_t offset, std::string_view what, std::string_view fault) {
    throw ArchiveError(std::string(what) + ": " + std::string(fault) + " at offset " + std::to_string(offset), offset);
}

std::string Named(std::string_view what, std::string_view item) { return std::string(what) + " " + std::string(item); }

// `text` fit for a message, whatever bytes a damaged stream holds.
std::string Quoted(std::string_view text) {
    constexpr size_t kMaxShown = 40;
    std::string out = "\"";
    for (size_t i = 0; i < text.size() && i < kMaxShown; ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c >= 0x20 && c < 0x7F && c != '"' && c != '\\') {
            out += static_cast<char>(c);
        } else {
            static constexpr char kHex[] = "0123456789ABCDEF";
            out += "\\x";
            out += kHex[c >> 4];
            out += kHex[c & 15];
        }
    }
    if (text.size() > kMaxShown) out += "...";
    return out + "\"";
}

uint64_t StreamPosition(IStream* stream) {
    if (!stream) throw ComError(E_POINTER, IStream::kIid, "an archive needs a stream");
    uint64_t position = 0;
    const HRESULT hr = stream->Seek(0, STREAM_SEEK_CUR, &position);
    if (FAILED(hr)) throw StreamError(hr, "cannot find the stream's position");
    return position;
}

// Counts the nesting of class records for one scope.
class Nesting {
public:
    explicit Nesting(int& depth) : depth_(depth) { ++depth_; }
    ~Nesting() { --depth_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    int& depth_;
};

}  // namespace

class CArchive::Impl {
public:
    Impl(IStream* stream, Mode mode, size_t bufferSize)
        : base(stream),
          buffered(MakeComObject<BufferedStream>(
              stream, mode == Mode::Load ? BufferedStream::Direction::Read : BufferedStream::Direction::Write,
              bufferSize, StreamPosition(stream))) {
        if (mode == Mode::Load)
            reader.emplace(buffered.Get());
        else
            writer.emplace(buffered.Get());
    }

    StreamReader& Reader() {
        if (!reader) throw std::logic_error("CArchive: reading from a storing archive");
        if (closed) throw std::logic_error("CArchive: reading from a closed archive");
        return *reader;
    }

    StreamWriter& Writer() {
        if (!writer) throw std::logic_error("CArchive: writing to a loading archive");
        if (closed) throw std::logic_error("CArchive: writing to a closed archive");
        return *writer;
    }

    // Runs one read, turning what the bytes are to blame for into
    // ArchiveError with the reader's own description (which ends in the
    // offset) and the same offset.
    template <class Read>
    auto Load(Read read) -> decltype(read(std::declval<StreamReader&>())) {
        StreamReader& r = Reader();
        try {
            return read(r);
        } catch (const StreamError& e) {
            if (FAILED(buffered->DeviceFault())) throw;
            throw ArchiveError(e.Description(), r.Offset());
        }
    }

    void Flush() {
        const HRESULT hr = buffered->Flush();
        if (FAILED(hr)) throw StreamError(hr, HResultWords(hr) + " while writing the archive's buffer to the stream");
    }

    // After an embedded object moved the stream itself.
    void Resync() {
        const HRESULT hr = buffered->Resync();
        if (FAILED(hr)) throw StreamError(hr, "cannot find the stream's position after an embedded object");
        if (reader) reader.emplace(buffered.Get());
    }

    const ArchiveClass& NewClass(CArchive& archive, uint64_t at, std::string_view what) {
        const uint32_t schema = archive.ReadUInt32(Named(what, "schema"));
        const std::string name = archive.ReadString(Named(what, "class name"));
        const ArchiveClass* cls = ArchiveClass::Find(name);
        if (!cls) FailAt(at, what, "unknown class " + Quoted(name));
        if (cls->Schema() != schema)
            FailAt(at, what,
                   "class " + name + " stored with schema " + std::to_string(schema) + ", but schema " +
                       std::to_string(cls->Schema()) + " is the one this program reads");
        for (const ArchiveClass* known : loadedClasses)
            if (known->Name() == name) FailAt(at, what, "class " + name + " introduced twice");
        if (loadedClasses.size() >= ClassRecordTag::kMaxClassIndex)
            FailAt(at, what, "more than " + std::to_string(ClassRecordTag::kMaxClassIndex) + " classes");
        loadedClasses.push_back(cls);
        return *cls;
    }

    const ArchiveClass& IndexedClass(uint16_t tag, uint64_t at, std::string_view what) const {
        const uint16_t index = ClassRecordTag::IndexOf(tag);
        if (index == 0 && tag != ClassRecordTag::kIndexFlag) FailAt(at, what, "bad class tag " + Hex(tag));
        if (index == 0 || index > loadedClasses.size())
            FailAt(at, what,
                   "class index " + std::to_string(index) + " refers to no class (" +
                       std::to_string(loadedClasses.size()) + " introduced so far)");
        return *loadedClasses[index - 1u];
    }

    static std::string Hex(uint16_t value) {
        static constexpr char kHex[] = "0123456789ABCDEF";
        std::string text = "0x";
        for (int shift = 12; shift >= 0; shift -= 4) text += kHex[(value >> shift) & 15];
        return text;
    }

    IStream* base;  // borrowed
    ComPtr<BufferedStream> buffered;
    std::optional<StreamReader> reader;
    std::optional<StreamWriter> writer;
    std::vector<const ArchiveClass*> loadedClasses;             // by index - 1
    std::map<std::string, uint16_t, std::less<>> storedClasses;  // name -> index
    int nesting = 0;
    bool closed = false;
};

CArchive::CArchive(IStream* stream, Mode mode, size_t bufferSize)
    : mode_(mode), impl_(std::make_unique<Impl>(stream, mode, bufferSize)) {}

// A loading archive gives its read-ahead back too, so that the stream stands
// at Offset() for whoever reads on.
CArchive::~CArchive() {
    if (!impl_->closed) impl_->buffered->Flush();
}

uint64_t CArchive::Offset() const { return impl_->buffered->Position(); }

uint64_t CArchive::Remaining() const { return impl_->reader ? impl_->reader->Remaining() : 0; }

void CArchive::Flush() { impl_->Flush(); }

void CArchive::Close() {
    if (impl_->closed) return;
    impl_->Flush();
    impl_->closed = true;
}

// -- storing --

void CArchive::WriteInt32(int32_t value) { impl_->Writer().WriteInt32(value); }

void CArchive::WriteInt16(int16_t value) {
    const auto bits = static_cast<uint16_t>(value);
    const uint8_t bytes[2] = {static_cast<uint8_t>(bits), static_cast<uint8_t>(bits >> 8)};
    impl_->Writer().WriteBytes(bytes);
}

void CArchive::WriteUInt32(uint32_t value) { impl_->Writer().WriteColour(value); }

void CArchive::WriteBool(bool value) { impl_->Writer().WriteBool(value); }

void CArchive::WriteColor(uint32_t color) { impl_->Writer().WriteColour(color); }

void CArchive::WriteDouble(double value) { impl_->Writer().WriteDouble(value); }

void CArchive::WriteBytes(std::span<const uint8_t> bytes) { impl_->Writer().WriteBytes(bytes); }

void CArchive::WriteString(std::string_view text) { impl_->Writer().WriteString(text); }

// -- loading --

int32_t CArchive::ReadInt32(std::string_view what) {
    return impl_->Load([&](StreamReader& r) { return r.ReadInt32(what); });
}

int16_t CArchive::ReadInt16(std::string_view what) {
    uint8_t bytes[2];
    ReadBytes(bytes, what);
    return static_cast<int16_t>(bytes[0] | bytes[1] << 8);
}

uint32_t CArchive::ReadUInt32(std::string_view what) {
    return impl_->Load([&](StreamReader& r) { return r.ReadColour(what); });
}

bool CArchive::ReadBool(std::string_view what) {
    return impl_->Load([&](StreamReader& r) { return r.ReadBool(what); });
}

uint32_t CArchive::ReadColor(std::string_view what) {
    return impl_->Load([&](StreamReader& r) { return r.ReadColour(what); });
}

double CArchive::ReadDouble(std::string_view what) {
    return impl_->Load([&](StreamReader& r) { return r.ReadDouble(what); });
}

void CArchive::ReadBytes(std::span<uint8_t> bytes, std::string_view what) {
    impl_->Load([&](StreamReader& r) { r.ReadBytes(bytes, what); });
}

std::string CArchive::ReadString(std::string_view what) {
    return impl_->Load([&](StreamReader& r) { return r.ReadString(what); });
}

void CArchive::ExpectString(std::string_view marker) {
    const uint64_t at = Offset();
    const std::string what = Quoted(marker) + " marker";
    const std::string text = ReadString(what);
    if (text != marker) FailAt(at, what, "found " + Quoted(text) + " instead");
}

void CArchive::Require(uint64_t bytes, std::string_view what) const {
    if (bytes <= Remaining() || IsStoring()) return;
    Fail(what, "needs " + std::to_string(bytes) + " bytes but only " + std::to_string(Remaining()) + " remain");
}

void CArchive::Fail(std::string_view what, std::string_view fault) const { FailAt(Offset(), what, fault); }

// -- embedded objects --

void CArchive::WriteObject(IUnknown* object) {
    impl_->Writer();
    ComPtr<IPersistStream> persist;
    if (object) {
        const HRESULT hr = object->QueryInterface(IPersistStream::kIid, persist.ReleaseAndGetVoidAddress());
        // An object that cannot save itself is stored as no object.
        if (hr == E_NOINTERFACE)
            persist.Reset();
        else
            ThrowIfFailed(hr, IPersistStream::kIid, "asking an embedded object for its persistence failed");
    }
    impl_->Flush();
    ClearErrorInfo();
    const HRESULT hr = OleSaveToStream(persist.Get(), impl_->base);
    impl_->Resync();
    ThrowIfFailed(hr, IPersistStream::kIid, "saving an embedded object failed");
}

ComPtr<IUnknown> CArchive::ReadObject(std::string_view what) {
    impl_->Reader();
    impl_->Flush();
    ClearErrorInfo();
    ComPtr<IUnknown> object;
    const HRESULT hr = OleLoadFromStream(impl_->base, IID_IUnknown, object.ReleaseAndGetVoidAddress());
    impl_->Resync();
    if (FAILED(hr)) {
        std::string fault = TakeErrorInfo();
        if (fault.empty()) fault = "the embedded object failed to load: " + HResultText(hr);
        // The object's own description usually names the offset already.
        if (fault.find(" at offset ") == std::string::npos) fault += " at offset " + std::to_string(Offset());
        throw ArchiveError(std::string(what) + ": " + fault, Offset());
    }
    return object;
}

// -- class records --

void CArchive::WriteObjectRecord(const ArchiveObject* object) {
    impl_->Writer();
    if (!object) {
        WriteInt16(static_cast<int16_t>(ClassRecordTag::kNull));
        return;
    }
    const ArchiveClass& cls = object->GetRuntimeClass();
    auto& stored = impl_->storedClasses;
    if (const auto it = stored.find(cls.Name()); it != stored.end()) {
        WriteInt16(static_cast<int16_t>(ClassRecordTag::ForIndex(it->second)));
    } else {
        if (stored.size() >= ClassRecordTag::kMaxClassIndex)
            throw std::length_error("an archive holds at most " + std::to_string(ClassRecordTag::kMaxClassIndex) +
                                    " classes");
        WriteInt16(static_cast<int16_t>(ClassRecordTag::kNewClass));
        WriteUInt32(cls.Schema());
        WriteString(cls.Name());
        stored.emplace(cls.Name(), static_cast<uint16_t>(stored.size() + 1));
    }
    // One Serialize serves both directions; storing leaves the object as it is.
    const_cast<ArchiveObject*>(object)->Serialize(*this);
}

std::unique_ptr<ArchiveObject> CArchive::ReadObjectRecord(std::string_view what) {
    const uint64_t at = Offset();
    const auto tag = static_cast<uint16_t>(ReadInt16(Named(what, "class tag")));
    if (tag == ClassRecordTag::kNull) return nullptr;
    const ArchiveClass& cls =
        tag == ClassRecordTag::kNewClass ? impl_->NewClass(*this, at, what) : impl_->IndexedClass(tag, at, what);
    if (impl_->nesting >= kMaxNesting)
        FailAt(at, what, "records nested more than " + std::to_string(kMaxNesting) + " deep");
    std::unique_ptr<ArchiveObject> object = cls.Create();
    if (!object) FailAt(at, what, "class " + cls.Name() + " made no object");
    Nesting nesting(impl_->nesting);
    object->Serialize(*this);
    return object;
}

}  // namespace vexplot
