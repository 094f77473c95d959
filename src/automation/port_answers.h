// Answers "which process uses this port?" off the main thread, for the desktop's search and for
// scripts. Each answer is that of the moment: a fresh lookup, merged with what the background
// monitor published last.
//
//     answers.answer({PortQuery{3000}}, this, [](const QStringList& dialogs) { ... });
//
// Main thread only. The destructor waits for the lookups that are still open.
#pragma once

#include "inventory/port_scanner.h"
#include "monitoring/shared_container.h"
#include "shell/intents/port_query.h"
#include "workers/worker_threads.h"

#include <QList>
#include <QStringList>

#include <functional>

QT_FORWARD_DECLARE_CLASS(QObject)

namespace zenlot {

class PortAnswers final {
  public:
    // One sentence for each query, in their order.
    using Receiver = std::function<void(const QStringList& dialogs)>;

    // `scanner` must outlive the object.
    PortAnswers(const PortScanner& scanner, SharedContainer container);

    // The receiver is called from the event loop, unless `context` is gone by then.
    void answer(const QList<PortQuery>& queries, QObject* context, Receiver receiver);

  private:
    QStringList dialogsFor(const QList<PortQuery>& queries) const;

    const PortScanner& scanner_;
    SharedContainer container_;
    WorkerThreads workers_; // the last member, so that it ends before what its work uses
};

} // namespace zenlot
