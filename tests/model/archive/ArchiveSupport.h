#pragma once
// Shared by the archive tests: small registered test classes, a fixture for
// tests with data objects and an object that will not save itself.
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "com/ComObject.h"
#include "com/IPersist.h"
#include "dataobject/GraphDataClass.h"
#include "model/ArchiveClass.h"
#include "model/ArchiveObject.h"
#include "support/ArchiveBytes.h"

namespace vexplot::test {

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

// For tests that make or load data objects: the real data object's class
// is registered, and a class that is not makes the registry look in a
// settings store in memory, never the user's own.
class GraphDataTest : public ::testing::Test {
protected:
    void SetUp() override {
        setenv("VEXPLOT_REGISTRY", ":memory:", 1);
        RegisterGraphDataClass();
    }
};

// -- streams and objects that misbehave --

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
