// The file commands of the pop-up menu and their accelerators: whole plots
// (".vxg"), the active graph object's data (".3do") and palette files
// (".plt"). Each asks for its file through the site's file dialog; a failure
// is told to the user in a message box (and raised as the Error event where
// the underlying method raises it) and changes nothing.
#include <fstream>
#include <iterator>

#include "com/ComError.h"
#include "com/ErrorInfo.h"
#include "com/IPersist.h"
#include "control/CUI_VexplotCtrl.h"
#include "control/CommandIds.h"
#include "model/PaletteFile.h"

namespace vexplot {

namespace {

constexpr const char* kPlotFilter = "Vexplot Data (*.vxg)";
constexpr const char* kDataFilter = "3DO file (*.3do)";
constexpr const char* kPaletteFilter = "Palette files(*.plt)";
// Palette files hold at most PaletteFile::kMaxColors lines of a dozen
// characters; anything much larger was chosen by mistake.
constexpr std::streamsize kMaxPaletteBytes = 4 << 20;

bool ReadText(const std::string& path, std::string* text, std::string* error) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        *error = "Cannot open \"" + path + "\".";
        return false;
    }
    text->resize(static_cast<size_t>(kMaxPaletteBytes) + 1);
    in.read(text->data(), kMaxPaletteBytes + 1);
    text->resize(static_cast<size_t>(in.gcount()));
    return true;
}

}  // namespace

void CUI_VexplotCtrl::AddFileCommands() {
    auto created = [this] { return CommandTable::EntryState{IsCreated(), false}; };
    commands_.Add(cmd::kLoadVexplot, created, [this] { LoadPlotCommand(); });
    commands_.Add(cmd::kSaveVexplot, created, [this] { SavePlotCommand(); });
    commands_.Add(cmd::kLoadData, created, [this] { LoadDataCommand(); });
    commands_.Add(cmd::kSaveData, [this] { return CommandTable::EntryState{Active() != nullptr, false}; },
                  [this] { SaveDataCommand(); });
    commands_.Add(cmd::kLoadPalette, created, [this] { LoadPaletteCommand(); });
    commands_.Add(cmd::kSavePalette, created, [this] { SavePaletteCommand(); });
}

std::optional<std::string> CUI_VexplotCtrl::AskForFile(bool save, const char* title, const char* filter,
                                                       const char* extension) {
    if (!site_) return std::nullopt;
    FileDialogRequest request;
    request.save = save;
    request.title = title;
    request.filter = filter;
    request.extension = extension;
    std::optional<std::string> path = site_->ChooseFile(request);
    if (path && path->empty()) path.reset();
    return path;
}

void CUI_VexplotCtrl::ReportToUser(const std::function<bool(std::string* error)>& operation) {
    std::vector<std::string> raised;
    std::vector<std::string>* outer = collectedErrors_;
    collectedErrors_ = &raised;
    std::string error;
    bool ok = false;
    try {
        ok = operation(&error);
    } catch (...) {
        collectedErrors_ = outer;
        throw;
    }
    collectedErrors_ = outer;
    if (ok) return;
    std::string text = error;
    for (const std::string& line : raised) text += (text.empty() ? "" : "\n") + line;
    ShowMessage(text.empty() ? "The operation failed." : text.c_str(), 0);
}

// -- whole plots --

void CUI_VexplotCtrl::LoadPlotCommand() {
    const auto path = AskForFile(false, "Load Vexplot", kPlotFilter, ".vxg");
    if (!path) return;
    ReportToUser([&](std::string*) { return OpenPlotFile(*path); });
}

void CUI_VexplotCtrl::SavePlotCommand() {
    const auto path = AskForFile(true, "Save Vexplot", kPlotFilter, ".vxg");
    if (!path) return;
    // A failing save raises the Error event naming the file and the reason,
    // which ReportToUser shows.
    ReportToUser([&](std::string*) { return SaveStateFile(*path); });
}

// -- the active graph object's data --

void CUI_VexplotCtrl::LoadDataCommand() {
    // Asked first, so the user knows what the file will do before choosing it.
    CGD_GraphObject* replaced = nullptr;
    if (CGD_GraphObject* active = Active())
        if (ShowMessage("Replace active graph object?", static_cast<uint32_t>(MessageButtons::YesNo)) == kAnswerYes)
            replaced = active;
    const auto path = AskForFile(false, "Load Data", kDataFilter, ".3do");
    if (!path) return;
    ReportToUser([&](std::string* error) {
        if (FAILED(LoadDataFile(*path, error))) return false;
        // The old object goes only once the new one is shown, so a file that
        // fails to load loses nothing.
        if (replaced) DeleteGraphObject(replaced);
        return true;
    });
}

bool CUI_VexplotCtrl::SaveDataFile(const std::string& path, std::string* error) {
    std::string reason;
    CGD_GraphObject* graph = Active();
    const ComPtr<IPersistFile> file = graph ? ComPtr<IGraphData>(graph->Data()).As<IPersistFile>() : nullptr;
    if (!graph) {
        reason = "There is no graph object to save.";
    } else if (!file) {
        reason = "The data of the active graph object cannot be saved to a file.";
    } else if (const HRESULT hr = file->Save(path.c_str(), false); FAILED(hr)) {
        const std::string detail = TakeErrorInfo(IPersistFile::kIid);
        reason = "Cannot save \"" + path + "\": " + (detail.empty() ? HResultText(hr) : detail) + ".";
    } else {
        return true;
    }
    if (error) *error = reason;
    return false;
}

void CUI_VexplotCtrl::SaveDataCommand() {
    const auto path = AskForFile(true, "Save Data", kDataFilter, ".3do");
    if (!path) return;
    ReportToUser([&](std::string* error) { return SaveDataFile(*path, error); });
}

// -- palette files --

bool CUI_VexplotCtrl::LoadPaletteFile(const std::string& path, std::string* error) {
    std::string text;
    std::string reason;
    if (ReadText(path, &text, &reason)) {
        if (text.size() <= static_cast<size_t>(kMaxPaletteBytes) && PaletteFile::LooksLikePalette(text)) {
            SetPaletteFile(path);
            return true;
        }
        reason = "\"" + path + "\" is not a palette file (one \"red,green,blue\" line per colour).";
    }
    if (error) *error = reason;
    return false;
}

bool CUI_VexplotCtrl::SavePaletteFile(const std::string& path, std::string* error) {
    if (palette_.SaveFile(path) == 1) return true;
    if (error)
        *error = palette_.GetCount() == 0 ? "The palette has no colours to save."
                                          : "Cannot save \"" + path + "\": the folder cannot be written to.";
    return false;
}

void CUI_VexplotCtrl::LoadPaletteCommand() {
    const auto path = AskForFile(false, "Load Palette", kPaletteFilter, ".plt");
    if (!path) return;
    ReportToUser([&](std::string* error) { return LoadPaletteFile(*path, error); });
}

void CUI_VexplotCtrl::SavePaletteCommand() {
    const auto path = AskForFile(true, "Save Palette", kPaletteFilter, ".plt");
    if (!path) return;
    ReportToUser([&](std::string* error) { return SavePaletteFile(*path, error); });
}

}  // namespace vexplot
