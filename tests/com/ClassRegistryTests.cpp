#include <gtest/gtest.h>

#include "TestPlugin.h"
#include "com/ClassFactory.h"
#include "com/ClassRegistry.h"
#include "com/IPersist.h"
#include "settings/CRegistryKey.h"

namespace vexplot {
namespace {

using testing::CLSID_TestPlugin;
using testing::ITestCounter;

constexpr CLSID kBuiltIn = GUID::FromLiteral("{A1A1A1A1-0000-4000-8000-000000000001}");
constexpr IID kOther = GUID::FromLiteral("{A1A1A1A1-0000-4000-8000-000000000002}");

class Runnable final : public ComObject<ITestCounter, IRunnableObject> {
public:
    int32_t Next() override { return running_ ? 1 : 0; }
    HRESULT Run() override {
        running_ = true;
        return S_OK;
    }

private:
    bool running_ = false;
};

class ClassRegistryTest : public ::testing::Test {
protected:
    void SetUp() override {
        ClassRegistry::Instance().Register(kBuiltIn, MakeComObject<ClassFactory<Runnable>>(), CLSCTX_INPROC_SERVER);
    }
    void TearDown() override { ClassRegistry::Instance().Revoke(kBuiltIn); }

    static void RegisterPlugin(const std::string& path) {
        CRegistryKey key;
        ASSERT_NE(key.OpenUnder(RootKey::CurrentUser, InprocServerKey(CLSID_TestPlugin)), 0);
        key.WriteString("", path);
    }
};

TEST_F(ClassRegistryTest, BuiltInClassIsCreatedInItsContextOnly) {
    HRESULT hr = E_FAIL;
    auto counter = CreateInstance<ITestCounter>(kBuiltIn, CLSCTX_ALL, &hr);
    ASSERT_TRUE(counter) << HResultText(hr);
    EXPECT_EQ(counter->Next(), 0);
    EXPECT_EQ(OleRun(counter.Get()), S_OK);
    EXPECT_EQ(counter->Next(), 1);

    EXPECT_FALSE(CreateInstance<ITestCounter>(kBuiltIn, CLSCTX_LOCAL_SERVER, &hr));
    EXPECT_EQ(hr, REGDB_E_CLASSNOTREG);
    EXPECT_FALSE(CreateInstance<ITestCounter>(kOther, CLSCTX_ALL, &hr));  // an unregistered class
    EXPECT_EQ(hr, REGDB_E_CLASSNOTREG);
    void* out = &hr;
    EXPECT_EQ(CoCreateInstance(kBuiltIn, nullptr, CLSCTX_ALL, kOther, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    auto outer = CreateInstance<ITestCounter>(kBuiltIn, CLSCTX_ALL);
    EXPECT_EQ(CoCreateInstance(kBuiltIn, outer.Get(), CLSCTX_ALL, ITestCounter::kIid, &out), CLASS_E_NOAGGREGATION);

    // QueryInterface keeps one identity.
    auto runnable = counter.As<IRunnableObject>();
    ASSERT_TRUE(runnable);
    EXPECT_EQ(counter.As<IUnknown>().Get(), runnable.As<IUnknown>().Get());
    EXPECT_FALSE(counter.As<IPersist>(&hr));
    EXPECT_EQ(hr, E_NOINTERFACE);
}

TEST_F(ClassRegistryTest, PluginIsLoadedThroughItsRegistrationRecord) {
    RegisterPlugin(VEXPLOT_TEST_PLUGIN_PATH);
    HRESULT hr = E_FAIL;
    auto counter = CreateInstance<ITestCounter>(CLSID_TestPlugin, CLSCTX_INPROC_SERVER, &hr);
    ASSERT_TRUE(counter) << HResultText(hr);
    EXPECT_EQ(counter->Next(), 1);
    EXPECT_EQ(counter->Next(), 2);
    // Plug-ins are in-process servers: no other context reaches them.
    EXPECT_FALSE(CreateInstance<ITestCounter>(CLSID_TestPlugin, CLSCTX_INPROC_HANDLER, &hr));
    EXPECT_EQ(hr, REGDB_E_CLASSNOTREG);
}

TEST_F(ClassRegistryTest, MissingOrInvalidPluginLibraryIsReported) {
    HRESULT hr = S_OK;
    RegisterPlugin("/nonexistent/libnothing.so");
    EXPECT_FALSE(CreateInstance<ITestCounter>(CLSID_TestPlugin, CLSCTX_INPROC_SERVER, &hr));
    EXPECT_EQ(hr, CO_E_DLLNOTFOUND);
    RegisterPlugin(VEXPLOT_TEST_NOT_A_PLUGIN_PATH);  // a library without the entry point
    EXPECT_FALSE(CreateInstance<ITestCounter>(CLSID_TestPlugin, CLSCTX_INPROC_SERVER, &hr));
    EXPECT_EQ(hr, CO_E_ERRORINDLL);
}

}  // namespace
}  // namespace vexplot
