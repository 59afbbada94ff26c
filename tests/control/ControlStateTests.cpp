#include <signal.h>
#include <sys/stat.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>

#include "ControlFixture.h"
#include "control/ControlSerializer.h"
#include "support/ArchiveBytes.h"
#include "support/TempDir.h"
#include "ui/CUIW_InfoWnd.h"

namespace vexplot::test {
namespace {

constexpr const char* kStateKey = "Software\\Vexplot Tests\\Saved State";

// Runs the test in a fresh current directory, where the registry path
// leaves its "serialize.tmp".
class ScopedWorkingDirectory {
public:
    explicit ScopedWorkingDirectory(const std::filesystem::path& dir) : previous_(std::filesystem::current_path()) {
        std::filesystem::current_path(dir);
    }
    ~ScopedWorkingDirectory() { std::filesystem::current_path(previous_); }
    ScopedWorkingDirectory(const ScopedWorkingDirectory&) = delete;
    ScopedWorkingDirectory& operator=(const ScopedWorkingDirectory&) = delete;

private:
    std::filesystem::path previous_;
};

class ControlStateTest : public WorkingControl {
protected:
    // Replaces the control with a new one at `rect` on the same site and store.
    void Recreate(PixelRect rect = {0, 0, 400, 300}) {
        control->Destroy();
        control = nullptr;
        Construct();
        ASSERT_TRUE(control->Create(site, rect));
        errors.clear();
        ListenForErrors();
    }
    // A control reads more than the header only after it saved to a file.
    void ArmFileFlag() { ASSERT_EQ(control->SaveSerialize(dir / "scratch.vxg"), 1); }

    Bytes StoredState() {
        CRegistryKey key(nullptr, store);
        EXPECT_NE(key.OpenUnder(RootKey::CurrentUser, kStateKey), 0);
        const auto value = key.QueryValue("ControlState");
        return value ? value->data : Bytes{};
    }
    PixelRect ControlRect() const { return site.GetWindowRect(control->Window(WindowRole::Control)); }

    // A plot that differs from a fresh control's in every group.
    void MakeDistinctivePlot() {
        ShowGrid(5, 4);
        control->SetAxisLabelText(AxisId::X, "Time [s]");
        control->SetAxisLabelText(AxisId::Z, "Level");
        control->SetCaption("Run 42");
        control->Palette().SetStandard(4);
        control->ApplyPalette();
        control->ShowWindows(CUI_VexplotCtrl::wndStatus | CUI_VexplotCtrl::wndNavigator, 0);
        control->ShowWindows(CUI_VexplotCtrl::wndInfo, 1);
        control->SetCamXPosition(7.5);
        control->SetCamZCenter(-2.25);
    }

