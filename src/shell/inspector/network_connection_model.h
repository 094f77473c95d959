// The TCP sockets of the inspected process. A new snapshot is a new set of rows, so they come and
// go together.
#pragma once

#include "shell/inspector/network_connection.h"

#include <QAbstractListModel>
#include <QList>
#include <QtQml/qqmlregistration.h>

namespace zenlot {

class NetworkConnectionModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The view model owns it")

    // Known before a view looks at the rows.
    Q_PROPERTY(int count READ count NOTIFY countChanged)

  public:
    enum Role { protoRole = Qt::UserRole, localRole, remoteRole, stateRole, summaryRole };

    using QAbstractListModel::QAbstractListModel;

    void setConnections(QList<NetworkConnection> connections);

    int count() const { return static_cast<int>(connections_.size()); }
    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

  Q_SIGNALS:
    void countChanged();

  private:
    QList<NetworkConnection> connections_;
};

} // namespace zenlot
