#pragma once
#include <cstdint>
#include <string>

#include "control/CUI_VexplotCtrl.h"

namespace vexplot {

class CArchive;
class CUI_VexplotCtrl;

// The control's own serialization: the byte stream of a plot file (".vxg")
// and of a saved control state. Items in storing order (CArchive
// primitives; "int" is an int32, "short" an int16, colours 0x00BBGGRR):
//
//  header (always):
//    uint32   version 0x00010001: 1.1 writes graph object records with
//             their drawing settings; 1.0 streams still load. A stream of
//             another major version, or of a newer minor one, is refused.
//    int, int the control's extent: width and height in pixels
//    string   the stock Caption (the title bar's text)
//  everything below only when `whole` (the control's file flag is 1):
//    double   1.053, a format mark; not compared when read
//    int      the view mode; discarded when read
//    colour   BackgroundColor; string Engine (the running engine's name,
//             discarded when read: a saved state never swaps engines)
//    int x3   AutoHideLegend, ChildInfoWindow, ShowToolTips
//    X, Y, Z  each: string label; int ShowMajorGrid, ShowMinorGrid;
//             colour AxisColor, MajorGridColor, MinorGridColor;
//             short MajorTicks, MinorTicks, ScaleFormat, DisplayMode
//    colour x2 InfoTextColor, InfoBackColor
//    int x8   ShowDiffTracerInfo, ShowRegionInfo, ShowTracerInfo,
//             ShowMarkerInfo, ShowZoomInfo, InfoTransparent, InfoVisible,
//             ShowPositionInfo
//    string   InfoFont (face); int the info font's height
//    double x6 camera translation X, Y, Z and rotation X, Y, Z steps
//    short    Quality3D
//    string   the GraphEngine setting; int the data flag
//    int x3   FastHideLegend, MoveDirection, FixedAspectRatio
//    int x5   window visibility: title, status, info, legend, navigator
//    the palette record (CGD_Palette::Serialize)
//    the graph objects (GraphObjectListRecord), only while the control's
//             state-operation flag is set, i.e. not on the state paths
//    the object list (count, then class records): the axes X, Y, Z and
//             the colour bar's axis
//    the info window block, the legend block, the "L" button's record,
//             the "M" button's record (the one made second comes first)
//    when a 3-D view exists: camera position x, y, z, camera centre
//             x, y, z, and the scene scale (7 doubles)
//
// Loading reads the same items into the same members and applies them
// group by group: a group (header, settings with visibility, palette, graph
// objects, object list, each window block, camera) takes effect only once
// it has been read whole. A malformed stream raises ArchiveError; what was
// read before it stays applied, and the control is re-laid-out either way,
// so it is always left consistent and usable. A stream that ends where the
// camera would begin was saved without a 3-D view and loads as complete.
class ControlSerializer {
public:
    static constexpr uint32_t kVersion = 0x00010001;
    static constexpr double kFormatMark = 1.053;

    explicit ControlSerializer(CUI_VexplotCtrl& control) : control_(control) {}

    void Store(CArchive& archive, bool whole);
    void Load(CArchive& archive, bool whole);

    // The header and the settings block read on their own, without a
    // control (for describing a plot file); malformed bytes raise
    // ArchiveError as Load does.
    struct Header {
        uint32_t version = 0;
        int32_t width = 0;
        int32_t height = 0;
        std::string caption;
    };
    static Header ReadHeader(CArchive& archive);
    // Reads into `s` the values the block holds; the rest of `s` stays.
    static void ReadSettings(CArchive& archive, ControlSettings& s, CUI_VexplotCtrl::WindowVisibility& v);

private:
    struct Loaded;

    void StoreHeader(CArchive& archive);
    void LoadHeader(CArchive& archive, Loaded& loaded);
    void StoreSettings(CArchive& archive);
    void LoadSettings(CArchive& archive, Loaded& loaded);
    void StoreRecords(CArchive& archive);
    void LoadRecords(CArchive& archive, Loaded& loaded);
    void StoreObjectList(CArchive& archive);
    void LoadObjectList(CArchive& archive);
    void TakeAnnotations(class CGD_ObjectList& list);
    void StoreCamera(CArchive& archive);
    void LoadCamera(CArchive& archive, Loaded& loaded);
    // Pushes what was loaded to the windows and the engine, once.
    void ApplyLoaded(const Loaded& loaded);
    void ApplySettings();
    void ShowLoadedGraphs(const Loaded& loaded);

    CUI_VexplotCtrl& control_;
};

}  // namespace vexplot
