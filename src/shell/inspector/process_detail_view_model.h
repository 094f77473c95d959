// The state of the inspector panel: the process that it shows, what was learned of it, and which of
// its sections are open. Belongs to the main thread; the details are gathered on a thread of its
// own, one process at a time, and only the newest answer counts.
//
// A load starts when the panel appears and whenever another row is to be shown. It takes everything
// back to the beginning: no details, and the sections as they are at first.
//
//     ProcessDetailViewModel inspector(loader);
//     inspector.setProcess(selectedRow);   // shown once the panel has appeared
//
// Text of other programs is made fit for its line; see display_line.h.
#pragma once

#include "inventory/port_process.h"
#include "shell/inspector/detail_row_model.h"
#include "shell/inspector/network_connection_model.h"
#include "shell/inspector/process_details_loader.h"
#include "workers/worker_threads.h"

#include <QFutureWatcher>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace zenlot {

class ProcessDetailViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application owns it")

    // Whether the panel is in view. While it is not, nothing is loaded.
    Q_PROPERTY(bool isShown READ isShown WRITE setShown NOTIFY shownChanged)
    // Neither loading nor details: there is nothing to show.
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY contentChanged)
    Q_PROPERTY(bool hasDetails READ hasDetails NOTIFY contentChanged)

    Q_PROPERTY(QString title READ title NOTIFY contentChanged)
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY contentChanged) // empty for an unknown process
    Q_PROPERTY(int pid READ pid NOTIFY contentChanged)
    Q_PROPERTY(QString executablePath READ executablePath NOTIFY contentChanged)

    // A section without anything to say is not shown.
    Q_PROPERTY(bool showsResources READ showsResources NOTIFY contentChanged)
    Q_PROPERTY(bool showsNetwork READ showsNetwork NOTIFY contentChanged)
    Q_PROPERTY(bool showsApplication READ showsApplication NOTIFY contentChanged)
    Q_PROPERTY(bool showsProject READ showsProject NOTIFY contentChanged)
    Q_PROPERTY(bool showsOrigin READ showsOrigin NOTIFY contentChanged)
    Q_PROPERTY(bool showsCommand READ showsCommand NOTIFY contentChanged)

    Q_PROPERTY(zenlot::DetailRowModel* identityRows READ identityRows CONSTANT)
    Q_PROPERTY(zenlot::DetailRowModel* resourceRows READ resourceRows CONSTANT)
    Q_PROPERTY(zenlot::DetailRowModel* applicationRows READ applicationRows CONSTANT)
    Q_PROPERTY(zenlot::DetailRowModel* projectRows READ projectRows CONSTANT)
    Q_PROPERTY(zenlot::DetailRowModel* originRows READ originRows CONSTANT)
    Q_PROPERTY(zenlot::NetworkConnectionModel* networkConnections READ networkConnections CONSTANT)
    Q_PROPERTY(QString networkTitle READ networkTitle NOTIFY contentChanged)
    Q_PROPERTY(QString commandText READ commandText NOTIFY contentChanged)

    Q_PROPERTY(bool identityExpanded MEMBER identityExpanded_ NOTIFY sectionsChanged)
    Q_PROPERTY(bool resourceExpanded MEMBER resourceExpanded_ NOTIFY sectionsChanged)
    Q_PROPERTY(bool networkExpanded MEMBER networkExpanded_ NOTIFY sectionsChanged)
    Q_PROPERTY(bool appExpanded MEMBER appExpanded_ NOTIFY sectionsChanged)
    Q_PROPERTY(bool projectExpanded MEMBER projectExpanded_ NOTIFY sectionsChanged)
    Q_PROPERTY(bool originExpanded MEMBER originExpanded_ NOTIFY sectionsChanged)
    Q_PROPERTY(bool commandExpanded MEMBER commandExpanded_ NOTIFY sectionsChanged)

  public:
    // The loader must outlive the object. The destructor waits for a load that is under way.
    explicit ProcessDetailViewModel(const ProcessDetailsLoader& loader, QObject* parent = nullptr);

    // Nothing happens when the row with this id is shown already.
    void setProcess(std::optional<PortProcess> process);

    const std::optional<PortProcess>& process() const { return process_; }
    const std::optional<ProcessDetails>& details() const { return details_; }

    bool isShown() const { return isShown_; }
    void setShown(bool isShown);

    bool isLoading() const { return isLoading_; }
    bool hasDetails() const { return details_.has_value(); }

    QString title() const;
    QString subtitle() const;
    int pid() const;
    QString executablePath() const { return executablePath_; }
    bool showsResources() const;
    bool showsNetwork() const;
    bool showsApplication() const;
    bool showsProject() const { return !projectRows_.rows().isEmpty(); }
    bool showsOrigin() const { return !originRows_.rows().isEmpty(); }
    bool showsCommand() const;
    DetailRowModel* identityRows() { return &identityRows_; }
    DetailRowModel* resourceRows() { return &resourceRows_; }
    DetailRowModel* applicationRows() { return &applicationRows_; }
    DetailRowModel* projectRows() { return &projectRows_; }
    DetailRowModel* originRows() { return &originRows_; }
    NetworkConnectionModel* networkConnections() { return &networkConnections_; }
    QString networkTitle() const;
    QString commandText() const;
    // Puts a part of the command as it really is into the clipboard; the places are those of the
    // text that is shown for it.
    Q_INVOKABLE void copyCommand(int start, int end) const;

  Q_SIGNALS:
    void shownChanged();
    void contentChanged();
    void sectionsChanged();

  private:
    void load();
    void callOff();
    void dropDetails();
    void takeResult();
    void fillRows();
    QList<DetailRow> identityRowList() const;
    QList<DetailRow> resourceRowList() const;
    QList<DetailRow> applicationRowList() const;
    QString command() const;

    const ProcessDetailsLoader& loader_;
    std::optional<PortProcess> process_;
    std::optional<ProcessDetails> details_;
    std::optional<Origin> origin_;
    QString executablePath_;
    DetailRowModel identityRows_;
    DetailRowModel resourceRows_;
    DetailRowModel applicationRows_;
    DetailRowModel projectRows_;
    DetailRowModel originRows_;
    NetworkConnectionModel networkConnections_;
    bool isShown_{false};
    bool isLoading_{false};
    bool identityExpanded_{true};
    bool resourceExpanded_{true};
    bool networkExpanded_{false};
    bool appExpanded_{true};
    bool projectExpanded_{true};
    bool originExpanded_{true};
    bool commandExpanded_{true};
    QFutureWatcher<LoadedProcess> watcher_; // of the newest load
    WorkerThreads worker_{1};               // the last member: its work ends first
};

} // namespace zenlot
