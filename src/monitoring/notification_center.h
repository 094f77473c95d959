// Events between the components of this program, by name.
//
// Everything here happens on the main thread. post() calls the handlers of its name, in the order
// of their registration, and returns when they are done. A handler may observe, post or destroy
// whatever it likes: handlers added during a post hear from the next one on, and no handler is
// called whose context is gone.
//
//     notifications.observe(kConflictDetected, this, [this](const UserInfo& info) { ... });
//     notifications.post(kConflictDetected, {{kPortKey, 3000}, ...});
#pragma once

#include "platform/user_info.h"

#include <QLatin1StringView>
#include <QObject>
#include <QString>

#include <functional>

namespace zenlot {

// The shared list of ports was reloaded. Carries nothing.
inline constexpr QLatin1StringView kPortsUpdated{"zenlot.portsUpdatedInternal"};

// The background monitor has rewritten its list of conflicts. Carries nothing.
inline constexpr QLatin1StringView kConflictsUpdated{"zenlot.conflictsUpdatedInternal"};

// A conflict to tell the user about: port, pid, processName and displayName; startTime where known,
// and the obstacle to the end of the process (ForceQuitObstacle), which is none when missing.
inline constexpr QLatin1StringView kConflictDetected{"zenlot.conflictDetectedInternal"};

// The user acted on a conflict or on an alert, or the process has ended: processName, which may be
// empty; port, pid and startTime where known.
inline constexpr QLatin1StringView kConflictHandled{"zenlot.conflictHandledInternal"};

class NotificationCenter final : public QObject {
    Q_OBJECT

  public:
    using Handler = std::function<void(const UserInfo& userInfo)>;

    using QObject::QObject;

    // The registration ends with `context`, which lives on the main thread, or with the center.
    void observe(const QString& name, QObject* context, Handler handler);

    void post(const QString& name, const UserInfo& userInfo = {});

  Q_SIGNALS:
    void posted(const QString& name, const UserInfo& userInfo, QPrivateSignal);
};

} // namespace zenlot
