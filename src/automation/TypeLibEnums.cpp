#include "automation/TypeLibEnums.h"

namespace vexplot {

namespace {

TypeLibEnum AxisStyles() {
    // Cross, Face0..Face9, Box0..Box9, Skew.
    static const char* const kFaces[] = {"Face0", "Face1", "Face2", "Face3", "Face4",
                                         "Face5", "Face6", "Face7", "Face8", "Face9"};
    static const char* const kBoxes[] = {"Box0", "Box1", "Box2", "Box3", "Box4",
                                         "Box5", "Box6", "Box7", "Box8", "Box9"};
    TypeLibEnum e{"enumAxisStyles", {{"Cross", 0}}};
    for (int i = 0; i < 10; ++i) e.values.push_back({kFaces[i], 1 + i});
    for (int i = 0; i < 10; ++i) e.values.push_back({kBoxes[i], 11 + i});
    e.values.push_back({"Skew", 21});
    return e;
}

}  // namespace

const std::vector<TypeLibEnum>& TypeLibEnums() {
    static const std::vector<TypeLibEnum> enums = {
        {"enumGraphStyle", {{"Wireframe", 0}, {"Surface", 1}, {"Barchart", 2}, {"Lines", 3}, {"Points", 4}}},
        {"enumGraphType", {{"HeightPlot", 1}, {"Image", 2}, {"Vector", 3}}},
        {"enumStandardPalettes",
         {{"User_Defined", 0}, {"GreyScale", 1}, {"GreyScale_Banded", 2}, {"GreyScale_Inverted", 3},
          {"Rainbow", 4}, {"Rainbow_Banded", 5}, {"Rainbow_Inverted", 6}}},
        {"enumViewerModes", {{"Fixed_Viewer", 0}, {"Examine_Viewer", 1}, {"Pan_Viewer", 2}}},
        {"enumViewTypes", {{"View3D", 0}, {"ViewXZ", 1}, {"ViewXY", 2}, {"ViewYZ", 3}}},
        {"enumShadingModes", {{"FlatShading", 0}, {"SmoothShading", 1}}},
        {"enumTextureModes", {{"NeverTexture", 0}, {"AlwaysTexture", 1}, {"AutoTexture", 2}}},
        {"enumImageOrientation", {{"Identity", 0}, {"XFlip", 1}, {"YFlip", 2}, {"XYFlip", 3}}},
        AxisStyles(),
        {"enumDataTypes",
         {{"AGL_UCHAR", 4096}, {"AGL_CHAR", 4097}, {"AGL_USHORT", 4098}, {"AGL_SHORT", 4099}, {"AGL_ULONG", 4100},
          {"AGL_LONG", 4101}, {"AGL_FLOAT", 4102}, {"AGL_DOUBLE", 4103}}},
        {"enumWindows",
         {{"wndInfo", 1}, {"wndLegend", 2}, {"wndNavigator", 4}, {"wndTitle", 8}, {"wndStatus", 16}, {"wndAll", 31}}},
        {"enum1DMode", {{"m1dNone", 0}, {"m1dYZPlane", 1}, {"m1dXZPlane", 2}}},
        {"enumPlotStyle", {{"plsNone", 0}, {"plsPoint", 1}, {"plsLine", 2}, {"plsDropLine", 3}}},
        {"enumPointStyle",
         {{"posNone", 0}, {"posCircle", 1}, {"posSquare", 2}, {"posX", 3}, {"posCross", 4}, {"posTriangle", 5},
          {"posStar", 6}}},
    };
    return enums;
}

}  // namespace vexplot
