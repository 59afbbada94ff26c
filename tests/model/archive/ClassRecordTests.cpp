// Class records and the control's object list.
#include <gtest/gtest.h>

#include <string>

#include "ArchiveSupport.h"
#include "model/CGD_ObjectList.h"

namespace vexplot::test {
namespace {

class ClassRecords : public ::testing::Test {
protected:
    void SetUp() override { RegisterTestClasses(); }

    // A new-class record's head, by hand.
    static void AppendNewClass(Bytes& out, std::string_view name, uint32_t schema = 1) {
        AppendUInt16(out, 0xFFFF);
        AppendInt32(out, static_cast<int32_t>(schema));
        AppendShortString(out, name);
    }
};

// Loading these back is the object list's round trip below.
TEST_F(ClassRecords, AClassIsIntroducedOnceAndThenReferredToByIndex) {
    const TestPoint a(1, 2), b(3, 4), c(5, 6);
    const TestEmpty empty;
    const Bytes bytes = Stored([&](CArchive& ar) {
        ar.WriteObjectRecord(&a);
        ar.WriteObjectRecord(&b);
        ar.WriteObjectRecord(nullptr);
        ar.WriteObjectRecord(&empty);
        ar.WriteObjectRecord(&c);
        ar.WriteObjectRecord(&empty);
    });

    Bytes expected;
    AppendNewClass(expected, "test.Point");
    AppendInt32(expected, 1);
    AppendInt32(expected, 2);
    Append(expected, {0x01, 0x80});
    AppendInt32(expected, 3);
    AppendInt32(expected, 4);
    Append(expected, {0x00, 0x00});
    AppendNewClass(expected, "test.Empty");
    Append(expected, {0x01, 0x80});
    AppendInt32(expected, 5);
    AppendInt32(expected, 6);
    Append(expected, {0x02, 0x80});
    EXPECT_EQ(bytes, expected);
}

TEST_F(ClassRecords, MalformedRecordsAreRefusedWhereTheyBegin) {
    Bytes point;  // one valid record of test.Point, 22 bytes
    AppendNewClass(point, "test.Point");
    AppendInt32(point, 1);
    AppendInt32(point, 2);

    struct Case {
        const char* name;
        Bytes bytes;
        uint64_t offset;
        std::string fault;
    };
    std::vector<Case> cases;
    auto add = [&](const char* name, const Bytes& head, Bytes tail, const std::string& fault) {
        Bytes bytes = head;
        bytes.insert(bytes.end(), tail.begin(), tail.end());
        cases.push_back({name, bytes, head.size(), fault});
    };
    Bytes unknown, wrongSchema, twice;
    AppendNewClass(unknown, "test.Nope");
    AppendNewClass(wrongSchema, "test.Point", 2);
    AppendNewClass(twice, "test.Point");
    add("unknown class", {}, unknown, "unknown class \"test.Nope\"");
    add("wrong schema", {}, wrongSchema, "class test.Point stored with schema 2, but schema 1");
    add("tag of no kind", {}, {0x01, 0x00}, "bad class tag 0x0001");
    add("tag of no kind, high", {}, {0xFE, 0x7F}, "bad class tag 0x7FFE");
    add("index 0", point, {0x00, 0x80}, "class index 0 refers to no class (1 introduced so far)");
    add("index never introduced", point, {0x02, 0x80}, "class index 2 refers to no class");
    add("index before any class", {}, {0x01, 0x80}, "class index 1 refers to no class (0 introduced so far)");
    add("class introduced twice", point, twice, "class test.Point introduced twice");

    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const ArchiveError e = LoadError(c.bytes, [](CArchive& ar) {
            while (ar.Remaining() > 0) ar.ReadObjectRecord("entry");
        });
        const std::string message = e.what();
        EXPECT_EQ(message.rfind("entry: ", 0), 0u) << message;
        EXPECT_NE(message.find(c.fault), std::string::npos) << message;
        EXPECT_EQ(e.Offset(), c.offset);
    }
}

TEST_F(ClassRecords, NestingIsBoundedOnLoad) {
    // Each level costs two bytes once the class is known, so hostile input
    // could otherwise nest as deep as its size allows.
    auto chain = [](int depth) {
        auto top = std::make_unique<TestNest>();
        TestNest* at = top.get();
        for (int i = 1; i < depth; ++i) {
            at->inner = std::make_unique<TestNest>();
            at = static_cast<TestNest*>(at->inner.get());
        }
        return top;
    };
    const auto shallow = chain(64);
    Loaded(Stored([&](CArchive& ar) { ar.WriteObjectRecord(shallow.get()); }),
           [](CArchive& ar) { EXPECT_NE(ar.ReadObjectRecord("nest"), nullptr); });

    const auto deep = chain(200);
    const ArchiveError e = LoadError(Stored([&](CArchive& ar) { ar.WriteObjectRecord(deep.get()); }),
                                     [](CArchive& ar) { ar.ReadObjectRecord("nest"); });
    EXPECT_NE(std::string(e.what()).find("nested more than 64 deep"), std::string::npos) << e.what();
}

class ObjectList : public ClassRecords {
protected:
    static Bytes StoredList(CGD_ObjectList& list) {
        return Stored([&](CArchive& ar) { list.Serialize(ar); });
    }
    // Two classes, each referred to by its index once introduced.
    static void Fill(CGD_ObjectList& list) {
        list.Add(std::make_unique<TestPoint>(1, 2));
        list.Add(std::make_unique<TestEmpty>());
        list.Add(std::make_unique<TestPoint>(-3, 4));
        list.Add(std::make_unique<TestEmpty>());
    }
};

TEST_F(ObjectList, RoundTripsByteForByte) {
    CGD_ObjectList list;
    Fill(list);
    const Bytes bytes = StoredList(list);
    EXPECT_EQ(Int32At(bytes, 0), 4);

    CGD_ObjectList loaded;
    loaded.Add(std::make_unique<TestEmpty>());  // replaced, not kept
    Loaded(bytes, [&](CArchive& ar) {
        loaded.Serialize(ar);
        EXPECT_EQ(ar.Remaining(), 0u);
    });
    ASSERT_EQ(loaded.Count(), 4);
    EXPECT_NE(dynamic_cast<TestEmpty*>(loaded.At(3)), nullptr);
    EXPECT_EQ(StoredList(loaded), bytes);
    const std::vector<ArchiveObject*> points = loaded.ObjectsOf("test.Point");
    ASSERT_EQ(points.size(), 2u);
    EXPECT_EQ(static_cast<TestPoint*>(points[1])->x, -3);
    EXPECT_EQ(loaded.IndexOf(points[1]), 2);
}

TEST_F(ObjectList, AFailedLoadKeepsTheOldContents) {
    CGD_ObjectList source;
    Fill(source);
    const Bytes good = StoredList(source);

    Bytes negative, tooMany, withNull;
    AppendInt32(negative, -1);
    AppendInt32(tooMany, 3);
    Append(tooMany, {0, 0, 0, 0});  // two bytes short of three records
    AppendInt32(withNull, 1);
    Append(withNull, {0, 0});
    struct Case {
        const char* name;
        Bytes bytes;
        std::string fault;
    };
    std::vector<Case> cases{
        {"negative count", negative, "object count: is negative (-1)"},
        {"count beyond the bytes", tooMany, "object records: needs 6 bytes but only 4 remain"},
        {"null entry", withNull, "object 1 of 1: is the null object"},
    };
    for (size_t cut = 0; cut < good.size(); ++cut)
        cases.push_back({"cut", Bytes(good.begin(), good.begin() + static_cast<ptrdiff_t>(cut)), ""});

    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.name) + " of " + std::to_string(c.bytes.size()) + " bytes");
        CGD_ObjectList list;
        ArchiveObject& kept = list.Add(std::make_unique<TestPoint>(9, 9));
        const ArchiveError e = LoadError(c.bytes, [&](CArchive& ar) { list.Serialize(ar); });
        EXPECT_NE(std::string(e.what()).find(c.fault), std::string::npos) << e.what();
        ASSERT_EQ(list.Count(), 1);
        EXPECT_EQ(list.At(0), &kept);
    }
}

}  // namespace
}  // namespace vexplot::test
