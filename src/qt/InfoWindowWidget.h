#pragma once
#include <QWidget>

class QPainter;
class QScrollBar;

namespace vexplot {

class CUIW_InfoWnd;
struct InfoContent;

// The info window on screen: paints the caption strip ("Info" and the
// close, transparent and dock buttons), the text lines and the scroll bar
// from its logic object, draws the logic's text mask for the transparent
// shape, and passes mouse, wheel and keys on. Rules live in the logic.
class InfoWindowWidget : public QWidget {
    Q_OBJECT
public:
    explicit InfoWindowWidget(QWidget* parent);
    ~InfoWindowWidget() override;

    // `logic` is borrowed and outlives its binding; null unbinds.
    void Bind(CUIW_InfoWnd* logic);
    CUIW_InfoWnd* Logic() const { return logic_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Unbind();
    void SyncScrollBar();
    void OnScrollAction(int action);
    void PaintCaption(QPainter& painter);

    CUIW_InfoWnd* logic_ = nullptr;
    QScrollBar* scrollBar_ = nullptr;
};

}  // namespace vexplot
