// Every listening port, the user's own first, each part under its heading in ascending order.
//
// A refresh changes only the rows that differ, so that the view keeps its place.
#pragma once

#include "inventory/occupied_port.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <tuple>
#include <vector>

namespace zenlot {

class SidebarModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The view model owns it")

  public:
    enum Role { headingRole = Qt::UserRole, portRole, displayNameRole, protoRole };

    explicit SidebarModel(QObject* parent = nullptr, UserId currentUser = currentUserId());

    void setPorts(std::vector<OccupiedPort> ports);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

  private:
    struct Row {
        bool isOwn{false};
        std::optional<OccupiedPort> port; // none for the heading of the part

        friend bool operator==(const Row&, const Row&) = default;
    };

    // What a row is, whatever it says: its part, its port and its owner. Rows are in this order.
    using Key = std::tuple<bool, std::int64_t, std::int64_t>;
    static Key keyOf(const Row& row);

    UserId currentUser_;
    std::vector<Row> rows_;
};

} // namespace zenlot
