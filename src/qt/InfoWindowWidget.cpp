#include "qt/InfoWindowWidget.h"

#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <qdrawutil.h>

#include <cstring>

#include "qt/QtFont.h"
#include "qt/QtInput.h"
#include "qt/SizingFrame.h"
#include "ui/CUIW_InfoWnd.h"

namespace vexplot {

namespace {

QColor ToQColor(uint32_t bgr) {
    return QColor(static_cast<int>(bgr & 0xFF), static_cast<int>((bgr >> 8) & 0xFF), static_cast<int>((bgr >> 16) & 0xFF));
}

QRect ToQRect(const PixelRect& r) { return QRect(r.left, r.top, r.right - r.left, r.bottom - r.top); }

// Draws the lines of the picture with the painter's origin at the
// picture's top-left; `mask` draws every line in black.
void DrawLines(QPainter& painter, const InfoContent& content, bool mask) {
    for (const InfoLine& line : content.lines) {
        painter.setPen(mask ? QColor(Qt::black) : ToQColor(line.color));
        const QRect strip(InfoLayout::kTextX, line.top, content.width - InfoLayout::kTextX, content.lineHeight);
        painter.drawText(strip, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, QString::fromStdString(line.text));
    }
}

// The logic's mask: the text in black on white, without smoothing so that
// the shape takes whole pixels, in the widget's logical pixels (the shape is
// a region in those, whatever the screen's scale).
bool RenderMask(const InfoContent& content, const LogicalFont& font, TextMask* mask) {
    if (content.width <= 0 || content.height <= 0) return false;
    QImage image(content.width, content.height, QImage::Format_RGB32);
    if (image.isNull()) return false;
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        QFont f = ToQFont(font);
        f.setStyleStrategy(QFont::NoAntialias);
        painter.setFont(f);
        DrawLines(painter, content, true);
    }
    mask->width = image.width();
    mask->height = image.height();
    mask->stride = static_cast<int32_t>(image.bytesPerLine() / 4);
    mask->pixels.resize(static_cast<size_t>(mask->stride) * static_cast<size_t>(mask->height));
    std::memcpy(mask->pixels.data(), image.constBits(), mask->pixels.size() * sizeof(uint32_t));
    return true;
}

// The glyph of a caption button inside `r`.
void DrawGlyph(QPainter& painter, InfoButton button, QRect r) {
    painter.setPen(QPen(Qt::black, 1));
    r.adjust(3, 3, -4, -4);
    switch (button) {
        case InfoButton::Close:
            painter.drawLine(r.topLeft(), r.bottomRight());
            painter.drawLine(r.topRight(), r.bottomLeft());
            break;
        case InfoButton::Transparent: {  // the restore glyph: two overlapping windows
            const QRect back = r.adjusted(2, 0, 0, -2);
            const QRect front = r.adjusted(0, 2, -2, 0);
            painter.drawRect(back);
            painter.fillRect(front, QColor(0xE0, 0xE0, 0xE0));
            painter.drawRect(front);
            break;
        }
        case InfoButton::Dock: {  // an arrow to the right
            painter.setBrush(Qt::black);
            const int middle = r.center().y();
            painter.drawPolygon(QPolygon({QPoint(r.left() + 1, r.top()), QPoint(r.right(), middle),
                                          QPoint(r.left() + 1, r.bottom())}));
            painter.setBrush(Qt::NoBrush);
            break;
        }
        case InfoButton::None: break;
    }
}

}  // namespace

InfoWindowWidget::InfoWindowWidget(QWidget* parent) : QWidget(parent) {
    // A click gives it the keys that scroll it (the control's accelerators
    // still reach the control from here).
    setFocusPolicy(Qt::ClickFocus);
    scrollBar_ = new QScrollBar(Qt::Vertical, this);
    scrollBar_->hide();
    scrollBar_->setSingleStep(1);
    scrollBar_->setPageStep(1);
    connect(scrollBar_, &QScrollBar::actionTriggered, this, &InfoWindowWidget::OnScrollAction);
    // Floating, the window is sized by its outer pixels as a framed window
    // is; docked, its owner lays it out.
    new SizingFrame(this, QSize(CUIW_InfoWnd::kMinWidth, CUIW_InfoWnd::kMinHeight),
                    [this] { return logic_ != nullptr && logic_->Sizable(); },
                    [this](const PixelRect& rect) {
                        if (logic_) logic_->OnSizedByUser(rect);
                    });
}

InfoWindowWidget::~InfoWindowWidget() { Unbind(); }

void InfoWindowWidget::Bind(CUIW_InfoWnd* logic) {
    Unbind();
    logic_ = logic;
    if (logic_) {
        logic_->SetMaskRenderer(RenderMask);
        logic_->SetLayoutHook([this] { SyncScrollBar(); });
        logic_->Refresh();
    }
    SyncScrollBar();
    update();
}

void InfoWindowWidget::Unbind() {
    if (!logic_) return;
    logic_->SetMaskRenderer({});
    logic_->SetLayoutHook({});
    logic_ = nullptr;
}

