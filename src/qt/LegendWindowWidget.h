#pragma once
#include <QImage>
#include <QPoint>
#include <QWidget>

class QLabel;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace vexplot {

class CUIW_LegendWindow;
class RgbaRaster;

// The legend window on screen: a sizing frame around a caption strip
// "Legend" (drag it to move the window, its button closes it) over a list that fills the rest,
// with one row per graph object: its 32 x 32 preview (the mask colour
// transparent), its name and a check box for its visibility. The list has
// one column of the logic's width; longer names are cut with an ellipsis. The rows are rebuilt from the logic object whenever it reports
// a change; check boxes, selection, double clicks, the Delete key and the
// right button go back to the logic, which opens the row menu through the
// site. No rules live here.
class LegendWindowWidget : public QWidget {
    Q_OBJECT
public:
    explicit LegendWindowWidget(QWidget* parent);
    ~LegendWindowWidget() override;

    // `logic` is borrowed; null unbinds.
    void Bind(CUIW_LegendWindow* logic);
    CUIW_LegendWindow* Logic() const { return logic_; }
    QTreeWidget* List() const { return list_; }

    // The picture as the list shows it: the mask colour becomes transparent.
    static QImage ToImage(const RgbaRaster& raster);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void Sync();
    void OnItemChanged(QTreeWidgetItem* item);
    void OnCurrentItemChanged(QTreeWidgetItem* item);
    void OnItemDoubleClicked(QTreeWidgetItem* item);
    void OnContextMenu(const QPoint& pos);
    bool DragCaption(QEvent* event);

    CUIW_LegendWindow* logic_ = nullptr;
    QLabel* caption_ = nullptr;
    QToolButton* closeButton_ = nullptr;
    QTreeWidget* list_ = nullptr;
    bool syncing_ = false;    // true while the rows are set from the logic
    QPoint dragStart_;        // the cursor at the press on the caption, global
    QPoint dragOrigin_;       // the window's position then, in its parent
    bool dragging_ = false;
};

}  // namespace vexplot
