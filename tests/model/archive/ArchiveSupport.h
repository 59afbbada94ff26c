#pragma once
// Shared by the archive tests: archives over memory, bytes built by hand
// (independently of the writer), small registered test classes and a
// stream whose device fails on demand.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "com/ComObject.h"
#include "com/IPersist.h"
#include "com/MemoryStream.h"
#include "model/ArchiveClass.h"
#include "model/ArchiveError.h"
#include "model/ArchiveObject.h"
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
    out.insert(out.end(), text.begin(), text.end());
}
inline int32_t Int32At(const Bytes& bytes, size_t at) {
    uint32_t v = 0;
    for (int i = 0; i < 4; ++i) v |= uint32_t{bytes[at + static_cast<size_t>(i)]} << (8 * i);
    return static_cast<int32_t>(v);
}
inline void PutInt32At(Bytes& bytes, size_t at, int32_t value) {
    for (int i = 0; i < 4; ++i) bytes[at + static_cast<size_t>(i)] = static_cast<uint8_t>(static_cast<uint32_t>(value) >> (8 * i));
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

// -- test classes --

// Two ints: the common case of a record with fields.
class TestPoint final : public ArchiveObject {
public:
    static const ArchiveClass& Class() {
        static const ArchiveClass cls("test.Point", 1, [] { return std::make_unique<TestPoint>(); });
        return cls;
    }
    TestPoint(int32_t px = 0, int32_t py = 0) : x(px), y(py) {}
    const ArchiveClass& GetRuntimeClass() const override { return Class(); }
    void Serialize(CArchive& archive) override {
        if (archive.IsStoring()) {
            archive.WriteInt32(x);
            archive.WriteInt32(y);
        } else {
            x = archive.ReadInt32("point x");
            y = archive.ReadInt32("point y");
        }
    }
    int32_t x, y;
};

// No fields at all, as some annotations store.
class TestEmpty final : public ArchiveObject {
public:
    static const ArchiveClass& Class() {
        static const ArchiveClass cls("test.Empty", 1, [] { return std::make_unique<TestEmpty>(); });
        return cls;
    }
    const ArchiveClass& GetRuntimeClass() const override { return Class(); }
    void Serialize(CArchive&) override {}
};

// Holds another object's record inside its own: nesting.
class TestNest final : public ArchiveObject {
public:
    static const ArchiveClass& Class() {
        static const ArchiveClass cls("test.Nest", 1, [] { return std::make_unique<TestNest>(); });
        return cls;
    }
    const ArchiveClass& GetRuntimeClass() const override { return Class(); }
    void Serialize(CArchive& archive) override {
        if (archive.IsStoring())
            archive.WriteObjectRecord(inner.get());
        else
            inner = archive.ReadObjectRecord("nested object");
    }
    std::unique_ptr<ArchiveObject> inner;
};

inline void RegisterTestClasses() {
    ArchiveClass::Register(TestPoint::Class());
    ArchiveClass::Register(TestEmpty::Class());
    ArchiveClass::Register(TestNest::Class());
}

// -- streams and objects that misbehave --

// A memory stream whose Read and Write fail with `fault` once `limit`
// bytes have passed, as a failing disk does.
class FailingStream final : public ComObject<IStream> {
public:
    FailingStream(Bytes bytes, uint64_t limit, HRESULT fault)
        : inner_(MakeComObject<MemoryStream>(std::move(bytes))), limit_(limit), fault_(fault) {}

    HRESULT Read(void* buffer, uint32_t size, uint32_t* read) override {
        if (passed_ + size > limit_) return fault_;
        passed_ += size;
        return inner_->Read(buffer, size, read);
    }
    HRESULT Write(const void* buffer, uint32_t size, uint32_t* written) override {
        if (passed_ + size > limit_) return fault_;
        passed_ += size;
        return inner_->Write(buffer, size, written);
    }
    HRESULT Seek(int64_t move, uint32_t origin, uint64_t* position) override {
        return inner_->Seek(move, origin, position);
    }
    HRESULT SetSize(uint64_t size) override { return inner_->SetSize(size); }
    HRESULT Commit(uint32_t flags) override { return inner_->Commit(flags); }
    HRESULT Stat(uint64_t* size) override { return inner_->Stat(size); }

private:
    ~FailingStream() override = default;

    ComPtr<MemoryStream> inner_;
    uint64_t limit_;
    uint64_t passed_ = 0;
    HRESULT fault_;
};

// An object whose request for IPersistStream answers `answer`.
class PersistQuery final : public ComObject<IRunnableObject> {
public:
    explicit PersistQuery(HRESULT answer) : answer_(answer) {}
    HRESULT QueryInterface(const IID& iid, void** out) override {
        if (iid != IPersistStream::kIid) return ComObject::QueryInterface(iid, out);
        if (out) *out = nullptr;
        return answer_;
    }
    HRESULT Run() override { return S_OK; }

private:
    ~PersistQuery() override = default;
    HRESULT answer_;
};

}  // namespace vexplot::test
