// Plot files (.vxg) and the settings store's values as the control reads
// them back. Each input is used twice:
//   - as a plot file: its header and settings block read on their own
//     (ControlSerializer::ReadHeader, ReadSettings), then the records after
//     them by RecordInspector; ArchiveError is the expected failure;
//   - as values of the settings store: the bytes are split into values of
//     the axis, camera and legend settings, written to an in-memory store
//     and read back by ControlSettings, as a control starting up does.
// In both, every axis appearance the settings give must come out of
// CGD_Axis::Usable within the ranges an axis draws, and the ticks it makes
// over any finite range must stay few.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "control/ControlSerializer.h"
#include "control/ControlSettings.h"
#include "model/ArchiveError.h"
#include "model/CArchive.h"
#include "model/CGD_Axis.h"
#include "model/RecordInspector.h"
#include "settings/CRegistryKey.h"
#include "settings/SettingsStore.h"

using namespace vexplot;
using fuzz::Expect;

namespace {

void CheckUsable(const ControlSettings& settings) {
    for (const ControlSettings::Axis& a : settings.axes) {
        CGD_Axis::Appearance look;
        look.majorTicks = a.majorTicks;
        look.minorTicks = a.minorTicks;
        look.scaleFormat = static_cast<ScaleFormat>(a.scaleFormat);
        look.decimalCount = a.decimalCount;
        CGD_Axis axis;
        axis.SetAppearance(look);
        const CGD_Axis::Appearance& used = axis.GetAppearance();
        Expect(used.majorTicks >= 1 && used.majorTicks <= CGD_Axis::kMaxTicks, "major ticks in range");
        Expect(used.minorTicks >= 0 && used.minorTicks <= CGD_Axis::kMaxTicks, "minor ticks in range");
        Expect(static_cast<int>(used.scaleFormat) >= 0 && static_cast<int>(used.scaleFormat) <= 3,
               "a known scale format");
        Expect(axis.MakeTicks(-1e308, 1e308).values.size() <= 64, "few ticks over the widest range");
    }
}

void AsPlotFile(const uint8_t* data, size_t size) {
    ComPtr<MemoryStream> stream = fuzz::StreamOver(data, size);
    ControlSettings settings;
    CUI_VexplotCtrl::WindowVisibility windows;
    try {
        CArchive archive(stream.Get(), CArchive::Mode::Load);
        ControlSerializer::ReadHeader(archive);
        ControlSerializer::ReadSettings(archive, settings, windows);
        archive.Flush();
    } catch (const ArchiveError& e) {
        Expect(e.what()[0] != '\0', "an archive fault is described");
        return;
    }
    for (double step : settings.camTranslation) Expect(std::isfinite(step), "camera steps read finite");
    CheckUsable(settings);
    const RecordInspector::Report report = RecordInspector::Inspect(stream.Get(), 3);
    Expect(report.TopLevelCount() <= 3, "at most the records asked for");
}

void AsSettingsValues(const uint8_t* data, size_t size) {
    static const char* const kNames[] = {
        "X-Axis Number Major Ticks", "X-Axis Number Minor Ticks", "X-Axis Scale Format", "X-Axis Decimal Count",
        "Z-Axis Number Major Ticks", "Z-Axis Display Mode", "Background color", "Child info window"};
    static const char* const kSteps[] = {"X-Translation", "Y-Translation", "Z-Rotation", "Quality"};
    auto store = SettingsStore::OpenUnshared(":memory:");
    CRegistryKey root(nullptr, store);
    CRegistryKey view(nullptr, store);
    if (!root.Open("") || !view.Open("3DView")) return;
    // Four bytes per root value, then the rest as the camera steps' texts.
    size_t at = 0;
    for (const char* name : kNames) {
        if (at + 4 > size) break;
        int32_t v = 0;
        std::memcpy(&v, data + at, 4);
        root.WriteInt(name, v);
        at += 4;
    }
    const std::string rest(reinterpret_cast<const char*>(data) + at, size - at);
    for (size_t i = 0; i < std::size(kSteps); ++i)
        view.WriteString(kSteps[i], i * 12 < rest.size() ? rest.substr(i * 12, 12) : std::string());
    ControlSettings settings;
    settings.Read(nullptr, store);
    settings.ReadInfo(nullptr, store);
    CheckUsable(settings);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    setenv("VEXPLOT_REGISTRY", ":memory:", 1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    AsPlotFile(data, size);
    AsSettingsValues(data, size);
    return 0;
}
