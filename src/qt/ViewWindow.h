#pragma once
#include <QImage>
#include <QWidget>

#include "site/IControlSite.h"

namespace vexplot {

// A window whose pixels the control paints: the two view windows (the
// engine's 2-D device and 3-D view draw into them) and the control window
// itself, which is mostly covered by its children. Paints go to the
// handler at the screen's device pixel ratio, so the engine draws as many
// pixels as the screen shows; input and sizes go to the handler in client
// pixels.
class ViewWindow final : public QWidget {
public:
    ViewWindow(QWidget* parent, IWindowHandler* handler, WindowHandle handle, bool paintsPixels);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void Mouse(QMouseEvent* event, MouseEvent::Kind kind);

    IWindowHandler* handler_;
    WindowHandle handle_;
    bool paintsPixels_;
    QImage image_;  // reused between paints
};

}  // namespace vexplot
