#include "shell/mainwindow/sidebar_model.h"

#include "inventory/process_identity.h"
#include "shell/mainwindow/port_grouping.h"
#include "text/display_line.h"

#include <algorithm>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using RowKind = SidebarRow::Kind;

// What a view takes up well within the time of a frame.
constexpr std::size_t kMostNewRows = 250;

bool isPort(RowKind kind) {
    return kind == RowKind::port || kind == RowKind::portOfGroup;
}

// A list from elsewhere may name the same owner and port twice.
void makeKeysUnique(std::vector<SidebarRow>& rows) {
    QHash<QString, int> seen;
    for (SidebarRow& row : rows) {
        const int times = seen[row.key]++;
        if (times > 0)
            row.key += u"#%1"_s.arg(times);
    }
}

QString accessibleName(const SidebarRow& row) {
    switch (row.kind) {
    case RowKind::heading:
        return row.title;
    case RowKind::group:
        return row.title + u' ' + QString::number(row.count);
    case RowKind::port:
        return u"%1 %2 %3"_s.arg(QString::number(row.port.port), displayLine(row.port.displayName),
                                 displayLine(row.port.proto));
    case RowKind::portOfGroup:
        break;
    }
    return QString::number(row.port.port) + u' ' + displayLine(row.port.proto);
}

} // namespace

SidebarModel::SidebarModel(QObject* parent) : KeyedListModel(parent) {
    nextSlice_.setSingleShot(true);
    connect(&nextSlice_, &QTimer::timeout, this, &SidebarModel::goOn);
}

void SidebarModel::setContent(SidebarContent content) {
    content_ = std::move(content);
    rebuild();
}

void SidebarModel::setNotes(OriginNotes notes) {
    if (notes == notes_)
        return;
    notes_ = std::move(notes);
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0), index(rowCount() - 1),
                           {noteTextRole, noteTipRole, noteDescriptionRole, isOpenToNetworkRole,
                            isLeftBehindRole});
}

const SidebarRow* SidebarModel::rowAt(int row) const {
    return row < 0 || row >= rowCount() ? nullptr : &rows()[static_cast<std::size_t>(row)];
}

void SidebarModel::setExpanded(int row, bool isExpanded) {
    const SidebarRow* group = rowAt(row);
    if (!group || group->kind != RowKind::group || group->isExpanded == isExpanded)
        return;
    if (isExpanded)
        expandedBundles_.insert(group->bundlePath);
    else
        expandedBundles_.remove(group->bundlePath);
    rebuild();
}

void SidebarModel::toggle(int row) {
    if (const SidebarRow* group = rowAt(row))
        setExpanded(row, !group->isExpanded);
}

int SidebarModel::portAt(int row) const {
    const SidebarRow* each = rowAt(row);
    return each && isPort(each->kind) ? static_cast<int>(each->port.port) : -1;
}

int SidebarModel::rowOfPort(int port) const {
    for (int row = 0; row < rowCount(); ++row) {
        if (portAt(row) == port)
            return row;
    }
    return -1;
}

bool SidebarModel::holds(int port) const {
    const auto hasPort = [port](const AppPortGroup& group) {
        return std::ranges::find(group.ports, port, &OccupiedPort::port) != group.ports.end();
    };
    return std::ranges::any_of(content_.own, hasPort) ||
           std::ranges::any_of(content_.system, hasPort);
}

int SidebarModel::neighbour(int row, int direction) const {
    for (int next = row + direction; next >= 0 && next < rowCount(); next += direction) {
        if (rowAt(next)->kind != RowKind::heading)
            return next;
    }
    return row;
}

void SidebarModel::rebuild() {
    wanted_.clear();
    wanted_.reserve(content_.own.size() + content_.system.size() + 2);
    appendPart(wanted_, u"own"_s, tr("My Processes"), content_.own);
    appendPart(wanted_, u"system"_s, tr("System"), content_.system);
    makeKeysUnique(wanted_);
    goOn();
}

