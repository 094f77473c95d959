// The conflict that the icon announces and the menu offers to end: the last one that was detected,
// until it is handled. What its commands do they tell as "conflict handled" themselves.
//
// Main thread only. Nothing waits; without a conflict, or before configure(), commands do nothing.
#pragma once

#include "monitoring/notification_center.h"
#include "monitoring/port_inventory.h"
#include "settings/app_settings.h"

#ifndef Q_MOC_RUN // which can't read the coroutine headers
#include <QCoroTask>
#endif
#include <QObject>
#include <QPointer>

#include <optional>

namespace zenlot {

class ActiveConflict final : public QObject {
    Q_OBJECT

  public:
    // Both must outlive the object.
    ActiveConflict(PortInventory& inventory, NotificationCenter& notifications,
                   QObject* parent = nullptr);

    // Whose lists ignoring extends.
    void configure(AppSettings& settings) { settings_ = &settings; }

    const std::optional<Conflict>& current() const { return current_; }

    // Only a holder to whose end there is no obstacle.
    QCoro::Task<> killHolder();
    void ignorePort();
    void ignoreProcess();
    void clear();

  Q_SIGNALS:
    void changed();

  private:
    void become(const std::optional<Conflict>& conflict);

    PortInventory& inventory_;
    NotificationCenter& notifications_;
    QPointer<AppSettings> settings_;
    std::optional<Conflict> current_;
};

} // namespace zenlot
