#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "com/Variant.h"
#include "TestSupport.h"

namespace vexplot {
namespace {

// Calls Invoke with natural-order arguments (reversed here, as automation
// passes them) and, for puts, the value as the named DISPID_PROPERTYPUT.
struct Call {
    HRESULT hr = S_OK;
    Variant result;
    ExcepInfo excep;
    uint32_t argErr = 99;
};

Call Invoke(IDispatch& d, DISPID id, uint16_t flags, std::vector<Variant> args) {
    Call call;
    std::reverse(args.begin(), args.end());
    const DISPID putName = DISPID_PROPERTYPUT;
    const bool put = (flags & DISPATCH_PROPERTYPUT) != 0;
    DispParams params{args.data(), put ? &putName : nullptr, static_cast<uint32_t>(args.size()), put ? 1u : 0u};
    call.hr = d.Invoke(id, GUID_NULL, 0, flags, &params, &call.result, &call.excep, &call.argErr);
    return call;
}

DISPID IdOf(IDispatch& d, const char* name) {
    DISPID id = 0;
    EXPECT_EQ(d.GetIDsOfNames(GUID_NULL, &name, 1, 0, &id), S_OK) << name;
    return id;
}

TEST(GraphDispatchTest, NamesMatchCaseInsensitively) {
    ComPtr<GraphDataObject> object = MakeComObject<GraphDataObject>();
    EXPECT_EQ(IdOf(*object, "data"), IdOf(*object, "DATA"));
    const char* names[] = {"Value", "row"};
    DISPID ids[2] = {};
    EXPECT_EQ(object->GetIDsOfNames(GUID_NULL, names, 2, 0, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[0], IdOf(*object, "value"));
    EXPECT_EQ(ids[1], DISPID_UNKNOWN);
    const char* unknown = "Nonsense";
    EXPECT_EQ(object->GetIDsOfNames(GUID_NULL, &unknown, 1, 0, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[0], DISPID_UNKNOWN);
}

TEST(GraphDispatchTest, PropertyGetsAnswerWithTheObjectsValuesAndPutsReachIt) {
    ComPtr<GraphDataObject> object = test::FilledObject();  // 3 x 2, value(ix, iy) = 10 ix + iy
    object->PutValue(0, 0, -4.0);
    IDispatch& d = *object;
    const auto get = [&](const char* name, std::vector<Variant> args = {}) {
        Call c = Invoke(d, IdOf(d, name), DISPATCH_PROPERTYGET | DISPATCH_METHOD, std::move(args));
        EXPECT_EQ(c.hr, S_OK) << name;
        return c.result;
    };
    EXPECT_EQ(get("XCount").I4(), 3);
    EXPECT_EQ(get("YCount").I4(), 2);
    EXPECT_EQ(get("ZMin").R8(), -4.0);
    EXPECT_EQ(get("ZMax").R8(), 21.0);
    EXPECT_EQ(get("Value", {Variant(int32_t{2}), Variant(int16_t{1})}).R8(), 21.0);
    EXPECT_EQ(get("Value", {Variant("1"), Variant(0.0)}).R8(), 10.0) << "arguments convert";
    EXPECT_EQ(get("XLabel").Bstr(), "x");
    EXPECT_EQ(get("ZLabel").Bstr(), "z");
    EXPECT_EQ(get("Name").Bstr(), "original");
    EXPECT_EQ(test::ValuesOf(get("YScale").Array()), (std::vector<double>{5, 7}));
    SafeArray grid;
    object->GetData(&grid);
    EXPECT_TRUE(get("Data").Array().SharesStorageWith(grid));
    EXPECT_EQ(get("State").I4(), object->GetState());

    const auto put = [&](const char* name, std::vector<Variant> args) {
        EXPECT_EQ(Invoke(d, IdOf(d, name), DISPATCH_PROPERTYPUT, std::move(args)).hr, S_OK) << name;
    };
    put("YLabel", {Variant("depth")});
    put("Value", {Variant(int32_t{1}), Variant(int32_t{0}), Variant(2.5)});
    put("XScale", {Variant(SafeArray::FromValues(std::vector<double>{1, 2, 3}))});
    const test::Snapshot s = test::Capture(*object);
    EXPECT_EQ(s.yLabel, "depth");
    EXPECT_EQ(s.grid[1 * 2 + 0], 2.5);  // cell (1, 0)
    EXPECT_EQ(s.xScale, (std::vector<double>{1, 2, 3}));
}

TEST(GraphDispatchTest, ErrorsAreTheOnesAutomationClientsExpect) {
    ComPtr<GraphDataObject> object = test::FilledObject();
    IDispatch& d = *object;
    const DISPID value = IdOf(d, "Value"), xLabel = IdOf(d, "XLabel"), xCount = IdOf(d, "XCount");
    const uint16_t get = DISPATCH_PROPERTYGET, put = DISPATCH_PROPERTYPUT;
    struct Case {
        const char* name;
        DISPID id;
        uint16_t flags;
        std::vector<Variant> args;
        HRESULT expected;
    };
    const Case cases[] = {
        {"unknown dispid", 999, get, {}, DISP_E_MEMBERNOTFOUND},
        {"put of read-only", xCount, put, {Variant(int32_t{4})}, DISP_E_MEMBERNOTFOUND},
        {"get with an argument", xLabel, get, {Variant(int32_t{1})}, DISP_E_BADPARAMCOUNT},
        {"Value with one index", value, get, {Variant(int32_t{1})}, DISP_E_BADPARAMCOUNT},
        {"put without value", xLabel, put, {}, DISP_E_BADPARAMCOUNT},
        {"index not a number", value, get, {Variant("row"), Variant(int32_t{0})}, DISP_E_TYPEMISMATCH},
        {"array for a label", xLabel, put, {Variant(SafeArray::Create1D(1))}, DISP_E_TYPEMISMATCH},
        {"text for the data", IdOf(d, "Data"), put, {Variant("grid")}, DISP_E_TYPEMISMATCH},
        {"cell outside", value, get, {Variant(int32_t{3}), Variant(int32_t{0})}, DISP_E_EXCEPTION},
        {"scale too long", IdOf(d, "XScale"), put, {Variant(SafeArray::Create1D(9))}, DISP_E_EXCEPTION},
    };
    const test::Snapshot before = test::Capture(*object);
    for (const Case& c : cases) {
        const Call call = Invoke(d, c.id, c.flags, c.args);
        EXPECT_EQ(call.hr, c.expected) << c.name;
    }
    EXPECT_EQ(test::Capture(*object), before);

    const Call mismatch = Invoke(d, value, get, {Variant(int32_t{0}), Variant("column")});
    EXPECT_EQ(mismatch.argErr, 0u) << "the failing argument's position in the reversed array";
    const Call outside = Invoke(d, value, get, {Variant(int32_t{3}), Variant(int32_t{0})});
    EXPECT_EQ(outside.excep.scode, DISP_E_BADINDEX);
    EXPECT_NE(std::string(outside.excep.description).find("outside the grid"), std::string::npos);

    Variant arg = Variant(int32_t{1});
    DispParams named{&arg, &xCount, 1, 1};  // a named argument on a get
    EXPECT_EQ(d.Invoke(xLabel, GUID_NULL, 0, get, &named, nullptr, nullptr, nullptr), DISP_E_NONAMEDARGS);
    DispParams bare{nullptr, nullptr, 0, 0};
    EXPECT_EQ(d.Invoke(value, GUID_NULL, 0, get, &bare, nullptr, nullptr, nullptr), DISP_E_BADPARAMCOUNT);
    Variant row = Variant(int32_t{5}), column = Variant(int32_t{0});
    Variant reversed[] = {column, row};
    DispParams noExcep{reversed, nullptr, 2, 0};
    EXPECT_EQ(d.Invoke(value, GUID_NULL, 0, get, &noExcep, nullptr, nullptr, nullptr), DISP_E_BADINDEX)
        << "without ExcepInfo the property's own code";
}

}  // namespace
}  // namespace vexplot
