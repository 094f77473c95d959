// Whether the session has a place for status notifier items, as most panels offer it: a watcher
// that keeps the list of items, and at least one host that shows them.
//
// Nothing here waits; what is known is told by `changed`. Without a bus there is no watcher. When
// the bus was started again, `busReplaced` comes first.
#pragma once

#include <QDBusServiceWatcher>
#include <QObject>

namespace zenlot {

class SessionBus;

class StatusNotifierWatch final : public QObject {
    Q_OBJECT

  public:
    // The bus must outlive the object.
    explicit StatusNotifierWatch(SessionBus& bus);

    // False until the first answer.
    bool isKnown() const { return isKnown_; }
    bool hasHost() const { return hasHost_; }

  Q_SIGNALS:
    void changed();
    void busReplaced();

  private Q_SLOTS:
    void askForHost();

  private:
    void follow();
    void setWatcher(bool isThere);
    void setHost(bool isThere);

    SessionBus& bus_;
    QDBusServiceWatcher services_;
    bool isKnown_{false};
    bool hasWatcher_{false};
    bool hasHost_{false};
};

} // namespace zenlot