void SidebarModel::goOn() {
    if (!setRows(wanted_, kMostNewRows)) {
        nextSlice_.start(0);
        return;
    }
    nextSlice_.stop();
    wanted_ = std::vector<SidebarRow>(); // which gives its memory back, as no {} does
    Q_EMIT settled();
}

void SidebarModel::appendPart(std::vector<SidebarRow>& rows, const QString& key,
                              const QString& title, const std::vector<AppPortGroup>& groups) const {
    if (groups.empty())
        return;
    rows.push_back({key, RowKind::heading, title, false, 0, {}, {}});
    for (const AppPortGroup& group : groups) {
        if (group.ports.empty())
            continue;
        const QString groupKey = key + u'/' + QString::fromStdString(group.id());
        if (group.ports.size() == 1 || !group.bundlePath) {
            rows.push_back({groupKey, RowKind::port, {}, false, 0, {}, group.ports.front()});
            continue;
        }
        const QString bundle = QString::fromStdString(*group.bundlePath);
        const bool isExpanded = expandedBundles_.contains(bundle);
        rows.push_back({groupKey,
                        RowKind::group,
                        displayLine(groupDisplayName(group)),
                        isExpanded,
                        static_cast<int>(group.ports.size()),
                        bundle,
                        {},
                        QString::fromStdString(group.icon)});
        if (!isExpanded)
            continue;
        for (const OccupiedPort& port : group.ports)
            rows.push_back({groupKey + u'/' + QString::number(port.port),
                            RowKind::portOfGroup,
                            {},
                            false,
                            0,
                            {},
                            port});
    }
}

QVariant SidebarModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const SidebarRow& row = rows()[static_cast<std::size_t>(index.row())];
    const OriginNote note =
        isPort(row.kind) ? notes_.value(noteKey(row.port.pid, row.port.port)) : OriginNote();
    switch (role) {
    case rowKeyRole:
        return row.key;
    case kindRole:
        return static_cast<int>(row.kind);
    case titleRole:
        return row.title;
    case isExpandedRole:
        return row.isExpanded;
    case countTextRole:
        return row.kind == RowKind::group ? QString::number(row.count) : QString();
    case bundlePathRole:
        return row.bundlePath;
    case groupIconRole:
        return row.groupIcon;
    case portRole:
        return portAt(index.row());
    case nameRole:
        return displayLine(row.port.displayName);
    case protoRole:
        return displayLine(row.port.proto);
    case pidRole:
        return processIdOf(row.port.pid);
    case executablePathRole:
        return QString::fromStdString(row.port.executablePath);
    case canForceQuitRole:
        return row.port.pid > 0 && row.port.isCurrentUser();
    case accessibleNameRole:
        return accessibleName(row);
    case noteTextRole:
        return note.text;
    case noteTipRole:
        return note.toolTip();
    case noteDescriptionRole:
        return note.description();
    case isOpenToNetworkRole:
        return note.isOpenToNetwork;
    case isLeftBehindRole:
        return note.isLeftBehind;
    default:
        return {};
    }
}

QHash<int, QByteArray> SidebarModel::roleNames() const {
    return {{rowKeyRole, "rowKey"},
            {kindRole, "kind"},
            {titleRole, "title"},
            {isExpandedRole, "isExpanded"},
            {countTextRole, "countText"},
            {bundlePathRole, "bundlePath"},
            {groupIconRole, "groupIcon"},
            {portRole, "port"},
            {nameRole, "name"},
            {protoRole, "proto"},
            {pidRole, "pid"},
            {executablePathRole, "executablePath"},
            {canForceQuitRole, "canForceQuit"},
            {accessibleNameRole, "accessibleName"},
            {noteTextRole, "noteText"},
            {noteTipRole, "noteTip"},
            {noteDescriptionRole, "noteDescription"},
            {isOpenToNetworkRole, "isOpenToNetwork"},
            {isLeftBehindRole, "isLeftBehind"}};
}

} // namespace zenlot
