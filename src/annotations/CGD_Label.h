#pragma once
#include <cstdint>
#include <string>

#include "annotations/CGD_Annotation.h"
#include "model/LogicalFont.h"

namespace vexplot {

// A label: a text in a box at its own point (the text point, moved by
// MoveText), joined by a leader line to the anchor it annotates. With
// AppendCoordinates the text reads "%s (%s, %s, %s)": the caption, then the
// anchor's x, y and z in the label's number style (the axes' formats:
// 0 "Decimal", 1 "Exponential", 2 "Engineering", 3 "Base10", any other
// value four fixed decimals).
//
// Its record holds no fields: a label comes back from a plot file as
// "Label Text Here" with its defaults, as files have always stored it.
class CGD_Label final : public CGD_Annotation {
public:
    CGD_Label();
    ~CGD_Label() override;

    // ArchiveObject:
    const ArchiveClass& GetRuntimeClass() const override { return RuntimeClass(); }
    static const ArchiveClass& RuntimeClass();
    void Serialize(CArchive& archive) override;

    // CGD_Annotation:
    void Draw() override;
    bool ShowProperties() override;
    bool HitTest(int32_t x, int32_t y) override;
    // Moves the text box under (x, y); the anchor stays where it is.
    void DragTo(int32_t x, int32_t y) override;
    void SetCaption(const std::string& text) override;
    void SetPosition(double x, double y, double z) override;
    bool Selectable() const override { return true; }

    // The text as drawn; UpdateText rebuilds it from the caption, the
    // anchor and the style.
    const std::string& Text() const { return text_; }
    void UpdateText();
    // A coordinate in the label's style.
    std::string FormatCoordinate(double value) const;
    // The text box in client pixels of the current view; false when it is
    // not on screen or cannot be measured.
    bool TextBox(PixelRect* box) const;

    // getters:
    double TextX() const { return textX_; }
    double TextY() const { return textY_; }
    double TextZ() const { return textZ_; }
    bool AppendCoordinates() const { return appendCoordinates_ != 0; }
    bool DrawLine() const { return drawLine_ != 0; }
    uint32_t Color() const { return color_; }
    uint32_t BoxColor() const { return secondColor_; }
    int16_t Style() const { return style_; }
    // Non-zero: the Base10 style writes the superscript markup.
    int32_t MarkupFlag() const { return markup_; }
    const LogicalFont& Font() const { return font_; }
    // setters (the text follows):
    void MoveText(double x, double y, double z);
    void SetAppendCoordinates(bool append);
    void SetDrawLine(bool draw) { drawLine_ = draw ? 1 : 0; }
    void SetColor(uint32_t color) { color_ = color & 0x00FFFFFFu; }
    void SetBoxColor(uint32_t color) { secondColor_ = color & 0x00FFFFFFu; }
    void SetStyle(int16_t style);
    void SetMarkupFlag(int32_t flag);
    void SetFont(const LogicalFont& font) { font_ = font; }

private:
    void Draw3D();
    void DrawFlat();

    double textX_ = 0.0;
    double textY_ = 0.0;
    double textZ_ = 0.0;
    int32_t appendCoordinates_ = 1;
    int32_t reserved_ = 0;
    uint32_t color_ = 0xFFFFFF;
    uint32_t secondColor_ = 255;
    int32_t flag1_ = 0;
    int32_t drawLine_ = 1;
    int32_t flag2_ = 0;
    LogicalFont font_{"Times New Roman", 16};
    int32_t markup_ = 0;
    int16_t style_ = 0;
    std::string text_;
};

}  // namespace vexplot
