#include <gtest/gtest.h>

#include <thread>

#include "support/TempDir.h"
#include "settings/CRegistryKey.h"
#include "settings/SettingsStore.h"

namespace vexplot {
namespace {

TEST(SettingsStore, OneStorePerDatabaseInTheProcess) {
    test::TempDir dir{"vexplot-settings"};
    const auto store = SettingsStore::Open(dir.File("registry.db"));
    EXPECT_EQ(SettingsStore::Open(dir.File("./x/../registry.db")), store);
    EXPECT_NE(SettingsStore::OpenUnshared(dir.File("registry.db")), store);
    // main() points VEXPLOT_REGISTRY at ":memory:"; keys without a store use it.
    CRegistryKey writer;
    ASSERT_NE(writer.Open("MemoryShared"), 0);
    writer.WriteInt("Seen", 42);
    CRegistryKey reader(nullptr, SettingsStore::Open(":memory:"));
    EXPECT_EQ(reader.Open("MemoryShared"), 1);
    EXPECT_EQ(reader.ReadInt("Seen"), 42);
}

TEST(SettingsStore, ThreadsSharingOneStoreLoseNoValue) {
    test::TempDir dir{"vexplot-settings"};
    const auto store = SettingsStore::OpenUnshared(dir.File("registry.db"));
    constexpr int kThreads = 8;
    constexpr int kValues = 100;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&store, t] {
            CRegistryKey key(nullptr, store);
            key.Open("Threads");
            for (int i = 0; i < kValues; ++i) key.WriteInt(std::to_string(t * kValues + i), i);
        });
    }
    for (auto& thread : threads) thread.join();
    CRegistryKey key(nullptr, store);
    ASSERT_EQ(key.Open("Threads"), 1);
    ASSERT_EQ(key.ValueNames().size(), size_t{kThreads * kValues});
    for (int n = 0; n < kThreads * kValues; ++n) ASSERT_EQ(key.ReadInt(std::to_string(n)), n % kValues);
}

}  // namespace
}  // namespace vexplot
