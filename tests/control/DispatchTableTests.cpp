#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <string>

#include "ControlFixture.h"
#include "automation/DispatchCall.h"
#include "automation/DispatchTable.h"
#include "com/ComError.h"

namespace vexplot::test {
namespace {

// The table's own rules (lookup, argument checks, coercion, out values,
// errors) on a small table of test members, so that they are checked apart
// from what any real member does.
class DispatchTableTest : public ControlFixture {
protected:
    void SetUp() override {
        Construct();
        table.AddMethod(DispatchInterface::Ex, 10, "Twice", VT_I4, {{"n", VT_I4}}, [this](CUI_VexplotCtrl&, DispatchCall& c) {
            lastArg = c.I4(0);
            c.Return(Variant(c.I4(0) * 2));
            return S_OK;
        });
        table.AddMethod(DispatchInterface::Legacy, 11, "Split", VT_BOOL,
                        {{"value", VT_R8}, {"whole", VT_I4, true}, {"rest", VT_R8, true}},
                        [](CUI_VexplotCtrl&, DispatchCall& c) {
                            const double v = c.R8(0);
                            c.Out(1, Variant(static_cast<int32_t>(v)));
                            c.Out(2, Variant(v - static_cast<int32_t>(v)));
                            c.Return(Variant::Bool(true));
                            return S_OK;
                        });
        table.AddProperty(
            12, "Label", VT_BSTR,
            [this](CUI_VexplotCtrl&, DispatchCall& c) {
                c.Return(Variant(label));
                return S_OK;
            },
            [this](CUI_VexplotCtrl&, DispatchCall& c) {
                label = c.Bstr(0);
                return S_OK;
            },
            "label");
        table.AddProperty(13, "Fixed", VT_I2, [](CUI_VexplotCtrl&, DispatchCall& c) {
            c.Return(Variant(int16_t{7}));
            return S_OK;
        }, {});
        table.AddMethod(DispatchInterface::Ex, 14, "Fails", VT_EMPTY, {}, [](CUI_VexplotCtrl&, DispatchCall&) -> HRESULT {
            throw ComError(E_ACCESSDENIED, GUID_NULL, "the data object is locked");
        });
        table.AddMethod(DispatchInterface::Ex, 15, "Exhausted", VT_EMPTY, {}, [](CUI_VexplotCtrl&, DispatchCall&) -> HRESULT {
            throw std::bad_alloc();
        });
    }

    // Invoke with arguments in natural order.
    HRESULT Call(DISPID id, uint16_t flags, std::vector<Variant> args, Variant* result = nullptr) {
        std::vector<Variant> reversed(args.rbegin(), args.rend());
        DispParams p{reversed.data(), nullptr, static_cast<uint32_t>(reversed.size()), 0};
        argErr = 99;
        excep = ExcepInfo{};
        return table.Invoke(*control, id, flags, &p, result, &excep, &argErr);
    }

