#include "shell/mainwindow/sidebar_model.h"

#include <algorithm>

namespace zenlot {

SidebarModel::SidebarModel(QObject* parent, UserId currentUser)
    : QAbstractListModel(parent), currentUser_(currentUser) {}

SidebarModel::Key SidebarModel::keyOf(const Row& row) {
    return {!row.isOwn, row.port ? row.port->port : 0, row.port ? row.port->pid : -1};
}

// Both lists are in the same order, so one walk over both finds what came, went and changed.
void SidebarModel::setPorts(std::vector<OccupiedPort> ports) {
    std::vector<Row> wanted;
    wanted.reserve(ports.size() + 2);
    for (OccupiedPort& port : ports) {
        const bool isOwn = port.isCurrentUser(currentUser_);
        wanted.push_back({isOwn, std::move(port)});
    }
    for (const bool isOwn : {true, false}) {
        if (std::ranges::find(wanted, isOwn, &Row::isOwn) != wanted.end())
            wanted.push_back({isOwn, std::nullopt});
    }
    std::ranges::stable_sort(wanted, {}, keyOf);

    std::size_t place = 0;
    for (Row& row : wanted) {
        while (place < rows_.size() && keyOf(rows_[place]) < keyOf(row)) {
            beginRemoveRows({}, static_cast<int>(place), static_cast<int>(place));
            rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(place));
            endRemoveRows();
        }
        if (place < rows_.size() && keyOf(rows_[place]) == keyOf(row)) {
            if (rows_[place] != row) {
                rows_[place] = std::move(row);
                const QModelIndex changed = index(static_cast<int>(place));
                Q_EMIT dataChanged(changed, changed);
            }
        } else {
            beginInsertRows({}, static_cast<int>(place), static_cast<int>(place));
            rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(place), std::move(row));
            endInsertRows();
        }
        ++place;
    }
    if (place < rows_.size()) {
        beginRemoveRows({}, static_cast<int>(place), static_cast<int>(rows_.size()) - 1);
        rows_.resize(place);
        endRemoveRows();
    }
}

int SidebarModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant SidebarModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    if (role == headingRole) {
        if (row.port)
            return QString();
        return row.isOwn ? tr("My Processes") : tr("System");
    }
    const OccupiedPort port = row.port.value_or(OccupiedPort());
    switch (role) {
    case portRole:
        return static_cast<int>(port.port);
    case displayNameRole:
        return QString::fromStdString(port.displayName);
    case protoRole:
        return QString::fromStdString(port.proto);
    default:
        return {};
    }
}

QHash<int, QByteArray> SidebarModel::roleNames() const {
    return {{portRole, "port"},
            {displayNameRole, "displayName"},
            {protoRole, "proto"},
            {headingRole, "heading"}};
}

} // namespace zenlot
