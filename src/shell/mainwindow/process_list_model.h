// The processes that hold the checked port, one row each.
#pragma once

#include "inventory/port_process.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace zenlot {

class ProcessListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The view model owns it")

  public:
    enum Role {
        displayNameRole = Qt::UserRole,
        protoRole,
        stateRole,
        pidTextRole,
        localAddressRole,
        userRole
    };

    using QAbstractListModel::QAbstractListModel;

    bool isEmpty() const { return processes_.empty(); }

    // Every lookup gives new rows, so the old ones go and the new ones come.
    void setProcesses(std::vector<PortProcess> processes);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

  private:
    std::vector<PortProcess> processes_;
};

} // namespace zenlot
