#include "shell/inspector/process_detail_view_model.h"

#include "inventory/process_identity.h"
#include "shell/inspector/origin_rows.h"
#include "text/display_line.h"

#include <QClipboard>
#include <QGuiApplication>

#include <string>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype kLongestCommand = 16384; // a path has 4096 bytes at the most

void appendIfSet(QList<DetailRow>& rows, const QString& label, const QString& value) {
    if (!value.isEmpty())
        rows.append({label, displayLine(value)});
}

} // namespace

ProcessDetailViewModel::ProcessDetailViewModel(const ProcessDetailsLoader& loader, QObject* parent)
    : QObject(parent), loader_(loader) {
    connect(&watcher_, &QFutureWatcherBase::finished, this, &ProcessDetailViewModel::takeResult);
}

void ProcessDetailViewModel::setProcess(std::optional<PortProcess> process) {
    if (process_ ? process && process->id == process_->id : !process)
        return;
    process_ = std::move(process);
    load();
}

void ProcessDetailViewModel::setShown(bool isShown) {
    if (isShown == isShown_)
        return;
    isShown_ = isShown;
    if (isShown)
        load();
    else
        callOff();
    Q_EMIT shownChanged();
}

void ProcessDetailViewModel::load() {
    isLoading_ = process_.has_value();
    dropDetails();
    identityExpanded_ = true;
    resourceExpanded_ = true;
    networkExpanded_ = false;
    appExpanded_ = true;
    projectExpanded_ = true;
    originExpanded_ = true;
    commandExpanded_ = true;
    Q_EMIT sectionsChanged();

    callOff();
    if (isShown_ && process_)
        watcher_.setFuture(worker_.run(
            [&loader = loader_, process = *process_] { return loader.loadDetails(process); }));
}

// A load that has not begun is left out; one that has is heard no more.
void ProcessDetailViewModel::callOff() {
    watcher_.cancel();
    watcher_.setFuture({});
}

void ProcessDetailViewModel::dropDetails() {
    details_.reset();
    origin_.reset();
    executablePath_.clear();
    // The view lets go of the sections before their rows change.
    Q_EMIT contentChanged();
    fillRows();
}

void ProcessDetailViewModel::takeResult() {
    if (watcher_.future().resultCount() == 0)
        return; // the load was called off
    LoadedProcess loaded = watcher_.result();
    executablePath_ = std::move(loaded.executablePath);
    details_ = std::move(loaded.details);
    origin_ = std::move(loaded.origin);
    isLoading_ = false;
    fillRows();
    Q_EMIT contentChanged();
}

QString ProcessDetailViewModel::title() const {
    return !process_ || process_->displayName.empty() ? tr("Unknown")
                                                      : displayLine(process_->displayName);
}

QString ProcessDetailViewModel::subtitle() const {
    if (!process_ || process_->pid < 1)
        return {};
    return u"PID %1 \u00B7 %2"_s.arg(QString::number(process_->pid), displayLine(process_->user));
}

int ProcessDetailViewModel::pid() const {
    return process_ ? processIdOf(process_->pid) : 0;
}

bool ProcessDetailViewModel::showsResources() const {
    return details_ && (!details_->cpuPercent.isEmpty() || !details_->memPercent.isEmpty() ||
                        !details_->residentMB.isEmpty() || !details_->virtualMB.isEmpty() ||
                        details_->openFileCount >= 1);
}

bool ProcessDetailViewModel::showsNetwork() const {
    return details_ && !details_->networkConnections.isEmpty();
}

bool ProcessDetailViewModel::showsApplication() const {
    return details_ && (!details_->bundleID.isEmpty() || !details_->bundleShortVersion.isEmpty());
}

bool ProcessDetailViewModel::showsCommand() const {
    return details_ && !commandText().isEmpty();
}

QString ProcessDetailViewModel::networkTitle() const {
    const qsizetype count = details_ ? details_->networkConnections.size() : 0;
    return tr("Network (%1)").arg(QString::number(count));
}

QString ProcessDetailViewModel::commandText() const {
    return displayLine(command(), kLongestCommand);
}

QString ProcessDetailViewModel::command() const {
    if (!process_)
        return {};
    return QString::fromStdString(process_->fullCommand.empty() ? process_->name
                                                                : process_->fullCommand);
}

// What is shown has the length of the command itself, save for its end where that is cut off.
void ProcessDetailViewModel::copyCommand(int start, int end) const {
    const bool includesEnd = end >= commandText().size();
    QGuiApplication::clipboard()->setText(command().mid(start, includesEnd ? -1 : end - start));
}

void ProcessDetailViewModel::fillRows() {
    identityRows_.setRows(identityRowList());
    resourceRows_.setRows(resourceRowList());
    applicationRows_.setRows(applicationRowList());
    projectRows_.setRows(origin_ ? zenlot::projectRows(*origin_) : QList<DetailRow>());
    originRows_.setRows(origin_ ? zenlot::originRows(*origin_) : QList<DetailRow>());
    networkConnections_.setConnections(details_ ? details_->networkConnections
                                                : QList<NetworkConnection>());
}

QList<DetailRow> ProcessDetailViewModel::identityRowList() const {
    QList<DetailRow> rows;
    if (!details_ || !process_)
        return rows;
    if (details_->parentPID >= 1) {
        const QString pid = QString::number(details_->parentPID);
        rows.append({tr("Parent"), details_->parentName.isEmpty()
                                       ? tr("PID %1").arg(pid)
                                       : u"%1 (%2)"_s.arg(displayLine(details_->parentName), pid)});
    }
    rows.append({tr("Port"), QString::number(process_->port)});
    rows.append({tr("Protocol"), displayLine(process_->proto)});
    appendIfSet(rows, tr("State"), QString::fromStdString(process_->state));
    appendIfSet(rows, tr("Address"), QString::fromStdString(process_->localAddress));
    appendIfSet(rows, tr("Started"), details_->startDate);
    appendIfSet(rows, tr("Elapsed"), details_->elapsed);
    appendIfSet(rows, tr("Flags"), details_->processStatus);
    return rows;
}

QList<DetailRow> ProcessDetailViewModel::resourceRowList() const {
    QList<DetailRow> rows;
    if (!details_)
        return rows;
    appendIfSet(rows, tr("Average CPU"), details_->cpuPercent);
    appendIfSet(rows, tr("Memory"), details_->memPercent);
    appendIfSet(rows, tr("Resident"), details_->residentMB);
    appendIfSet(rows, tr("Virtual"), details_->virtualMB);
    if (details_->openFileCount >= 1)
        rows.append({tr("Open FDs"), QString::number(details_->openFileCount)});
    return rows;
}

QList<DetailRow> ProcessDetailViewModel::applicationRowList() const {
    QList<DetailRow> rows;
    if (!details_)
        return rows;
    appendIfSet(rows, tr("Bundle ID"), details_->bundleID);
    appendIfSet(rows, tr("Version"), details_->bundleShortVersion);
    if (details_->bundleVersion != details_->bundleShortVersion)
        appendIfSet(rows, tr("Build"), details_->bundleVersion);
    return rows;
}

} // namespace zenlot
