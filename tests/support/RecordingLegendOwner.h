#pragma once
// The control as the legend sees it, over a graph object list: answers
// come from the fields, and what the legend asks of it is recorded.
#include <string>
#include <vector>

#include "model/CGD_GraphObjectList.h"
#include "ui/CUIW_LegendWindow.h"

namespace vexplot::test {

class RecordingLegendOwner final : public ILegendOwner {
public:
    CGD_GraphObjectList* LegendGraphObjects() override { return list; }
    void MakeGraphObjectActive(int32_t index) override {
        calls.push_back("active " + std::to_string(index));
        list->SetActiveIndex(index);
    }
    void RedrawPlot() override { ++redraws; }
    int32_t LegendViewMode() override { return viewMode; }
    void SetTitleText(const std::string& text) override { title = text; }
    const CGD_Palette* PreviewPalette() override { return palette; }
    bool CanEditData(const CGD_GraphObject*) override { return canEditData; }
    bool CanEditProperties(const CGD_GraphObject*) override { return canEditProperties; }
    void EditGraphData(CGD_GraphObject*) override { calls.push_back("edit data"); }
    bool EditGraphProperties(CGD_GraphObject*) override {
        calls.push_back("edit properties");
        return confirmProperties;
    }
    void DeleteGraphObject(CGD_GraphObject* graph) override {
        calls.push_back("delete");
        list->Remove(graph);
    }

    CGD_GraphObjectList* list = nullptr;
    const CGD_Palette* palette = nullptr;
    int32_t viewMode = 1;
    bool canEditData = false;
    bool canEditProperties = false;
    bool confirmProperties = true;
    int redraws = 0;
    std::string title;
    std::vector<std::string> calls;
};

}  // namespace vexplot::test
