#pragma once
#include <QWidget>

namespace vexplot {

class CToolsCtrl;

// The window of a title-bar button ("M", "L"): paints the button's face
// and caption from its logic object and passes the mouse to it. Sunken
// while pressed, greyed caption while the button ignores presses.
class ToolsButtonWidget : public QWidget {
    Q_OBJECT
public:
    explicit ToolsButtonWidget(QWidget* parent);

    // `logic` is borrowed and outlives the widget's use of it; null unbinds.
    void Bind(CToolsCtrl* logic);
    CToolsCtrl* Logic() const { return logic_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;

private:
    CToolsCtrl* logic_ = nullptr;
};

}  // namespace vexplot
