// For calls over the bus that nobody waits for.
#pragma once

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace zenlot {

// Hands the answer, which may be an error, to the handler from the event loop, unless `context` has
// gone by then.
template <typename Value, typename Handler>
void whenAnswered(const QDBusPendingCall& call, QObject* context, Handler handler) {
    auto* watcher = new QDBusPendingCallWatcher(call, context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                     [watcher, handler = std::move(handler)] {
                         watcher->deleteLater();
                         handler(QDBusPendingReply<Value>(*watcher));
                     });
}

} // namespace zenlot
