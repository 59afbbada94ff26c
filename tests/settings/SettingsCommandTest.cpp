#include <gtest/gtest.h>

#include <sstream>

#include "SettingsCommand.h"
#include "support/TempDir.h"
#include "settings/SettingsStore.h"

namespace vexplot {
namespace {

constexpr int kUsage = 2;
constexpr int kMissing = 1;
const std::string kView = "Software\\Kestrune Corporation\\Vexplot\\3DView";

struct Step {
    std::vector<std::string> args;
    int status;
    std::string out;  // the exact standard output
};

class SettingsCommandTest : public testing::Test {
protected:
    void Run(const std::vector<Step>& steps) {
        for (const auto& step : steps) {
            std::string words;
            for (const auto& arg : step.args) words += "[" + arg + "]";
            SCOPED_TRACE(words);
            std::ostringstream out, err;
            EXPECT_EQ(RunSettingsCommand(step.args, store, out, err), step.status) << err.str();
            EXPECT_EQ(out.str(), step.out);
            EXPECT_EQ(err.str().empty(), step.status == 0) << err.str();  // failures say why
        }
    }
    std::string Header() const { return "# " + store->Path() + "\n"; }

    test::TempDir dir{"vexplot-settings"};
    std::shared_ptr<SettingsStore> store = SettingsStore::OpenUnshared(dir.File("registry.db"));
};

TEST_F(SettingsCommandTest, SetGetListAndDeleteValues) {
    Run({
        {{"set", kView, "Zoom", "dword", "16"}, 0, ""},
        {{"set", kView, "Tilt", "DWORD", "-2"}, 0, ""},
        {{"set", kView, "Mask", "dword", "0xFFFFFFFF"}, 0, ""},
        {{"set", kView, "", "string", "plain view"}, 0, ""},
        {{"set", "HKCU\\" + kView, "Raw", "binary", "01 ff 2A"}, 0, ""},
        {{"set", kView, "Empty", "binary", ""}, 0, ""},
        {{"get", kView, "zoom"}, 0, "Zoom  REG_DWORD  16 (0x00000010)\n"},
        {{"get", kView, ""}, 0, "(Default)  REG_SZ  plain view\n"},
        {{"list", kView}, 0,
         Header() + kView + "\n" +
             "  Zoom  REG_DWORD  16 (0x00000010)\n"
             "  Tilt  REG_DWORD  -2 (0xfffffffe)\n"
             "  Mask  REG_DWORD  -1 (0xffffffff)\n"
             "  (Default)  REG_SZ  plain view\n"
             "  Raw  REG_BINARY  01 ff 2a\n"
             "  Empty  REG_BINARY\n"},
        {{"delete", kView, "Tilt"}, 0, ""},
        {{"get", kView, "Tilt"}, kMissing, ""},
        {{"delete", kView, "Tilt"}, kMissing, ""},
    });
}

TEST_F(SettingsCommandTest, ListShowsEveryKeyAndDeleteRemovesATree) {
    Run({
        {{"set", "A\\B\\C", "x", "dword", "1"}, 0, ""},
        {{"set", "AB", "y", "string", "z"}, 0, ""},
        {{"list"}, 0, Header() + "A\nA\\B\nA\\B\\C\n  x  REG_DWORD  1 (0x00000001)\nAB\n  y  REG_SZ  z\n"},
        {{"delete", "a\\b"}, 0, ""},
        {{"list"}, 0, Header() + "A\nAB\n  y  REG_SZ  z\n"},
        {{"delete", "A\\B"}, kMissing, ""},
        {{"get", "A\\B", "x"}, kMissing, ""},
    });
}

TEST_F(SettingsCommandTest, WrongArgumentsPrintUsageAndChangeNothing) {
    Run({
        {{}, kUsage, ""},
        {{"frobnicate", "x"}, kUsage, ""},
        {{"get", kView}, kUsage, ""},
        {{"set", kView, "N", "qword", "1"}, kUsage, ""},
        {{"set", kView, "N", "dword", "12x"}, kUsage, ""},
        {{"set", kView, "N", "dword", "4294967296"}, kUsage, ""},
        {{"set", kView, "N", "dword", "-2147483649"}, kUsage, ""},
        {{"set", kView, "N", "binary", "abc"}, kUsage, ""},
        {{"set", "A\\\\B", "N", "dword", "1"}, kUsage, ""},
        {{"delete", "HKEY_CURRENT_USER"}, kUsage, ""},
        {{"list"}, 0, Header()},
    });
}

TEST_F(SettingsCommandTest, ABrokenStoreIsAnErrorNotAnEmptyList) {
    dir.Write("broken.db", "not a database");
    store = SettingsStore::OpenUnshared(dir.File("broken.db"));
    Run({{{"list"}, kMissing, ""}, {{"set", kView, "N", "dword", "1"}, kMissing, ""}});
}

TEST(SettingsCommandDefaultStore, AUsageErrorCreatesNoDatabase) {
    test::TempDir dir{"vexplot-settings"};
    setenv("VEXPLOT_REGISTRY", dir.File("registry.db").c_str(), 1);
    std::ostringstream ignored;
    const int status = RunSettingsCommand({"get"}, nullptr, ignored, ignored);
    setenv("VEXPLOT_REGISTRY", ":memory:", 1);
    EXPECT_EQ(status, kUsage);
    EXPECT_TRUE(dir.Listing().empty());
}

}  // namespace
}  // namespace vexplot
