#include "shell/inspector/detail_row_model.h"

#include <utility>

namespace zenlot {

void DetailRowModel::setRows(QList<DetailRow> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
}

int DetailRowModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant DetailRowModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const DetailRow& row = rows_.at(index.row());
    switch (role) {
    case labelRole:
        return row.label;
    case valueRole:
        return row.value;
    default:
        return {};
    }
}

QHash<int, QByteArray> DetailRowModel::roleNames() const {
    return {{labelRole, "label"}, {valueRole, "value"}};
}

} // namespace zenlot
