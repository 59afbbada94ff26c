#pragma once
#include <QWidget>

namespace vexplot {

class NavigatorPad;

// The window of the camera pad: paints the 48 x 48 pad (four arrows on the
// borders and a disc in the centre; the zone under the mouse lighter, the
// pressed one darker) and passes the mouse to its logic object.
class NavigatorWidget : public QWidget {
    Q_OBJECT
public:
    explicit NavigatorWidget(QWidget* parent);

    // `logic` is borrowed and outlives the widget's use of it; null unbinds.
    void Bind(NavigatorPad* logic);
    NavigatorPad* Logic() const { return logic_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    NavigatorPad* logic_ = nullptr;
};

}  // namespace vexplot