    DispatchTable table;
    int32_t lastArg = 0;
    std::string label = "start";
    uint32_t argErr = 99;
    ExcepInfo excep;
};

TEST_F(DispatchTableTest, NamesResolveCaseInsensitivelyAndUnknownNamesAreReported) {
    EXPECT_EQ(table.FindName("twice")->id, 10);
    EXPECT_EQ(table.FindName("LABEL")->typelibName, "label");
    EXPECT_EQ(table.FindName("Split")->typelibName, "Split");  // no own type-library name
    EXPECT_EQ(table.FindName("Nothing"), nullptr);

    const char* names[] = {"Twice", "n"};
    DISPID ids[2] = {0, 0};
    // A member name with a parameter name: no member takes named arguments.
    EXPECT_EQ(table.GetIDsOfNames(names, 2, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[0], 10);
    EXPECT_EQ(ids[1], DISPID_UNKNOWN);
    EXPECT_THROW(table.AddMethod(DispatchInterface::Ex, 10, "Again", VT_EMPTY, {}, {}), std::logic_error);
}

TEST_F(DispatchTableTest, ArgumentsAreCheckedAndCoercedAsAutomationClientsExpect) {
    Variant result;
    EXPECT_EQ(Call(10, DISPATCH_METHOD, {Variant("21")}, &result), S_OK);  // text to number
    EXPECT_EQ(result.I4(), 42);
    EXPECT_EQ(Call(10, DISPATCH_METHOD, {Variant(2.5)}, &result), S_OK);  // rounds half to even
    EXPECT_EQ(lastArg, 2);
    EXPECT_EQ(Call(10, DISPATCH_METHOD, {Variant("many")}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(argErr, 0u);
    EXPECT_EQ(Call(10, DISPATCH_METHOD, {}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(Call(10, DISPATCH_METHOD, {Variant(1), Variant(2)}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(Call(99, DISPATCH_METHOD, {}), DISP_E_MEMBERNOTFOUND);
    // A method is no property to put, and a read-only property takes no put.
    EXPECT_EQ(Call(10, DISPATCH_PROPERTYPUT, {Variant(1)}), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(Call(13, DISPATCH_PROPERTYPUT, {Variant(int16_t{1})}), DISP_E_MEMBERNOTFOUND);
    // Named arguments other than the put value are refused.
    Variant arg(1);
    const DISPID named = 0;
    DispParams p{&arg, &named, 1, 1};
    EXPECT_EQ(table.Invoke(*control, 10, DISPATCH_METHOD, &p, nullptr, nullptr, nullptr), DISP_E_NONAMEDARGS);
}

TEST_F(DispatchTableTest, OutParametersNeedStorageAndReceiveConvertedValues) {
    int32_t whole = 0;
    Variant rest;  // a reference to a Variant, as script clients pass
    Variant result;
    ASSERT_EQ(Call(11, DISPATCH_METHOD, {Variant(3.25), Variant::Ref(&whole), Variant::Ref(&rest)}, &result), S_OK);
    EXPECT_TRUE(result.BoolValue());
    EXPECT_EQ(whole, 3);
    EXPECT_DOUBLE_EQ(rest.R8(), 0.25);
    // A plain value where the member writes a result: the argument's slot
    // as passed (reversed) is reported.
    EXPECT_EQ(Call(11, DISPATCH_METHOD, {Variant(3.25), Variant(0), Variant::Ref(&rest)}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(argErr, 1u);
}

TEST_F(DispatchTableTest, PropertiesGetAndPutThroughTheirHandlers) {
    Variant result;
    ASSERT_EQ(Call(12, DISPATCH_PROPERTYPUT, {Variant(12.5)}), S_OK);  // a number put into a text property
    EXPECT_EQ(label, "12.5");
    ASSERT_EQ(Call(12, DISPATCH_PROPERTYGET, {}, &result), S_OK);
    EXPECT_EQ(result.Bstr(), "12.5");
    EXPECT_EQ(Call(12, DISPATCH_PROPERTYGET, {Variant(1)}), DISP_E_BADPARAMCOUNT);
    // The put value may come as the named DISPID_PROPERTYPUT argument.
    Variant value("named");
    const DISPID putId = DISPID_PROPERTYPUT;
    DispParams p{&value, &putId, 1, 1};
    EXPECT_EQ(table.Invoke(*control, 12, DISPATCH_PROPERTYPUT, &p, nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(label, "named");
}

TEST_F(DispatchTableTest, FailuresOfTheMemberBecomeExceptionsWithTheirCodeAndText) {
    EXPECT_EQ(Call(14, DISPATCH_METHOD, {}), DISP_E_EXCEPTION);
    EXPECT_EQ(excep.scode, E_ACCESSDENIED);
    EXPECT_STREQ(excep.description, "the data object is locked");
    EXPECT_EQ(Call(15, DISPATCH_METHOD, {}), DISP_E_EXCEPTION);
    EXPECT_EQ(excep.scode, E_OUTOFMEMORY);
    EXPECT_NE(std::strstr(excep.description, "Exhausted"), nullptr);
    // Without an ExcepInfo the client gets the member's own code.
    EXPECT_EQ(table.Invoke(*control, 14, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr), E_ACCESSDENIED);
}

}  // namespace
}  // namespace vexplot::test
