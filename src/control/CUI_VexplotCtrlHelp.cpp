// The help commands (the keyboard map and the about box) and "External
// Resampling", which hands the host the range the user wants resampled
// through the Resample event.
#include <algorithm>
#include <array>
#include <cmath>

#include "com/ComError.h"
#include "control/AboutLogic.h"
#include "control/CUI_VexplotCtrl.h"
#include "control/CommandIds.h"
#include "control/KeyboardMapLogic.h"
#include "engine/IGraphEngineInfo.h"
#include "settings/SettingsStore.h"
#include "vexplot/Version.h"

namespace vexplot {

namespace {

constexpr const char* kNoRange = "For external resampling you must create or select region or zoom visible range.";
constexpr const char* kSameRange = "Data range and visible range is identical. Do you want external resampling?";

// The scale's values at the first and last shown index, in rising order.
bool ShownSpan(IGraphData* data, HRESULT (IGraphData::*get)(SafeArray*), int32_t first, int32_t count,
               double* low, double* high) {
    SafeArray scale;
    if (FAILED((data->*get)(&scale))) return false;
    const std::span<const double> values = scale.Values();
    if (values.empty()) return false;
    const auto clamp = [&](int64_t i) { return values[static_cast<size_t>(std::clamp<int64_t>(i, 0, values.size() - 1))]; };
    const double a = clamp(first);
    const double b = clamp(int64_t{first} + std::max(count, 1) - 1);
    *low = std::min(a, b);
    *high = std::max(a, b);
    return std::isfinite(*low) && std::isfinite(*high);
}

}  // namespace

void CUI_VexplotCtrl::AddHelpCommands() {
    commands_.Add(cmd::kKeyboardMap, {}, [this] { KeyboardMapCommand(); });
    commands_.Add(cmd::kAbout, {}, [this] { AboutBox(); });
    commands_.Add(cmd::kExternalResampling, [this] { return CommandTable::EntryState{IsCreated(), false}; },
                  [this] { ExternalResamplingCommand(); });
}

// -- keyboard map and about box --

void CUI_VexplotCtrl::KeyboardMapCommand() {
    if (!site_) return;
    KeyboardMapLogic map;
    site_->RunDialog(map);
}

CUI_VexplotCtrl::AboutInfo CUI_VexplotCtrl::About() {
    AboutInfo info;
    info.name = "Vexplot";
    info.version = Version();
    if (IGraphEngine* engine = GetEngine()) {
        info.engine = EngineName();
        if (const ComPtr<IGraphEngineInfo> details = ComPtr<IGraphEngine>(engine).As<IGraphEngineInfo>()) {
            std::array<char, 512> buffer{};
            if (details->GetRenderer(buffer.data(), static_cast<uint32_t>(buffer.size())) == S_OK)
                info.renderer = buffer.data();
        }
    }
    info.settings = store_ ? store_->Path() : SettingsStore::DefaultPath();
    return info;
}

void CUI_VexplotCtrl::AboutBox() {
    if (!site_) return;
    const AboutInfo info = About();
    AboutLogic about(info.name,
                     {{"Version", info.version},
                      {"Graph engine", info.engine.empty() ? "none running" : info.engine},
                      {"Renderer", info.renderer.empty() ? "unknown" : info.renderer},
                      {"Settings", info.settings}});
    site_->RunDialog(about);
}

// -- external resampling --

std::optional<DataRect> CUI_VexplotCtrl::ResampleRange() {
    CGD_GraphObject* graph = Active();
    if (!graph || !graph->Data()) return std::nullopt;
    const CGD_GraphObject::Geometry& g = graph->GetGeometry();
    DataRect range{};
    if (!ShownSpan(graph->Data(), &IGraphData::GetXScale, g.firstShownX, g.shownXCount, &range.xMin, &range.xMax) ||
        !ShownSpan(graph->Data(), &IGraphData::GetYScale, g.firstShownY, g.shownYCount, &range.yMin, &range.yMax))
        return std::nullopt;
    return range;
}

void CUI_VexplotCtrl::ExternalResamplingCommand() {
    const std::optional<DataRect> range = ResampleRange();
    if (!range) {
        ShowMessage(kNoRange, static_cast<uint32_t>(MessageButtons::Ok));
        return;
    }
    const CGD_GraphObject::Geometry& g = Active()->GetGeometry();
    const bool whole = g.firstShownX == 0 && g.firstShownY == 0 && g.shownXCount == g.xCount &&
                       g.shownYCount == g.yCount;
    if (whole && ShowMessage(kSameRange, static_cast<uint32_t>(MessageButtons::YesNo)) != kAnswerYes) return;
    FireResample(*range);
}

}  // namespace vexplot
