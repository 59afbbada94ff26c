// The palette editor and the data editor as the control opens them: the
// "Edit Palette" command, the legend's "&Data" and "&Properties" entries and
// the graph objects' data editors.
#include <vector>

#include "control/CUI_VexplotCtrl.h"
#include "control/CommandIds.h"
#include "ui/CUIW_DataEditor.h"
#include "ui/PaletteEditor.h"

namespace vexplot {

void CUI_VexplotCtrl::AddPaletteCommands() {
    commands_.Add(cmd::kEditPalette, [this] { return CommandTable::EntryState{site_ != nullptr, false}; },
                  [this] { EditPalette(); });
}

void CUI_VexplotCtrl::TakePaletteColors(std::span<const uint32_t> colors) {
    palette_.Clear();
    for (size_t i = 0; i < colors.size(); ++i) palette_.SetColor(static_cast<int64_t>(i), colors[i]);
    ApplyPalette();
}

int32_t CUI_VexplotCtrl::EditPalette() {
    if (!site_) return kAnswerCancel;
    const std::vector<uint32_t> before(palette_.Colors().begin(), palette_.Colors().end());
    const auto size = static_cast<int32_t>(before.empty() ? CGD_Palette::kStandardCount : before.size());
    bool changed = false;
    PaletteEditor editor(size, [this, &changed](const PaletteEditor& e) {
        changed = true;
        TakePaletteColors(e.PaletteColors());
    });
    const int32_t answer = site_->RunDialog(editor);
    if (!changed) return answer;
    if (answer == kAnswerOk) {
        SetModified();
    } else {
        TakePaletteColors(before);
    }
    UpdateLegend();  // the previews are painted with the palette
    return answer;
}

bool CUI_VexplotCtrl::CanEditData(const CGD_GraphObject* graph) {
    return site_ != nullptr && graph != nullptr && graph->Access() != nullptr;
}

bool CUI_VexplotCtrl::OpenDataEditor(CGD_GraphObject* graph) {
    if (!graph) graph = Active();
    if (!CanEditData(graph)) return false;
    CGD_GraphObject::DataEditor* editor = nullptr;
    const bool ok = Guarded([&] {
        editor = graph->OpenDataEditor([this, graph](CGD_GraphObject::DataEditorContents contents) {
            auto ask = [this](const std::string& question) {
                return site_ ? site_->MessageBox(question, CUIW_DataEditor::kCaption, MessageButtons::YesNo)
                             : kAnswerNo;
            };
            auto opened = std::make_unique<CUIW_DataEditor>(*graph, std::move(contents), *site_, ask);
            if (!opened->Show()) opened.reset();
            return std::unique_ptr<CGD_GraphObject::DataEditor>(std::move(opened));
        });
    });
    return ok && editor != nullptr;
}

// The legend's "&Properties" opens the control's property sheet, where the
// data set's drawing is set.
bool CUI_VexplotCtrl::CanEditProperties(const CGD_GraphObject* graph) { return graph != nullptr && site_ != nullptr; }

bool CUI_VexplotCtrl::EditGraphProperties(CGD_GraphObject*) { return DoCommand(cmd::kControlProperties); }

}  // namespace vexplot
