#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "com/Variant.h"

namespace vexplot {
namespace {

struct Conversion {
    Variant from;
    VARTYPE to;
    HRESULT hr;
    double expected;  // numeric value of the result when hr succeeds
};

double AsDouble(const Variant& v) {
    switch (v.Type()) {
        case VT_I2:
        case VT_BOOL: return v.I2();
        case VT_I4: return v.I4();
        case VT_R4: return v.R4();
        case VT_R8: return v.R8();
        default: return std::nan("");
    }
}

TEST(Variant, NumericConversionsRoundHalfToEvenAndReportOverflow) {
    const Conversion table[] = {
        {Variant(2.5), VT_I4, S_OK, 2},
        {Variant(3.5), VT_I4, S_OK, 4},
        {Variant(-2.5), VT_I2, S_OK, -2},
        {Variant(32767.4), VT_I2, S_OK, 32767},
        {Variant(32767.6), VT_I2, DISP_E_OVERFLOW, 0},
        {Variant(int32_t{70000}), VT_I2, DISP_E_OVERFLOW, 0},
        {Variant(3e9), VT_I4, DISP_E_OVERFLOW, 0},
        {Variant(std::nan("")), VT_I4, DISP_E_OVERFLOW, 0},
        {Variant(1e300), VT_R4, DISP_E_OVERFLOW, 0},
        {Variant(int16_t{-7}), VT_R8, S_OK, -7},
        {Variant(0.0), VT_BOOL, S_OK, 0},
        {Variant(0.1), VT_BOOL, S_OK, VARIANT_TRUE},
        {Variant::Bool(true), VT_I4, S_OK, -1},
        {Variant(), VT_I4, S_OK, 0},
        {Variant(" 12.5 "), VT_R8, S_OK, 12.5},
        {Variant("+4"), VT_I4, S_OK, 4},
        {Variant("1e999"), VT_R8, DISP_E_OVERFLOW, 0},
        {Variant("12abc"), VT_I4, DISP_E_TYPEMISMATCH, 0},
        {Variant(""), VT_I4, DISP_E_TYPEMISMATCH, 0},
        {Variant(SafeArray::Create1D(2)), VT_R8, DISP_E_TYPEMISMATCH, 0},
    };
    for (const Conversion& c : table) {
        Variant out;
        EXPECT_EQ(c.from.ChangeType(c.to, &out), c.hr) << "from vt " << c.from.Type() << " to " << c.to;
        if (SUCCEEDED(c.hr)) {
            EXPECT_EQ(out.Type(), c.to);
            EXPECT_EQ(AsDouble(out), c.expected);
        }
    }
}

TEST(Variant, TextConversions) {
    for (const auto& [from, text] : {std::pair{Variant(int32_t{-12}), "-12"}, std::pair{Variant(0.1), "0.1"},
                                     std::pair{Variant::Bool(true), "-1"}}) {
        Variant out;
        ASSERT_EQ(from.ChangeType(VT_BSTR, &out), S_OK) << text;
        EXPECT_EQ(out.Bstr(), text);
    }
}

TEST(Variant, ByReferenceFormsReadAndWriteTheCallersStorage) {
    double d = 1.5;
    int32_t i = 0;
    std::string s;
    VARIANT_BOOL b = VARIANT_FALSE;
    SafeArray a;
    Variant inner;

    EXPECT_EQ(Variant::Ref(&d).Deref().R8(), 1.5);
    EXPECT_EQ(Variant::Ref(&i).AssignThroughRef(Variant(2.5)), S_OK);
    EXPECT_EQ(i, 2);
    EXPECT_EQ(Variant::Ref(&s).AssignThroughRef(Variant(int16_t{5})), S_OK);
    EXPECT_EQ(s, "5");
    EXPECT_EQ(Variant::BoolRef(&b).AssignThroughRef(Variant(int32_t{3})), S_OK);
    EXPECT_EQ(b, VARIANT_TRUE);
    EXPECT_EQ(Variant::Ref(&a).AssignThroughRef(Variant(SafeArray::Create1D(3, 1))), S_OK);
    EXPECT_EQ(a.UpperBound(0), 3);
    EXPECT_EQ(Variant::Ref(&inner).AssignThroughRef(Variant::Ref(&d)), S_OK);
    EXPECT_EQ(inner.Type(), VT_R8);  // a reference is stored as the value it points at

    EXPECT_EQ(Variant::Ref(&i).AssignThroughRef(Variant("x")), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(i, 2);  // a failed store leaves the target alone
    EXPECT_EQ(Variant(1.0).AssignThroughRef(Variant(2.0)), E_INVALIDARG);

    int16_t v = 9;  // ChangeType dereferences first
    ASSERT_EQ(Variant::Ref(&v).ChangeType(VT_R8, &inner), S_OK);
    EXPECT_EQ(inner.R8(), 9.0);
}

TEST(Variant, MissingArgumentIsAnError) {
    EXPECT_TRUE(Variant::Missing().IsMissing());
    EXPECT_FALSE(Variant::Error(E_FAIL).IsMissing());
    EXPECT_FALSE(Variant().IsMissing());
}

}  // namespace
}  // namespace vexplot