    TempDir dir{"vexplot-state"};
};

// -- the two entry points' guards and containers --

TEST_F(ControlStateTest, OnlySourceTypesOneAndTwoWithASourceDoAnything) {
    ListenForErrors();
    ScopedWorkingDirectory cwd(dir.Path());
    const std::string file = dir / "state.bin";
    struct Case {
        int16_t type;
        std::string source;
    };
    const Case cases[] = {{0, file}, {3, file}, {-1, file}, {0, kStateKey}, {3, kStateKey}, {1, ""}, {2, ""}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "type " << c.type << " source '" << c.source << "'");
        control->SaveControlState(c.source, c.type);
        control->LoadControlState(c.source, c.type);
        EXPECT_EQ(dir.EntryCount(), 0u);  // neither the file nor serialize.tmp
        EXPECT_FALSE(store->KeyExists(kStateKey));
    }
    EXPECT_TRUE(errors.empty());
}

TEST_F(ControlStateTest, RegistryLoadReportsTheStepThatFailed) {
    ListenForErrors();
    ScopedWorkingDirectory cwd(dir.Path());
    ArmFileFlag();
    struct Case {
        const char* name;
        std::function<void(CRegistryKey&)> prepare;
        int32_t failure;
    };
    const Case cases[] = {
        {"empty key", [](CRegistryKey&) {}, 2},
        {"size not a number", [](CRegistryKey& k) { k.WriteString("ControlStateSize", "12"); }, 2},
        {"state missing", [](CRegistryKey& k) { k.WriteInt("ControlStateSize", 12); }, 4},
        {"state of another size",
         [](CRegistryKey& k) {
             k.WriteInt("ControlStateSize", 12);
             k.WriteBinary("ControlState", "abc", 3);
         },
         4},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        CRegistryKey key(nullptr, store);
        ASSERT_NE(key.OpenUnder(RootKey::CurrentUser, kStateKey), 0);
        key.DeleteValue("ControlStateSize");
        key.DeleteValue("ControlState");
        c.prepare(key);
        control->LoadControlState(kStateKey, 1);
        EXPECT_EQ(control->LastStateFailure(), c.failure);
    }
    // The container's failures are the control's own business.
    EXPECT_TRUE(errors.empty());
}

// -- the file flag --

TEST_F(ControlStateTest, UntilItSavesToAFileTheControlWritesAndReadsTheHeaderAlone) {
    ScopedWorkingDirectory cwd(dir.Path());
    control->SetCaption("Fresh");
    control->SaveControlState(kStateKey, 1);
    Bytes header;
    AppendInt32(header, static_cast<int32_t>(ControlSerializer::kVersion));
    AppendInt32(header, 400);
    AppendInt32(header, 300);
    AppendShortString(header, "Fresh");
    EXPECT_EQ(StoredState(), header);
    EXPECT_EQ(control->FileFlag(), 0);  // the registry path does not set it

    // A file saved by a control that has saved before: the whole stream.
    ArmFileFlag();
    control->SetCaption("Whole");
    ASSERT_EQ(control->SaveSerialize(dir / "whole.vxg"), 1);
    const std::string whole = dir.Read("whole.vxg");
    ASSERT_GT(whole.size(), header.size() + 100);

    // A fresh control takes only the header from it, and ignores the rest
    // without complaint.
    Recreate();
    const uint32_t background = control->Settings().backgroundColor;
    control->Palette().SetStandard(1);
    const std::vector<uint32_t> palette(control->Palette().Colors().begin(), control->Palette().Colors().end());
    EXPECT_EQ(control->LoadSerialize(dir / "whole.vxg"), 1);
    EXPECT_EQ(control->GetCaption(), "Whole");
    EXPECT_EQ(control->Settings().backgroundColor, background);
    EXPECT_TRUE(std::equal(palette.begin(), palette.end(), control->Palette().Colors().begin(),
                           control->Palette().Colors().end()));
    EXPECT_TRUE(errors.empty());
}

// -- round trips --

TEST_F(ControlStateTest, PlotFileRoundTripRestoresDataAxesPaletteWindowsAndCamera) {
    ArmFileFlag();
    MakeDistinctivePlot();
    const std::vector<uint32_t> palette(control->Palette().Colors().begin(), control->Palette().Colors().end());
    const int32_t windows = control->GetWindowsVisible();
    const std::string first = dir / "plot.vxg";
    ASSERT_EQ(control->SaveSerialize(first), 1);

    Recreate({30, 40, 330, 240});
    ArmFileFlag();
    ASSERT_EQ(control->LoadSerialize(first), 1);
    EXPECT_TRUE(errors.empty());

    ASSERT_EQ(control->GetGraphObjects()->Count(), 1);
    double lo = 0, hi = 0;
    ASSERT_TRUE(control->GetXRange(&lo, &hi));
    EXPECT_EQ(hi - lo, 4.0);  // five columns
    EXPECT_EQ(control->GetAxis(AxisId::X)->GetAppearance().label, "Time [s]");
    EXPECT_EQ(control->GetAxis(AxisId::Z)->GetAppearance().label, "Level");
    EXPECT_EQ(control->GetCaption(), "Run 42");
    EXPECT_TRUE(std::equal(palette.begin(), palette.end(), control->Palette().Colors().begin(),
                           control->Palette().Colors().end()));
    EXPECT_EQ(control->GetWindowsVisible(), windows);
    EXPECT_EQ(View().position.x, 7.5);
    EXPECT_EQ(View().center.z, -2.25);
    // The plot file carries the saving control's size.
    EXPECT_EQ(ControlRect().right - ControlRect().left, 400);
    EXPECT_EQ(ControlRect().bottom - ControlRect().top, 300);

    // Saved again, the loaded plot gives the same bytes: nothing was lost
    // or read into the wrong member.
    const std::string second = dir / "again.vxg";
    ASSERT_EQ(control->SaveSerialize(second), 1);
    EXPECT_EQ(dir.Read("again.vxg"), dir.Read("plot.vxg"));
}

TEST_F(ControlStateTest, RegistryRoundTripRestoresSettingsButNeverGraphObjects) {
    ScopedWorkingDirectory cwd(dir.Path());
    ArmFileFlag();
    MakeDistinctivePlot();
    control->SetBackColor(0x123456);
    control->SaveControlState(kStateKey, 1);
    ASSERT_EQ(control->LastStateFailure(), 0);
    const Bytes saved = StoredState();

    Recreate();
    ArmFileFlag();
    ShowGrid(3, 2);
    control->LoadControlState(kStateKey, 1);
    EXPECT_EQ(control->LastStateFailure(), 0);
    EXPECT_TRUE(errors.empty());
    EXPECT_EQ(control->Settings().backgroundColor, 0x123456u);
    EXPECT_EQ(control->GetAxis(AxisId::X)->GetAppearance().label, "Time [s]");
    EXPECT_EQ(View().position.x, 7.5);
    // The control keeps its own grid.
    ASSERT_EQ(control->GetGraphObjects()->Count(), 1);
    double lo = 0, hi = 0;
    ASSERT_TRUE(control->GetXRange(&lo, &hi));
    EXPECT_EQ(hi - lo, 2.0);
    EXPECT_TRUE(control->StateOperation());

    control->SaveControlState(kStateKey, 1);
    EXPECT_EQ(StoredState(), saved);
}

TEST_F(ControlStateTest, LoadedStateKeepsTheControlsOwnRectangle) {
    Recreate({0, 0, 640, 480});
    ArmFileFlag();
    const std::string file = dir / "big.vxg";
    ASSERT_EQ(control->SaveSerialize(file), 1);

    const PixelRect own{10, 20, 410, 320};
    Recreate(own);
    ArmFileFlag();
    control->LoadControlState(file, 2);
    const PixelRect after = ControlRect();
    EXPECT_EQ(std::vector<int32_t>({after.left, after.top, after.right, after.bottom}),
              std::vector<int32_t>({own.left, own.top, own.right, own.bottom}));
    // LoadSerialize on its own takes the saved size: the restore is what
    // keeps the placement above.
    ASSERT_EQ(control->LoadSerialize(file), 1);
    EXPECT_EQ(ControlRect().right - ControlRect().left, 640);
}

// Values no dialog accepts (a host's property, another program's store) are
// kept as set, but what draws and what loads takes them in range: a tick
// count of 32767 cannot make every render grow, nor a scale format of 7
// make the saved plot unreadable. The loaded dB flag and quality reach the
// view, so dB ticks never stand over linear heights.
TEST_F(ControlStateTest, OutOfRangeAxisValuesDrawBoundedAndSavePlotsThatLoad) {
    ArmFileFlag();
    ShowGrid(5, 4);
    for (const auto& [id, value] : {std::pair{11, 32767}, {12, 32767}, {13, 7}, {32, 1}, {52, 1}})
        ASSERT_EQ(control->PutProperty(id, Variant(static_cast<int16_t>(value))), S_OK);
    Variant stored;
    ASSERT_EQ(control->GetProperty(11, &stored), S_OK);
    EXPECT_EQ(stored.I2(), 32767);
    const CGD_Axis::Appearance used = control->GetAxis(AxisId::X)->GetAppearance();
    EXPECT_EQ(used.majorTicks, CGD_Axis::kMaxTicks);
    EXPECT_EQ(used.minorTicks, CGD_Axis::kMaxTicks);
    EXPECT_EQ(used.scaleFormat, ScaleFormat::Decimal);
    ASSERT_EQ(control->SaveSerialize(dir / "poisoned.vxg"), 1);

    Recreate();
    ArmFileFlag();
    ASSERT_EQ(control->PutProperty(32, Variant(int16_t{0})), S_OK);
    ASSERT_EQ(control->PutProperty(52, Variant(int16_t{0})), S_OK);
    log->calls.clear();
    ASSERT_EQ(control->LoadSerialize(dir / "poisoned.vxg"), 1);
    EXPECT_TRUE(errors.empty());
    EXPECT_EQ(control->GetAxis(AxisId::X)->GetAppearance().majorTicks, CGD_Axis::kMaxTicks);
    const auto& calls = log->calls;
    EXPECT_NE(std::find(calls.begin(), calls.end(), "view.SetLogZ(1)"), calls.end());
    EXPECT_NE(std::find(calls.begin(), calls.end(), "view.SetDetailBudget(0)"), calls.end());
}

// The registry path leaves its temporary file holding the stored bytes, and
// never writes through a link planted under its name.
TEST_F(ControlStateTest, TheTemporaryFileHoldsTheStoredBytesAndIsNeverALink) {
    ScopedWorkingDirectory cwd(dir.Path());
    dir.Write("victim.txt", "keep me");
    std::filesystem::create_symlink(dir / "victim.txt", dir / "serialize.tmp");
    ArmFileFlag();
    MakeDistinctivePlot();
    control->SaveControlState(kStateKey, 1);
    EXPECT_EQ(control->LastStateFailure(), 0);
    EXPECT_EQ(dir.Read("victim.txt"), "keep me");
    EXPECT_FALSE(std::filesystem::is_symlink(dir / "serialize.tmp"));

    const Bytes stored = StoredState();
    const std::string tmp = dir.Read("serialize.tmp");
    ASSERT_GT(stored.size(), 100u);
    EXPECT_EQ(Bytes(tmp.begin(), tmp.end()), stored);
    CRegistryKey key(nullptr, store);
    ASSERT_NE(key.OpenUnder(RootKey::CurrentUser, kStateKey), 0);
    EXPECT_EQ(key.ReadInt("ControlStateSize"), static_cast<int32_t>(stored.size()));
}

// The settings block byte for byte, written out here by hand from its
// layout: a round trip cannot see two fields swapped on both sides.
TEST_F(ControlStateTest, TheSettingsBlockHasItsFieldsInPlace) {
    ArmFileFlag();
    const std::pair<DISPID, Variant> values[] = {
        {3, Variant(int32_t{0x0A0B0C})}, {5, Variant::Bool(false)}, {6, Variant::Bool(false)},
        {1, Variant::Bool(false)}, {8, Variant(int32_t{0x111111})}, {9, Variant(int32_t{0x121212})},
        {10, Variant(int32_t{0x131313})}, {11, Variant(int16_t{2})}, {12, Variant(int16_t{3})},
        {13, Variant(int16_t{1})}, {14, Variant(int16_t{0})}, {20, Variant(int16_t{4})},
        {21, Variant(int16_t{6})}, {22, Variant(int16_t{2})}, {32, Variant(int16_t{1})},
        {36, Variant(int32_t{0x212121})}, {37, Variant(int32_t{0x222222})}, {41, Variant::Bool(false)},
        {43, Variant::Bool(false)}, {44, Variant::Bool(true)}, {46, Variant(0.5)}, {47, Variant(0.25)},
        {48, Variant(0.125)}, {49, Variant(-0.5)}, {50, Variant(-0.25)}, {51, Variant(-0.125)},
        {52, Variant(int16_t{1})}, {600, Variant::Bool(true)}, {601, Variant(int32_t{3})},
        {602, Variant::Bool(true)},
    };
    for (const auto& [id, value] : values) ASSERT_EQ(control->PutProperty(id, value), S_OK) << id;
    for (AxisId id : {AxisId::X, AxisId::Y, AxisId::Z}) control->SetAxisLabelText(id, std::string(1, "xyz"[int(id)]));
    ASSERT_EQ(control->SaveSerialize(dir / "golden.vxg"), 1);
    const std::string file = dir.Read("golden.vxg");

    std::string e;  // the expected block
    auto i32 = [&](int32_t v) { for (int k = 0; k < 4; ++k) e += static_cast<char>((v >> (8 * k)) & 0xFF); };
    auto i16 = [&](int16_t v) { e += static_cast<char>(v & 0xFF); e += static_cast<char>((v >> 8) & 0xFF); };
    auto f64 = [&](double v) { char b[8]; std::memcpy(b, &v, 8); e.append(b, 8); };
    auto str = [&](const std::string& t) { e += static_cast<char>(t.size()); e += t; };
    f64(1.053);
    i32(1);  // the 3-D view
    i32(0x0A0B0C);
    str(control->EngineName());
    i32(0), i32(0), i32(0);  // legend auto hide, child info window, tool tips
    const int32_t grids[3][2] = {{0, 1}, {1, 1}, {1, 1}};
    const int32_t colours[3][3] = {{0x111111, 0x121212, 0x131313}, {0xFFFFFF, 0xD7D7D7, 0xACACAC},
                                   {0xFFFFFF, 0xD7D7D7, 0xACACAC}};
    const int16_t shorts[3][4] = {{2, 3, 1, 0}, {4, 6, 2, 0}, {5, 5, 0, 1}};
    for (int a = 0; a < 3; ++a) {
        str(std::string(1, "xyz"[a]));
        i32(grids[a][0]), i32(grids[a][1]);
        for (int32_t c : colours[a]) i32(c);
        for (int16_t v : shorts[a]) i16(v);
    }
    i32(0x212121), i32(0x222222);
    for (int32_t flag : {0, 1, 1, 1, 0, 1, 0, 1}) i32(flag);  // diff, region, tracer, marker, zoom, transparent, visible, position
    str("Arial"), i32(-11);
    for (double step : {0.5, 0.25, 0.125, -0.5, -0.25, -0.125}) f64(step);
    i16(1);
    str(Read("", "GraphEngine"));
    i32(0), i32(1), i32(3), i32(1);  // data flag, fast hide, move direction, fixed aspect ratio
    const std::string header = file.substr(0, 12 + 1 + static_cast<uint8_t>(file[12]));
    ASSERT_GE(file.size(), header.size() + e.size());
    const std::string block = file.substr(header.size(), e.size());
    for (size_t k = 0; k < e.size(); ++k) ASSERT_EQ(block[k], e[k]) << "byte " << k << " of the settings block";
}

TEST_F(ControlStateTest, TheFloatingInfoWindowsPlaceIsTheNextControlsDefault) {
    control->GetInfoWindow()->SetDocked(false);
    const PixelRect placed = control->GetInfoWindow()->NormalRect();
    // Not the rectangle a fresh store's defaults give, so only the save can
    // have written it.
    ASSERT_FALSE(placed.left == 50 && placed.top == 50 && placed.right == 250 && placed.bottom == 150);
    Recreate();
    CRegistryKey key(nullptr, store);
    ASSERT_NE(key.Open(""), 0);
    EXPECT_EQ(key.ReadInt("InfoLeft"), placed.left);
    EXPECT_EQ(key.ReadInt("InfoTop"), placed.top);
    EXPECT_EQ(key.ReadInt("InfoRight"), placed.right);
    EXPECT_EQ(key.ReadInt("InfoBottom"), placed.bottom);
}

// -- damaged files and failed saves --

TEST_F(ControlStateTest, DamagedPlotFilesAreReportedAndLeaveAUsableControl) {
    ArmFileFlag();
    MakeDistinctivePlot();
    ASSERT_EQ(control->SaveSerialize(dir / "good.vxg"), 1);
    const std::string good = dir.Read("good.vxg");

    std::vector<std::pair<std::string, std::string>> damaged;
    // Cut everywhere but where a stream may end (after the window blocks,
    // where a control without a 3-D view stops, and at the end).
    const size_t cameraStart = good.size() - 7 * 8;
    for (size_t cut = 0; cut < good.size(); cut += 13)
        if (cut != cameraStart) damaged.emplace_back("cut at " + std::to_string(cut), good.substr(0, cut));
    damaged.emplace_back("garbage", std::string(300, '\x5A'));
    std::string version = good;
    version[2] = 2;  // version 2.0
    damaged.emplace_back("another major version", version);

    Recreate();
    ArmFileFlag();
    for (const auto& [name, bytes] : damaged) {
        SCOPED_TRACE(name);
        dir.Write("bad.vxg", bytes);
        errors.clear();
        EXPECT_EQ(control->LoadSerialize(dir / "bad.vxg"), 0);
        ASSERT_EQ(errors.size(), 1u);
        EXPECT_EQ(static_cast<uint32_t>(errors[0].code), 0x80030109u);
        EXPECT_NE(errors[0].text.find("bad.vxg"), std::string::npos) << errors[0].text;
        EXPECT_TRUE(control->StateOperation());
    }
    // Still a working control: it shows data and saves and loads whole plots.
    EXPECT_EQ(control->SaveSerialize(dir / "after.vxg"), 1);
    EXPECT_EQ(control->LoadSerialize(dir / "good.vxg"), 1);
    EXPECT_EQ(control->GetCaption(), "Run 42");
    ShowGrid(6, 2);
    EXPECT_EQ(control->GetGraphObjects()->Count(), 2);
}

TEST_F(ControlStateTest, AFileThatCannotBeOpenedRaisesTheErrorEventNamingIt) {
    ListenForErrors();
    ::mkfifo((dir / "fifo.vxg").c_str(), 0600);
    EXPECT_EQ(control->LoadSerialize(dir / "missing.vxg"), 0);
    EXPECT_EQ(control->SaveSerialize(dir / "no-such-folder/plot.vxg"), 0);
    EXPECT_FALSE(control->OpenPlotFile(dir / "missing.vxg"));
    // A FIFO is refused at once instead of waiting for a writer.
    EXPECT_FALSE(control->OpenPlotFile(dir / "fifo.vxg"));
    const std::array<const char*, 4> names{"missing.vxg", "no-such-folder", "missing.vxg", "fifo.vxg"};
    ASSERT_EQ(errors.size(), names.size());
    for (size_t i = 0; i < names.size(); ++i) EXPECT_NE(errors[i].text.find(names[i]), std::string::npos) << i;
    EXPECT_NE(errors[3].text.find("pipe"), std::string::npos) << errors[3].text;
}

TEST_F(ControlStateTest, FailedSaveLeavesThePreviousFileIntact) {
    ListenForErrors();
    ShowGrid(40, 40);
    const std::string path = dir / "plot.vxg";
    ASSERT_EQ(control->SaveSerialize(path), 1);
    const std::string before = dir.Read("plot.vxg");

    // The disk fills up at each step of the stream: writes beyond the limit
    // fail (EFBIG; the signal that would kill us is ignored). The archive
    // writes in 4096-byte blocks, so the limits fall before, in and after
    // the first blocks, in the middle and one byte short of the end.
    control->SetCaption("changed");
    rlimit old{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
    const auto previousHandler = signal(SIGXFSZ, SIG_IGN);
    for (const size_t limit : {size_t{0}, size_t{1}, size_t{4095}, size_t{4096}, size_t{8193}, before.size() / 2,
                               before.size() - 1}) {
        SCOPED_TRACE(limit);
        errors.clear();
        rlimit low = old;
        low.rlim_cur = limit;
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &low), 0);
        const int32_t result = control->SaveSerialize(path);
        setrlimit(RLIMIT_FSIZE, &old);
        EXPECT_EQ(result, 0);
        EXPECT_EQ(dir.Read("plot.vxg"), before);
        EXPECT_EQ(dir.Listing(), std::vector<std::string>{"plot.vxg"});  // no temporary left behind
        ASSERT_EQ(errors.size(), 1u);
        EXPECT_NE(errors[0].text.find("plot.vxg"), std::string::npos) << errors[0].text;
        EXPECT_NE(errors[0].text.find("disk full"), std::string::npos) << errors[0].text;
    }
    signal(SIGXFSZ, previousHandler);

