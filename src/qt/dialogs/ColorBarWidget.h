#pragma once
#include <QWidget>
#include <algorithm>
#include <optional>

namespace vexplot {

class PaletteEditor;

// The palette editor's colour bar with the base-colour markers under it.
// In custom mode the markers can be edited with the mouse (drag an inner
// marker, double-click a marker to recolour it or the bar to add a colour,
// right-click for the marker and bar menus) and with the keys: Left and
// Right pick a marker, Shift+Left and Shift+Right move it, Space recolours
// it, Insert adds a colour beside it, Delete deletes it, the menu key opens
// its menu. Every edit goes through the logic, which tells the control.
class ColorBarWidget : public QWidget {
    Q_OBJECT
public:
    static constexpr int kBarHeight = 70;
    static constexpr int kMarkerHeight = 14;
    static constexpr int kMarkerHalfWidth = 6;

    ColorBarWidget(PaletteEditor& logic, QWidget* parent);

    // The bar's left edge and width in this widget's pixels.
    int BarLeft() const { return kMarkerHalfWidth + 1; }
    int BarWidth() const { return std::max(1, width() - 2 * BarLeft()); }
    // The x of a position (percent) on the bar.
    int XOf(int position) const;
    // The marker under `point`, if any.
    std::optional<size_t> MarkerAt(QPoint point) const;
    std::optional<size_t> SelectedMarker() const { return selected_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // The editing steps the mouse, the keys and the menus share.
    void AddColorAt(int position, QColor start);
    void ModifyMarker(size_t index);
    void DeleteMarker(size_t index);

signals:
    // A status text for the dialog's status line (empty to clear it).
    void StatusText(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void MarkerMenu(size_t index, QPoint globalAt);
    void BarMenu(int x, QPoint globalAt);
    void Select(std::optional<size_t> index);

    PaletteEditor& logic_;
    std::optional<size_t> selected_;
    std::optional<size_t> dragging_;
};

}  // namespace vexplot
