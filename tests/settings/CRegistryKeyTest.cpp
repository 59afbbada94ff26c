#include <gtest/gtest.h>

#include <array>

#include "RecordingSink.h"
#include "support/TempDir.h"
#include "settings/CRegistryKey.h"
#include "settings/RegistryStatus.h"
#include "settings/SettingsStore.h"

namespace vexplot {
namespace {

class CRegistryKeyTest : public testing::Test {
protected:
    test::TempDir dir{"vexplot-settings"};
    test::RecordingSink sink;
    std::shared_ptr<SettingsStore> store = SettingsStore::OpenUnshared(dir.File("registry.db"));
    CRegistryKey key{&sink, store};
};

TEST_F(CRegistryKeyTest, OpenCreatesThenFindsKeysCaseInsensitively) {
    EXPECT_EQ(key.Open("3DView"), 2);
    EXPECT_EQ(key.Open("3dVIEW"), 1);
    EXPECT_EQ(key.Open(""), 1);  // created along with its sub-key
    EXPECT_EQ(store->SubKeyNames("SOFTWARE\\kestrune corporation\\VEXPLOT"), std::vector<std::string>{"3DView"});
    EXPECT_EQ(key.OpenUnder(RootKey::CurrentUser, "Software\\\\Twice"), 0);
    EXPECT_EQ(sink.messages.size(), 1u);  // only the malformed path
}

TEST_F(CRegistryKeyTest, SecondOpenClosesTheFirstKey) {
    ASSERT_EQ(key.Open("Legend"), 2);
    key.WriteInt("Width", 7);
    EXPECT_EQ(key.Open("3DView"), 2);
    EXPECT_EQ(key.ReadInt("Width"), -1);  // not Legend's value any more
    key.WriteInt("Zoom", 3);
    EXPECT_EQ(key.Open("Legend"), 1);
    EXPECT_EQ(key.ReadInt("Width"), 7);
    EXPECT_EQ(key.ReadInt("Zoom"), -1);
}

TEST_F(CRegistryKeyTest, EachReadFindsOnlyValuesOfItsOwnType) {
    ASSERT_EQ(key.Open(""), 2);
    const uint8_t bytes[] = {0x78, 0x56, 0x34, 0x12};
    key.WriteString("Text", "12");
    key.WriteInt("Number", 0x12345678);
    key.WriteBinary("Bytes", bytes, sizeof bytes);
    key.WriteInt("MinusOne", -1);
    const struct {
        const char* name;
        int32_t asInt;  // a stored -1 cannot be told from a missing value
        const char* asString;
        int asBinary;
    } cases[] = {{"Absent", -1, "", -1}, {"Text", -1, "12", -1}, {"Number", 0x12345678, "", -1},
                 {"Bytes", -1, "", 1},   {"MinusOne", -1, "", -1}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::array<uint8_t, 4> buffer{};
        EXPECT_EQ(key.ReadInt(c.name), c.asInt);
        EXPECT_EQ(key.ReadString(c.name), c.asString);
        EXPECT_EQ(key.ReadBinary(c.name, buffer.data(), buffer.size()), c.asBinary);
    }
    EXPECT_EQ(key.QueryValue("Number")->data, key.QueryValue("Bytes")->data);  // little-endian
}

TEST_F(CRegistryKeyTest, ClosedKeyReadsMissingAndWritesReturnZeroWithoutWriting) {
    const uint8_t byte = 9;
    EXPECT_EQ(key.WriteString("A", "x"), 0);
    EXPECT_EQ(key.WriteInt("B", 1), 0);
    EXPECT_EQ(key.WriteBinary("C", &byte, 1), 0);
    EXPECT_EQ(key.ReadInt("B"), -1);
    EXPECT_EQ(key.ReadString("A"), "");
    EXPECT_TRUE(store->SubKeyNames("").empty());  // not even a key was created
    EXPECT_TRUE(sink.messages.empty());
}

TEST_F(CRegistryKeyTest, StringsLongerThan255StoredBytesReadAsEmpty) {
    ASSERT_EQ(key.Open(""), 2);
    for (const size_t length : {0, 254, 255, 4000}) {
        SCOPED_TRACE(length);
        const std::string text(length, 'q');
        ASSERT_EQ(key.WriteString("S", text), 0);
        EXPECT_EQ(key.QueryValue("S")->data.size(), length + 1);  // terminator stored
        EXPECT_EQ(key.ReadString("S"), length <= 254 ? text : "");
    }
}

TEST_F(CRegistryKeyTest, ReadBinaryNeedsABufferAtLeastAsLargeAsTheValue) {
    ASSERT_EQ(key.Open(""), 2);
    const std::vector<uint8_t> stored = {1, 2, 3, 4, 5, 6, 7, 8};
    ASSERT_EQ(key.WriteBinary("B", stored.data(), stored.size()), 0);
    for (const size_t size : {7, 8, 12}) {
        SCOPED_TRACE(size);
        std::vector<uint8_t> buffer(size, 0xEE);
        std::vector<uint8_t> expected(size, 0xEE);  // a failed read leaves the buffer alone
        if (size >= stored.size()) std::copy(stored.begin(), stored.end(), expected.begin());
        EXPECT_EQ(key.ReadBinary("B", buffer.data(), buffer.size()), size >= 8 ? 1 : -1);
        EXPECT_EQ(buffer, expected);
    }
}

TEST_F(CRegistryKeyTest, ValuesKeepInsertionOrderAndTheirFirstName) {
    ASSERT_EQ(key.Open("Engine"), 2);
    for (const char* name : {"OpenGL", "Alpha", ""}) key.WriteString(name, "");
    key.WriteInt("opengl", 5);  // overwrites in place
    EXPECT_EQ(key.ReadInt("OPENGL"), 5);
    EXPECT_EQ(key.DeleteValue("alpha"), 0);
    EXPECT_EQ(key.DeleteValue("alpha"), RegistryStatus::kFileNotFound);
    key.WriteString("Alpha", "");
    EXPECT_EQ(key.ValueNames(), (std::vector<std::string>{"OpenGL", "", "Alpha"}));
}

TEST_F(CRegistryKeyTest, DeleteSubKeyTreeRemovesTheKeyAndEverythingBelowOnly) {
    CRegistryKey other(&sink, store);
    for (const char* path : {"Engine\\GL\\Deep", "EngineX", "Engine2"}) {
        ASSERT_NE(other.Open(path), 0);
        other.WriteInt("V", 1);
    }
    ASSERT_EQ(key.Open(""), 1);
    EXPECT_EQ(key.DeleteSubKeyTree("engine"), 0);
    EXPECT_EQ(key.SubKeyNames(), (std::vector<std::string>{"Engine2", "EngineX"}));
    EXPECT_FALSE(store->KeyExists(std::string(CRegistryKey::kProductPath) + "\\Engine\\GL"));
    // A key still open on a deleted key refuses writes instead of recreating it.
    EXPECT_EQ(key.DeleteSubKeyTree("Engine2"), 0);
    EXPECT_EQ(other.WriteInt("V", 2), RegistryStatus::kKeyDeleted);
    EXPECT_EQ(key.SubKeyNames(), std::vector<std::string>{"EngineX"});
}

TEST(CRegistryKeyDefaultStore, IsLookedUpAtTheFirstOpen) {
    test::TempDir dir{"vexplot-settings"};
    CRegistryKey key;  // made while the tests' in-memory default is set
    const std::string path = dir.File("made/for/it/registry.db");
    setenv("VEXPLOT_REGISTRY", path.c_str(), 1);
    const int opened = key.Open("3DView");
    setenv("VEXPLOT_REGISTRY", ":memory:", 1);
    EXPECT_EQ(opened, 2);
    EXPECT_EQ(CRegistryKey(nullptr, SettingsStore::OpenUnshared(path)).Open("3DView"), 1);
}

TEST(SettingsStoreDefaultPath, FollowsTheEnvironment) {
    const struct {
        const char* registry;
        const char* xdg;
        const char* expected;
    } cases[] = {{"/x/r.db", "/cfg", "/x/r.db"},
                 {"", "/cfg", "/cfg/vexplot/registry.db"},
                 {"", "relative", "/home/u/.config/vexplot/registry.db"}};
    const std::string home = getenv("HOME") != nullptr ? getenv("HOME") : "/";
    setenv("HOME", "/home/u", 1);
    for (const auto& c : cases) {
        setenv("VEXPLOT_REGISTRY", c.registry, 1);
        setenv("XDG_CONFIG_HOME", c.xdg, 1);
        EXPECT_EQ(SettingsStore::DefaultPath(), c.expected);
    }
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(SettingsStore::DefaultPath(), "/home/u/.config/vexplot/registry.db");
    setenv("VEXPLOT_REGISTRY", ":memory:", 1);
    setenv("HOME", home.c_str(), 1);
}

}  // namespace
}  // namespace vexplot
