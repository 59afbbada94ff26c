#include "qt/dialogs/DataGridModel.h"

#include "ui/CUIW_DataEditor.h"

namespace vexplot {

DataGridModel::DataGridModel(CUIW_DataEditor& logic, QObject* parent) : QAbstractTableModel(parent), logic_(logic) {}

int DataGridModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : logic_.Rows(); }

int DataGridModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : logic_.Columns(); }

QVariant DataGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    switch (role) {
        case Qt::DisplayRole: return QString::fromStdString(logic_.CellText(index.row(), index.column()));
        case Qt::EditRole:
            return QString::fromStdString(CUIW_DataEditor::FormatExact(logic_.Value(index.row(), index.column())));
        case Qt::ToolTipRole: {
            const std::string tip = logic_.ToolTip(index.row(), index.column());
            return tip.empty() ? QVariant() : QVariant(QString::fromStdString(tip));
        }
        case Qt::TextAlignmentRole: return QVariant(Qt::AlignCenter);
        default: return {};
    }
}

QVariant DataGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignCenter);
    if (role != Qt::DisplayRole) return {};
    return QString::fromStdString(orientation == Qt::Horizontal ? logic_.ColumnHeader(section)
                                                                : logic_.RowHeader(section));
}

Qt::ItemFlags DataGridModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags f = QAbstractTableModel::flags(index);
    if (index.isValid() && logic_.Editable()) f |= Qt::ItemIsEditable;
    return f;
}

bool DataGridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole) return false;
    const CUIW_DataEditor::EditResult result =
        logic_.Edit(index.row(), index.column(), value.toString().toStdString());
    if (!result.written) {
        emit EditRefused(QString::fromStdString(result.message));
        return false;
    }
    emit dataChanged(index, index);
    return true;
}

}  // namespace vexplot
