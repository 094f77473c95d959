#include "shell/inspector/network_connection_model.h"

#include <QStringList>

#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

// What the line reads, for people who hear it.
QString summaryOf(const NetworkConnection& connection) {
    QStringList words{connection.proto, connection.local};
    if (!connection.remote.isEmpty())
        words << u"\u2192"_s << connection.remote;
    if (!connection.state.isEmpty())
        words << connection.state;
    return words.join(QLatin1Char(' '));
}

} // namespace

void NetworkConnectionModel::setConnections(QList<NetworkConnection> connections) {
    beginResetModel();
    connections_ = std::move(connections);
    endResetModel();
    Q_EMIT countChanged();
}

int NetworkConnectionModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(connections_.size());
}

QVariant NetworkConnectionModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const NetworkConnection& connection = connections_.at(index.row());
    switch (role) {
    case protoRole:
        return connection.proto;
    case localRole:
        return connection.local;
    case remoteRole:
        return connection.remote;
    case stateRole:
        return connection.state;
    case summaryRole:
        return summaryOf(connection);
    default:
        return {};
    }
}

QHash<int, QByteArray> NetworkConnectionModel::roleNames() const {
    return {{protoRole, "proto"},
            {localRole, "local"},
            {remoteRole, "remote"},
            {stateRole, "connectionState"},
            {summaryRole, "summary"}};
}

} // namespace zenlot
