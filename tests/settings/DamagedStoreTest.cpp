#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <functional>

#include "RecordingSink.h"
#include "support/TempDir.h"
#include "settings/CRegistryKey.h"
#include "settings/SettingsStore.h"

namespace vexplot {
namespace {

void MakeForeignDatabase(const test::TempDir& dir) {
    sqlite3* db = nullptr;
    sqlite3_open(dir.File("registry.db").c_str(), &db);
    sqlite3_exec(db, "CREATE TABLE photos(id INTEGER)", nullptr, nullptr, nullptr);
    sqlite3_close(db);
}

// One of our own databases (in WAL mode) with a b-tree page overwritten.
void MakeDamagedSettingsDatabase(const test::TempDir& dir) {
    CRegistryKey(nullptr, SettingsStore::OpenUnshared(dir.File("registry.db"))).Open("3DView");
    std::string bytes = dir.Read("registry.db");
    ASSERT_GT(bytes.size(), 8192u);
    dir.Write("registry.db", bytes.replace(4096, 64, std::string(64, '\xff')));
}

// What a store could disturb: the names in the directory and the bytes of
// what stands where the database should be.
std::string Snapshot(const test::TempDir& dir, const std::string& name) {
    std::string snapshot;
    for (const auto& entry : dir.Listing()) snapshot += entry + "\n";
    return std::filesystem::is_directory(dir.File(name)) ? snapshot : snapshot + dir.Read(name);
}

// Opens, reads and writes twice through keys and once through the store;
// nothing may succeed and only the first failure may be shown.
void UseBrokenStore(const std::shared_ptr<SettingsStore>& store, test::RecordingSink& sink) {
    for (int round = 0; round < 2; ++round) {
        CRegistryKey key(&sink, store);
        EXPECT_EQ(key.Open("3DView"), 0);
        EXPECT_EQ(key.OpenExisting(RootKey::CurrentUser, ""), 0);
        EXPECT_EQ(key.ReadInt("Zoom"), -1);
        EXPECT_EQ(key.WriteInt("Zoom", 5), 0);
    }
    bool created = true;
    EXPECT_NE(store->CreateKey("Software", &created), 0);
    EXPECT_NE(store->PutValue("", "x", ValueType::Dword, std::vector<uint8_t>(4)), 0);
    EXPECT_FALSE(store->GetValue("", "x"));
    EXPECT_EQ(sink.messages.size(), 1u);
}

TEST(DamagedStore, IsReportedOnceReadsAsMissingAndIsNeverModified) {
    const struct {
        const char* what;
        std::string standIn;  // what stands where the database should be
        std::string database;
        std::function<void(const test::TempDir&)> make;
    } cases[] = {
        {"text file", "registry.db", "registry.db",
         [](const test::TempDir& d) { d.Write("registry.db", std::string(5000, 'x')); }},
        {"SQLite magic, garbage after", "registry.db", "registry.db",
         [](const test::TempDir& d) {
             d.Write("registry.db", std::string("SQLite format 3\0", 16) + std::string(300, '\xab'));
         }},
        {"another program's database", "registry.db", "registry.db", MakeForeignDatabase},
        {"damaged settings database", "registry.db", "registry.db", MakeDamagedSettingsDatabase},
        {"directory in its place", "registry.db", "registry.db",
         [](const test::TempDir& d) { std::filesystem::create_directory(d.File("registry.db")); }},
        {"file in place of its folder", "config", "config/registry.db",
         [](const test::TempDir& d) { d.Write("config", "not a folder"); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        test::TempDir dir("vexplot-settings");
        c.make(dir);
        const std::string before = Snapshot(dir, c.standIn);
        test::RecordingSink sink;
        auto store = SettingsStore::OpenUnshared(dir.File(c.database));
        UseBrokenStore(store, sink);
        ASSERT_EQ(sink.messages.size(), 1u);
        EXPECT_EQ(sink.messages[0].caption, "Error");
        EXPECT_EQ(sink.messages[0].flags, MessageSink::kIconInformation);
        EXPECT_NE(sink.messages[0].text.find(dir.File(c.database)), std::string::npos);
        store.reset();
        EXPECT_EQ(Snapshot(dir, c.standIn), before);
    }
}

TEST(DamagedStore, AFileWithoutReadPermissionIsReportedAndKept) {
    if (geteuid() == 0) GTEST_SKIP() << "file permissions do not bind the superuser";
    test::TempDir dir{"vexplot-settings"};
    dir.Write("registry.db", "whatever");
    std::filesystem::permissions(dir.File("registry.db"), std::filesystem::perms::none);
    test::RecordingSink sink;
    UseBrokenStore(SettingsStore::OpenUnshared(dir.File("registry.db")), sink);
    std::filesystem::permissions(dir.File("registry.db"), std::filesystem::perms::owner_read);
    EXPECT_EQ(dir.Read("registry.db"), "whatever");
}

}  // namespace
}  // namespace vexplot

namespace vexplot {
namespace {

// Another process keeps a write transaction open (a second connection is
// another process to SQLite's locks). Reads go on; the first write gives up
// after the short wait and is reported once; later writes fail at once
// instead of each waiting; after the lock goes, writes work again.
TEST(LockedStore, IsReportedOnceAndStallsNoLaterCall) {
    test::TempDir dir("vexplot-locked");
    const std::string path = dir.File("registry.db");
    test::RecordingSink sink;
    auto store = SettingsStore::OpenUnshared(path);
    CRegistryKey key(&sink, store);
    ASSERT_NE(key.Open("3DView"), 0);
    ASSERT_EQ(key.WriteInt("Quality", 1), 0);

    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_EQ(key.ReadInt("Quality"), 1);
    EXPECT_NE(key.WriteInt("Quality", 2), 0);
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 20; ++i) EXPECT_NE(key.WriteInt("Other", i), 0);
    // Twenty writes that each waited would take forty seconds.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    ASSERT_EQ(sink.messages.size(), 1u);
    EXPECT_NE(sink.messages[0].text.find("locked by another process"), std::string::npos) << sink.messages[0].text;
    EXPECT_EQ(key.ReadInt("Quality"), 1);

    sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    // The first attempt after the release finds the lock free.
    key.WriteInt("Quality", 3);
    EXPECT_EQ(key.WriteInt("Quality", 3), 0);
    EXPECT_EQ(key.ReadInt("Quality"), 3);
    EXPECT_EQ(sink.messages.size(), 1u);
}

}  // namespace
}  // namespace vexplot
