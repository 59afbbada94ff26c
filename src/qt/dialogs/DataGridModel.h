#pragma once
#include <QAbstractTableModel>

namespace vexplot {

class CUIW_DataEditor;

// The data editor's grid as a Qt table model: every text is made by the
// logic when the view asks for it, so only the cells in sight are ever
// formatted, whatever the grid's size. Cells edit with the full-precision
// text of their value; an edit the logic refuses leaves the cell as it was
// and reports its message through EditRefused.
class DataGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    DataGridModel(CUIW_DataEditor& logic, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

signals:
    void EditRefused(const QString& message);

private:
    CUIW_DataEditor& logic_;
};

}  // namespace vexplot
