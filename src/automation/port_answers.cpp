#include "automation/port_answers.h"

#include "inventory/port_lookup.h"
#include "monitoring/published_ports.h"
#include "shell/intents/check_port_intent.h"

#include <QCoroFuture>
#include <QPointer>

#include <utility>

namespace zenlot {
namespace {

QCoro::Task<> handOver(QFuture<QStringList> answer, QPointer<QObject> context,
                       PortAnswers::Receiver receiver) {
    const QStringList dialogs = co_await answer;
    if (context)
        receiver(dialogs);
}

} // namespace

PortAnswers::PortAnswers(const PortScanner& scanner, SharedContainer container)
    : scanner_(scanner), container_(std::move(container)) {}

void PortAnswers::answer(const QList<PortQuery>& queries, QObject* context, Receiver receiver) {
    handOver(workers_.run([this, queries] { return dialogsFor(queries); }), context,
             std::move(receiver));
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
