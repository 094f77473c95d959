// The processes that hold the checked port, one row each.
#pragma once

#include "inventory/port_process.h"
#include "shell/mainwindow/keyed_list_model.h"
#include "shell/mainwindow/origin_note.h"

#include <QString>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <vector>

namespace zenlot {

struct ProcessListRow {
    QString key; // the owner, the protocol and the port
    PortProcess process;
    QString executablePath; // taken from its command

    friend bool operator==(const ProcessListRow&, const ProcessListRow&) = default;
};

// Makes the rows of a lookup. Asks the disk for files: not for the thread that draws.
std::vector<ProcessListRow> processListRows(std::vector<PortProcess> processes);

class ProcessListModel : public KeyedListModel<ProcessListRow> {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The view model owns it")

  public:
    // The colour of a socket's state.
    enum StateTint { Neutral, Green, Blue, Orange };
    Q_ENUM(StateTint)

    enum Role {
        rowKeyRole = Qt::UserRole,
        displayNameRole,
        protoRole,
        stateRole,
        stateTintRole,
        pidRole,
        pidTextRole,
        portRole,
        localAddressRole,
        userRole,
        executablePathRole,
        canForceQuitRole,
        accessibleNameRole,
        noteTextRole,
        noteTipRole,
        noteDescriptionRole,
        isOpenToNetworkRole,
        isLeftBehindRole,
    };

    explicit ProcessListModel(QObject* parent = nullptr) : KeyedListModel(parent) {}

    // Rows that were there before keep the identifiers of their processes.
    void setProcesses(std::vector<ProcessListRow> processes);

    void removeProcessesWithPid(std::int64_t pid);

    // What is known of the origins; it comes later than the rows.
    void setNotes(OriginNotes notes);

    // The row with the process's identifier, or -1.
    int rowOfProcess(const PortProcess& process) const;

    // None for -1 and whatever else is no row.
    std::optional<PortProcess> processAt(int row) const;

    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

  private:
    OriginNotes notes_;
};

} // namespace zenlot
