#pragma once
#include <QDialog>

class QCheckBox;
class QTableView;

namespace vexplot {

class CUIW_DataEditor;
class DataGridModel;

// The data editor "Data Editor": the data set's title, its colour, "Show
// ToolTips", the grid (a table view over DataGridModel, the Y coordinates
// as row headers with the highest on top, the X coordinates as column
// headers), "Save Data" and "Exit". Modeless; it deletes itself when
// closed, and the site deletes it first when its logic goes.
class DataEditorDialog : public QDialog {
    Q_OBJECT
public:
    DataEditorDialog(CUIW_DataEditor& logic, QWidget* parent);

    QTableView* Grid() const { return grid_; }

    // Makes and shows the window (the site's modeless entry).
    static QWidget* Open(CUIW_DataEditor& logic, QWidget* parent);

public slots:
    void accept() override;
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    CUIW_DataEditor& logic_;
    DataGridModel* model_ = nullptr;
    QTableView* grid_ = nullptr;
    QCheckBox* toolTips_ = nullptr;
};

}  // namespace vexplot
