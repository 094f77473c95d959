// What the components of this program tell each other. Everything here happens on the main thread,
// and whoever hears of something may destroy whatever it likes.
//
//     connect(&notifications, &NotificationCenter::conflictDetected, this, [this](...) { ... });
#pragma once

#include "monitoring/conflict.h"

#include <QObject>

namespace zenlot {

class NotificationCenter final : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

  Q_SIGNALS:
    // The shared list of ports was reloaded.
    void portsUpdated();

    // A conflict to tell the user about.
    void conflictDetected(const zenlot::Conflict& conflict);

    // The user acted on a conflict or on an alert, or the process has ended.
    void conflictHandled(const zenlot::HandledConflict& handled);
};

} // namespace zenlot