void InfoWindowWidget::SyncScrollBar() {
    if (!logic_ || !logic_->ScrollBarShown()) {
        scrollBar_->hide();
        return;
    }
    const QSignalBlocker block(scrollBar_);
    scrollBar_->setGeometry(ToQRect(logic_->ScrollBarRect()));
    scrollBar_->setRange(0, logic_->Scroll().range);
    scrollBar_->setValue(logic_->Scroll().position);
    scrollBar_->show();
}

void InfoWindowWidget::OnScrollAction(int action) {
    if (!logic_) return;
    switch (action) {
        case QAbstractSlider::SliderSingleStepAdd: logic_->ScrollBy(InfoScrollAction::LineDown); break;
        case QAbstractSlider::SliderSingleStepSub: logic_->ScrollBy(InfoScrollAction::LineUp); break;
        case QAbstractSlider::SliderPageStepAdd: logic_->ScrollBy(InfoScrollAction::PageDown); break;
        case QAbstractSlider::SliderPageStepSub: logic_->ScrollBy(InfoScrollAction::PageUp); break;
        case QAbstractSlider::SliderToMinimum: logic_->ScrollBy(InfoScrollAction::ThumbTrack, 0); break;
        case QAbstractSlider::SliderToMaximum:
            logic_->ScrollBy(InfoScrollAction::ThumbTrack, logic_->Scroll().range);
            break;
        case QAbstractSlider::SliderMove:
            logic_->ScrollBy(InfoScrollAction::ThumbTrack, scrollBar_->sliderPosition());
            break;
        default: break;
    }
    // The slider applies its own step after this signal: make it the logic's.
    scrollBar_->setSliderPosition(logic_->Scroll().position);
}

void InfoWindowWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!logic_) {
        painter.fillRect(rect(), palette().window());
        return;
    }
    PaintCaption(painter);
    const QRect client = ToQRect(logic_->ClientRect());
    if (logic_->Transparent()) {
        // The shape leaves only the letters (and the caption) on screen.
        painter.fillRect(client.united(ToQRect(logic_->ScrollBarRect())), ToQColor(logic_->TextColor()));
        return;
    }
    // A window larger than its text shows the background beside and below
    // it; a narrower one cuts the lines at its right edge.
    painter.fillRect(client, ToQColor(logic_->BackColor()));
    painter.save();
    painter.setClipRect(client);
    painter.translate(client.left(), client.top() - logic_->Scroll().offset);
    painter.setFont(ToQFont(logic_->Font()));
    DrawLines(painter, logic_->Content(), false);
    painter.restore();
    // The outline of a floating window, where its sizing frame lies.
    if (logic_->Sizable()) {
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void InfoWindowWidget::PaintCaption(QPainter& painter) {
    const int height = logic_->CaptionHeight();
    if (height <= 0) return;
    const QRect strip(0, 0, width(), height);
    painter.fillRect(strip, palette().color(QPalette::Highlight));
    QFont title = font();
    title.setPixelSize(std::max(8, height - 5));
    title.setBold(true);
    painter.setFont(title);
    painter.setPen(palette().color(QPalette::HighlightedText));
    painter.drawText(strip.adjusted(4, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, QString::fromUtf8(CUIW_InfoWnd::kTitle));
    for (const InfoButton button : {InfoButton::Close, InfoButton::Transparent, InfoButton::Dock}) {
        const QRect r = ToQRect(logic_->Caption().ButtonRect(button));
        if (r.isEmpty()) continue;
        const QBrush face(QColor(0xE0, 0xE0, 0xE0));
        qDrawShadePanel(&painter, r, palette(), logic_->ButtonPushed(button), 1, &face);
        DrawGlyph(painter, button, logic_->ButtonPushed(button) ? r.translated(1, 1) : r);
    }
}

void InfoWindowWidget::resizeEvent(QResizeEvent*) {
    if (logic_ && logic_->Window() != 0) logic_->OnSize(logic_->Window(), width(), height());
    SyncScrollBar();
}

void InfoWindowWidget::mousePressEvent(QMouseEvent* event) {
    if (logic_) logic_->OnMouse(logic_->Window(), ToMouseEvent(*event, MouseEvent::Kind::Press));
}

void InfoWindowWidget::mouseMoveEvent(QMouseEvent* event) {
    if (logic_) logic_->OnMouse(logic_->Window(), ToMouseEvent(*event, MouseEvent::Kind::Move));
}

void InfoWindowWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (logic_) logic_->OnMouse(logic_->Window(), ToMouseEvent(*event, MouseEvent::Kind::Release));
}

void InfoWindowWidget::wheelEvent(QWheelEvent* event) {
    if (logic_) logic_->OnMouse(logic_->Window(), ToMouseEvent(*event));
}

void InfoWindowWidget::keyPressEvent(QKeyEvent* event) {
    const auto key = ToKeyEvent(*event);
    if (logic_ && key) logic_->OnKey(logic_->Window(), *key);
    else QWidget::keyPressEvent(event);
}

}  // namespace vexplot