    // A folder in the file's place stays a folder.
    std::filesystem::create_directory(dir / "folder.vxg");
    errors.clear();
    EXPECT_EQ(control->SaveSerialize(dir / "folder.vxg"), 0);
    EXPECT_TRUE(std::filesystem::is_directory(dir / "folder.vxg"));
    EXPECT_EQ(errors.size(), 1u);
}

// -- the automation rows --

TEST_F(ControlStateTest, DispatchRowsReachTheStateMethods) {
    ScopedWorkingDirectory cwd(dir.Path());
    const auto invoke = [this](const char* name, std::vector<Variant> args) {
        return Dispatch(control.Get(), name, std::move(args));
    };
    // BOOL results, as an automation client tests them.
    const Variant saved = invoke("SaveSerialize", {Variant(std::string(dir / "plot.vxg"))});
    EXPECT_EQ(saved.Type(), VT_BOOL);
    EXPECT_TRUE(saved.BoolValue());
    EXPECT_TRUE(invoke("LoadSerialize", {Variant(std::string(dir / "plot.vxg"))}).BoolValue());
    EXPECT_FALSE(invoke("LoadSerialize", {Variant(std::string(dir / "none.vxg"))}).BoolValue());
    invoke("SaveControlState", {Variant(std::string(kStateKey)), Variant(int16_t{1})});
    EXPECT_FALSE(StoredState().empty());
    invoke("LoadControlState", {Variant(std::string(kStateKey)), Variant(int16_t{1})});
    EXPECT_EQ(control->LastStateFailure(), 0);
}

}  // namespace
}  // namespace vexplot::test
