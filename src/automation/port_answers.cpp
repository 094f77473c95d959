#include "automation/port_answers.h"

#include "inventory/port_lookup.h"
#include "monitoring/published_ports.h"
#include "shell/intents/check_port_intent.h"

#include <QFutureWatcher>

#include <utility>

namespace zenlot {

PortAnswers::PortAnswers(const PortScanner& scanner, SharedContainer container)
    : scanner_(scanner), container_(std::move(container)) {}

void PortAnswers::answer(const QList<PortQuery>& queries, QObject* context, Receiver receiver) {
    // A future's own continuation may not outlive its context.
    auto* watcher = new QFutureWatcher<QStringList>(context);
    QObject::connect(watcher, &QFutureWatcherBase::finished, context,
                     [watcher, receiver = std::move(receiver)] {
                         watcher->deleteLater();
                         receiver(watcher->result());
                     });
    watcher->setFuture(workers_.run([this, queries] { return dialogsFor(queries); }));
}

QStringList PortAnswers::dialogsFor(const QList<PortQuery>& queries) const {
    const auto published = readPublishedPorts(container_).value_or(std::vector<OccupiedPort>());
    QStringList dialogs;
    for (const PortQuery& query : queries)
        dialogs.append(query.port ? CheckPortIntent{*query.port}.perform(scanner_, published)
                                  : CheckPortIntent::valueRequestDialog());
    return dialogs;
}

} // namespace zenlot
