// The rows of the sidebar: two parts, each with its heading, and in them one row for each port or
// for each group of ports of one application; an open group is followed by its ports.
#pragma once

#include "inventory/app_port_group.h"
#include "shell/mainwindow/keyed_list_model.h"
#include "shell/mainwindow/origin_note.h"

#include <QSet>
#include <QString>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace zenlot {

// What a refresh brings, ready to be shown.
struct SidebarContent {
    std::vector<AppPortGroup> own;    // of the current user
    std::vector<AppPortGroup> system; // of everybody else

    friend bool operator==(const SidebarContent&, const SidebarContent&) = default;
};

struct SidebarRow {
    enum class Kind : int { heading, port, group, portOfGroup };

    QString key;
    Kind kind{Kind::heading};
    QString title; // of a heading or group
    bool isExpanded{false};
    int count{0}; // of ports in a group
    QString bundlePath;
    OccupiedPort port; // of a row that is a port

    friend bool operator==(const SidebarRow&, const SidebarRow&) = default;
};

class SidebarModel : public KeyedListModel<SidebarRow> {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The view model owns it")

  public:
    enum Kind {
        Heading = static_cast<int>(SidebarRow::Kind::heading),
        Port = static_cast<int>(SidebarRow::Kind::port),
        Group = static_cast<int>(SidebarRow::Kind::group),
        PortOfGroup = static_cast<int>(SidebarRow::Kind::portOfGroup),
    };
    Q_ENUM(Kind)

    enum Role {
        rowKeyRole = Qt::UserRole,
        kindRole,
        titleRole,
        isExpandedRole,
        countTextRole,
        bundlePathRole,
        portRole, // -1 for a row that is none
        nameRole,
        protoRole,
        pidRole,
        executablePathRole,
        canForceQuitRole, // as far as the list can tell
        accessibleNameRole,
        noteTextRole,
        noteTipRole,
        noteDescriptionRole,
        isOpenToNetworkRole,
        isLeftBehindRole,
    };

    explicit SidebarModel(QObject* parent = nullptr);

    // Many new rows come over some turns of the event loop; `settled` is emitted when they are
    // there, maybe before this returns.
    void setContent(SidebarContent content);

    // What is known of the origins; it comes later than the rows.
    void setNotes(OriginNotes notes);
    const SidebarContent& content() const { return content_; }

    // Opens or closes a group; nothing happens for other rows. Which groups are open outlives a
    // refresh.
    Q_INVOKABLE void setExpanded(int row, bool isExpanded);
    void toggle(int row);

    // The port of the row; -1 for a row that is none.
    int portAt(int row) const;

    // The row that shows the port, or -1 when it is in none or in a closed group.
    Q_INVOKABLE int rowOfPort(int port) const;

    // Whether a row, in a closed group or not, is for the port.
    bool holds(int port) const;

    // The next row in that direction (1 or -1) that is no heading; the row itself at the end.
    Q_INVOKABLE int neighbour(int row, int direction) const;

    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

  Q_SIGNALS:
    void settled();

  private:
    const SidebarRow* rowAt(int row) const;
    void rebuild();
    void goOn();
    void appendPart(std::vector<SidebarRow>& rows, const QString& key, const QString& title,
                    const std::vector<AppPortGroup>& groups) const;

    SidebarContent content_;
    OriginNotes notes_;
    QSet<QString> expandedBundles_;
    std::vector<SidebarRow> wanted_; // empty once it is reached
    QTimer nextSlice_;
};

} // namespace zenlot
