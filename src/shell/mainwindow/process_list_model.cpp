#include "shell/mainwindow/process_list_model.h"

namespace zenlot {

void ProcessListModel::setProcesses(std::vector<PortProcess> processes) {
    if (!processes_.empty()) {
        beginRemoveRows({}, 0, static_cast<int>(processes_.size()) - 1);
        processes_.clear();
        endRemoveRows();
    }
    if (!processes.empty()) {
        beginInsertRows({}, 0, static_cast<int>(processes.size()) - 1);
        processes_ = std::move(processes);
        endInsertRows();
    }
}

int ProcessListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(processes_.size());
}

QVariant ProcessListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const PortProcess& process = processes_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case displayNameRole:
        return process.displayName.empty() ? tr("Unknown")
                                           : QString::fromStdString(process.displayName);
    case protoRole:
        return QString::fromStdString(process.proto);
    case stateRole:
        return QString::fromStdString(process.state);
    case pidTextRole:
        return process.pid == 0 ? QString() : tr("PID %1").arg(QString::number(process.pid));
    case localAddressRole:
        return QString::fromStdString(process.localAddress);
    case userRole:
        return QString::fromStdString(process.user);
    default:
        return {};
    }
}

QHash<int, QByteArray> ProcessListModel::roleNames() const {
    return {{displayNameRole, "displayName"},   {protoRole, "proto"},
            {stateRole, "processState"},        {pidTextRole, "pidText"},
            {localAddressRole, "localAddress"}, {userRole, "user"}};
}

} // namespace zenlot
