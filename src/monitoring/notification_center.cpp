#include "monitoring/notification_center.h"

#include <QThread>

#include <utility>

namespace zenlot {

void NotificationCenter::observe(const QString& name, QObject* context, Handler handler) {
    Q_ASSERT(QThread::currentThread() == thread());
    Q_ASSERT(context->thread() == thread());
    // A signal already keeps every promise about what handlers may do during a post.
    connect(
        this, &NotificationCenter::posted, context,
        [name, handler = std::move(handler)](const QString& postedName, const UserInfo& userInfo) {
            if (postedName == name)
                handler(userInfo);
        });
}

void NotificationCenter::post(const QString& name, const UserInfo& userInfo) {
    Q_ASSERT(QThread::currentThread() == thread());
    Q_EMIT posted(name, userInfo, QPrivateSignal());
}

} // namespace zenlot
