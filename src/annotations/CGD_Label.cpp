#include "annotations/CGD_Label.h"

#include "annotations/AnnotationDrawing.h"
#include "annotations/CoordinateText.h"
#include "annotations/LabelDialog.h"
#include "model/ArchiveClass.h"
#include "model/IViewHost.h"
#include "model/NumberFormat.h"
#include "site/IControlSite.h"

namespace vexplot {

namespace {

constexpr int32_t kPadding = 4;
constexpr uint32_t kBoxFill = 0x202020;

}  // namespace

CGD_Label::CGD_Label() : CGD_Annotation(AnnotationKind::Label) {
    caption_ = "Label Text Here";
    UpdateText();
}

CGD_Label::~CGD_Label() = default;

const ArchiveClass& CGD_Label::RuntimeClass() {
    static const ArchiveClass cls("CGD_Label", 1, [] { return std::make_unique<CGD_Label>(); });
    return cls;
}

// A label's record is empty in both directions.
void CGD_Label::Serialize(CArchive&) {}

// -- text --

std::string CGD_Label::FormatCoordinate(double value) const {
    switch (style_) {
    case 0: return FormatValue(value, ScaleFormat::Decimal, 12, TextMarkup::Plain);
    case 1: return FormatValue(value, ScaleFormat::Exponential, 12, TextMarkup::Plain);
    case 2: return FormatValue(value, ScaleFormat::Engineering, 12, TextMarkup::Plain);
    case 3: return FormatValue(value, ScaleFormat::Base10, 12, markup_ ? TextMarkup::Superscript : TextMarkup::Plain);
    default: return FormatValue(value, static_cast<ScaleFormat>(style_), 4, TextMarkup::Plain);
    }
}

void CGD_Label::UpdateText() {
    text_ = caption_;
    if (appendCoordinates_)
        text_ += CoordinateText::Join(
            {" (", FormatCoordinate(x_), ", ", FormatCoordinate(y_), ", ", FormatCoordinate(z_), ")"});
}

void CGD_Label::SetCaption(const std::string& text) {
    caption_ = text;
    UpdateText();
}

void CGD_Label::SetPosition(double x, double y, double z) {
    CGD_Annotation::SetPosition(x, y, z);
    UpdateText();
}

void CGD_Label::MoveText(double x, double y, double z) {
    textX_ = x;
    textY_ = y;
    textZ_ = z;
}

void CGD_Label::SetAppendCoordinates(bool append) {
    appendCoordinates_ = append ? 1 : 0;
    UpdateText();
}

void CGD_Label::SetStyle(int16_t style) {
    style_ = style;
    UpdateText();
}

void CGD_Label::SetMarkupFlag(int32_t flag) {
    markup_ = flag;
    UpdateText();
}

// -- geometry --

bool CGD_Label::TextBox(PixelRect* box) const {
    const FontDescription font = font_.ToEngineFont();
    int32_t px = 0, py = 0, width = 0, height = 0;
    if (In3D()) {
        if (FAILED(projection_->ProjectPoint(textX_, textY_, textZ_, &px, &py))) return false;
        if (FAILED(projection_->MeasureText(text_.c_str(), &font, &width, &height))) return false;
    } else {
        if (!view_ || FAILED(view_->DataToClient(textX_, textY_, &px, &py))) return false;
        if (FAILED(view_->MeasureText(text_.c_str(), &font, &width, &height))) return false;
    }
    *box = {px, py, px + width + 2 * kPadding, py + height + 2 * kPadding};
    return true;
}

bool CGD_Label::HitTest(int32_t x, int32_t y) {
    PixelRect box{};
    return TextBox(&box) && x >= box.left && x < box.right && y >= box.top && y < box.bottom;
}

void CGD_Label::DragTo(int32_t x, int32_t y) {
    Point3 point{};
    if (!PointAt(x, y, &point)) return;
    MoveText(point.x, point.y, In3D() ? point.z : textZ_);
}

// -- drawing --

void CGD_Label::Draw() {
    if (In3D())
        Draw3D();
    else if (view_)
        DrawFlat();
}

void CGD_Label::Draw3D() {
    const Point3 anchor{x_, y_, z_};
    const Point3 text{textX_, textY_, textZ_};
    if (drawLine_) {
        const Point3 leader[] = {anchor, text};
        projection_->AddOverlayStroke(2, leader, color_, OverlayStroke::Solid, 1.0f, false);
    }
    projection_->AddOverlaySymbol(&anchor, PointStyle::Circle, 5.0f, color_);
    const FontDescription font = font_.ToEngineFont();
    const OverlayTextBox style{color_, kBoxFill, selected_ ? AnnotationDrawing::kSelectionColor : secondColor_,
                               kPadding};
    projection_->AddOverlayTextBox(&text, 0, 0, text_.c_str(), &font, &style);
}

void CGD_Label::DrawFlat() {
    int32_t ax = 0, ay = 0, tx = 0, ty = 0;
    if (FAILED(view_->DataToClient(x_, y_, &ax, &ay)) || FAILED(view_->DataToClient(textX_, textY_, &tx, &ty)))
        return;
    if (drawLine_) {
        const double leader[] = {ax + 0.5, ay + 0.5, tx + 0.5, ty + 0.5};
        view_->AddOverlayLines(2, leader, color_, OverlayStroke::Solid, 1.0f, false);
    }
    view_->AddOverlaySymbol(ax + 0.5, ay + 0.5, PointStyle::Circle, 5.0f, color_);
    const FontDescription font = font_.ToEngineFont();
    const OverlayTextBox style{color_, kBoxFill, selected_ ? AnnotationDrawing::kSelectionColor : secondColor_,
                               kPadding};
    view_->AddOverlayTextBox(tx, ty, text_.c_str(), &font, &style);
}

bool CGD_Label::ShowProperties() {
    if (!owner_) return false;
    LabelDialog dialog(*this);
    if (owner_->RunDialog(dialog) != kAnswerOk) return false;
    UpdateText();
    RefreshOwner();
    return true;
}

}  // namespace vexplot
