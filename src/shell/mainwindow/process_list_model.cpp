#include "shell/mainwindow/process_list_model.h"

#include "inventory/process_names.h"
#include "text/display_line.h"

#include <QStringList>

#include <algorithm>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

QString displayName(const PortProcess& process) {
    return process.displayName.empty() ? ProcessListModel::tr("Unknown")
                                       : displayLine(process.displayName);
}

QString pidText(const PortProcess& process) {
    return process.pid == 0 ? QString() : ProcessListModel::tr("PID %1").arg(process.pid);
}

ProcessListModel::StateTint stateTint(const std::string& state) {
    if (state == "LISTEN")
        return ProcessListModel::Green;
    if (state == "ESTABLISHED")
        return ProcessListModel::Blue;
    if (state == "CLOSE_WAIT" || state == "TIME_WAIT")
        return ProcessListModel::Orange;
    return ProcessListModel::Neutral;
}

// A process of which only the port is known may be there several times.
QString keyOf(const PortProcess& process, int times) {
    return u"%1 %2 %3 %4 %5"_s.arg(QString::number(process.pid),
                                   QString::number(process.startTime.value_or(-1)),
                                   QString::fromStdString(process.proto),
                                   QString::number(process.port), QString::number(times));
}

// What the row shows, from left to right.
QString accessibleName(const PortProcess& process) {
    QStringList parts{
        displayName(process), displayLine(process.proto),        displayLine(process.state),
        pidText(process),     displayLine(process.localAddress), displayLine(process.user)};
    parts.removeAll(QString());
    return parts.join(u' ');
}

} // namespace

std::vector<ProcessListRow> processListRows(std::vector<PortProcess> processes) {
    std::vector<ProcessListRow> rows;
    rows.reserve(processes.size());
    QHash<QString, int> seen;
    for (PortProcess& process : processes) {
        QString path = QString::fromStdString(resolveCommandExecutable(process.fullCommand));
        const int times = seen[keyOf(process, 0)]++;
        QString key = keyOf(process, times);
        rows.push_back({std::move(key), std::move(process), std::move(path)});
    }
    return rows;
}

void ProcessListModel::setProcesses(std::vector<ProcessListRow> processes) {
    for (ProcessListRow& row : processes) {
        if (const int before = rowOf(row.key); before >= 0)
            row.process.id = rows()[static_cast<std::size_t>(before)].process.id;
    }
    setRows(processes);
}

void ProcessListModel::setNotes(OriginNotes notes) {
    if (notes == notes_)
        return;
    notes_ = std::move(notes);
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0), index(rowCount() - 1),
                           {noteTextRole, noteTipRole, noteDescriptionRole, isOpenToNetworkRole,
                            isLeftBehindRole});
}

int ProcessListModel::rowOfProcess(const PortProcess& process) const {
    const auto row = std::ranges::find(rows(), process.id,
                                       [](const ProcessListRow& each) { return each.process.id; });
    return row == rows().end() ? -1 : static_cast<int>(row - rows().begin());
}

void ProcessListModel::removeProcessesWithPid(std::int64_t pid) {
    std::vector<ProcessListRow> kept = rows();
    std::erase_if(kept, [pid](const ProcessListRow& row) { return row.process.pid == pid; });
    setRows(kept);
}

std::optional<PortProcess> ProcessListModel::processAt(int row) const {
    if (row < 0 || row >= rowCount())
        return std::nullopt;
    return rows()[static_cast<std::size_t>(row)].process;
}

QVariant ProcessListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ProcessListRow& row = rows()[static_cast<std::size_t>(index.row())];
    const PortProcess& process = row.process;
    const OriginNote note = notes_.value(noteKey(process.pid, process.port));
    switch (role) {
    case rowKeyRole:
        return row.key;
    case displayNameRole:
        return displayName(process);
    case protoRole:
        return displayLine(process.proto);
    case stateRole:
        return displayLine(process.state);
    case stateTintRole:
        return stateTint(process.state);
    case pidRole:
        return processIdOf(process.pid);
    case pidTextRole:
        return pidText(process);
    case portRole:
        return static_cast<int>(process.port);
    case localAddressRole:
        return displayLine(process.localAddress);
    case userRole:
        return displayLine(process.user);
    case executablePathRole:
        return row.executablePath;
    case canForceQuitRole:
        return process.obstacle == ForceQuitObstacle::none;
    case accessibleNameRole:
        return accessibleName(process);
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

QHash<int, QByteArray> ProcessListModel::roleNames() const {
    return {{rowKeyRole, "rowKey"},
            {displayNameRole, "displayName"},
            {protoRole, "proto"},
            {stateRole, "processState"},
            {stateTintRole, "stateTint"},
            {pidRole, "pid"},
            {pidTextRole, "pidText"},
            {portRole, "port"},
            {localAddressRole, "localAddress"},
            {userRole, "user"},
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
