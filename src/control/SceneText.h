#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "engine/ExportScene.h"

namespace vexplot {

// How a text of an exported scene is laid out by writers that place glyphs
// themselves (PDF, EMF) or only by baseline (SVG): its em size, the runs of
// normal and superscript text ("2.5x10\SUP-3"), its width in the metrics of
// Arial / Helvetica (the same advance widths), and the baseline point that
// puts its box where the anchor says.
class SceneText {
public:
    struct Run {
        std::string text;  // UTF-8
        double size;       // em size in scene pixels
        double rise;       // baseline shift upwards, scene pixels
        double width;      // advance width, scene pixels
    };

    explicit SceneText(const ExportScene::Text& text);

    double EmSize() const { return em_; }
    const std::vector<Run>& Runs() const { return runs_; }
    double Width() const;
    // Counter-clockwise rotation in radians.
    double Angle() const { return angle_; }
    // The start of the baseline, in scene pixels (y down).
    double BaselineX() const { return baselineX_; }
    double BaselineY() const { return baselineY_; }
    // The font as the text asks: bold, italic, the face name.
    bool Bold() const { return bold_; }
    bool Italic() const { return italic_; }
    const std::string& Face() const { return face_; }

    // Advance width of one code point in em units, Helvetica's metrics
    // (0.556 for code points it has no entry for).
    static double AdvanceEm(char32_t cp);
    static double WidthEm(std::string_view utf8);
    // UTF-8 to code points; malformed bytes become U+FFFD.
    static std::u32string CodePoints(std::string_view utf8);

private:
    std::vector<Run> runs_;
    double em_ = 12;
    double angle_ = 0;
    double baselineX_ = 0, baselineY_ = 0;
    bool bold_ = false, italic_ = false;
    std::string face_;
};

}  // namespace vexplot
