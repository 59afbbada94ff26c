#include "RecentFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "settings/CRegistryKey.h"

namespace vexplot {
namespace {

using Paths = std::vector<std::string>;

// Every test starts without a stored list (the store is the process's
// in-memory one, shared by the tests of one run).
class RecentFilesTest : public ::testing::Test {
protected:
    void SetUp() override {
        CRegistryKey root;
        ASSERT_TRUE(root.Open(""));
        root.DeleteSubKeyTree(RecentFiles::kSubKey);
    }

    static RecentFiles Filled(int count) {
        RecentFiles recent;
        for (int i = 0; i < count; ++i) recent.Add("/data/f" + std::to_string(i) + ".3do");
        return recent;
    }
};

TEST_F(RecentFilesTest, NewestFirstWithoutRepeatsAndAtMostEight) {
    RecentFiles recent;
    recent.Add("/a.3do");
    recent.Add("/b.csv");
    recent.Add("");  // ignored
    recent.Add("/c.npy");
    recent.Add("/a.3do");  // moves to the front instead of repeating
    EXPECT_EQ(recent.Paths(), (Paths{"/a.3do", "/c.npy", "/b.csv"}));

    recent = Filled(10);
    ASSERT_EQ(recent.Paths().size(), RecentFiles::kCapacity);
    EXPECT_EQ(recent.Paths().front(), "/data/f9.3do");
    EXPECT_EQ(recent.Paths().back(), "/data/f2.3do");  // f0 and f1 dropped off

    recent.Remove("/data/f5.3do");
    recent.Remove("/not/there");
    EXPECT_EQ(recent.Paths().size(), RecentFiles::kCapacity - 1);
}

TEST_F(RecentFilesTest, SavedListLoadsBackAndAShorterSaveClearsStaleSlots) {
    RecentFiles full = Filled(8);
    full.Save();
    RecentFiles loaded;
    loaded.Load();
    EXPECT_EQ(loaded.Paths(), full.Paths());

    full.Remove("/data/f7.3do");
    full.Remove("/data/f0.3do");
    full.Save();
    CRegistryKey key;
    ASSERT_TRUE(key.Open(RecentFiles::kSubKey));
    EXPECT_EQ(key.ReadString("Recent0"), "/data/f6.3do");
    EXPECT_EQ(key.ReadString("Recent5"), "/data/f1.3do");
    EXPECT_EQ(key.ReadString("Recent6"), "");
    EXPECT_EQ(key.ReadString("Recent7"), "");
    loaded.Load();
    EXPECT_EQ(loaded.Paths(), full.Paths());
}

TEST_F(RecentFilesTest, LoadStopsAtTheFirstEmptySlotAndSkipsRepeats) {
    CRegistryKey key;
    ASSERT_TRUE(key.Open(RecentFiles::kSubKey));
    key.WriteString("Recent0", "/x.3do");
    key.WriteString("Recent1", "/x.3do");
    key.WriteString("Recent2", "/y.3do");
    key.WriteString("Recent4", "/after-gap.3do");
    RecentFiles recent;
    recent.Load();
    EXPECT_EQ(recent.Paths(), (Paths{"/x.3do", "/y.3do"}));
}

}  // namespace
}  // namespace vexplot
