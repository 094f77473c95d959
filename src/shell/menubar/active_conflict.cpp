#include "shell/menubar/active_conflict.h"

#include "monitoring/ignore_entries.h"

#include <QCoroFuture>

namespace zenlot {

ActiveConflict::ActiveConflict(PortInventory& inventory, NotificationCenter& notifications,
                               QObject* parent)
    : QObject(parent), inventory_(inventory), notifications_(notifications) {
    connect(&notifications_, &NotificationCenter::conflictDetected, this,
            [this](const Conflict& conflict) { become(conflict); });
    connect(&notifications_, &NotificationCenter::conflictHandled, this,
            [this](const HandledConflict& handled) {
                if (current_ && handled.settles(*current_))
                    become(std::nullopt);
            });
}

void ActiveConflict::become(const std::optional<Conflict>& conflict) {
    current_ = conflict;
    Q_EMIT changed();
}

// A conflict that came while the kill was under way stays.
QCoro::Task<> ActiveConflict::killHolder() {
    if (!current_ || current_->obstacle != ForceQuitObstacle::none)
        co_return;
    const QPointer<ActiveConflict> self(this);
    const Conflict conflict = *current_;
    const QFuture<bool> kill = inventory_.forceQuitProcess({conflict.holder, conflict.port});
    co_await kill;
    if (self && current_ == conflict)
        clear();
}

void ActiveConflict::ignorePort() {
    if (!current_ || !settings_)
        return;
    zenlot::ignorePort(*settings_, current_->port);
    clear();
}

void ActiveConflict::ignoreProcess() {
    if (!current_ || !settings_ || current_->processName.isEmpty())
        return;
    zenlot::ignoreProcess(*settings_, current_->processName);
    clear();
}

void ActiveConflict::clear() {
    if (!current_)
        return;
    const HandledConflict handled{current_->port, current_->holder, current_->displayName};
    become(std::nullopt);
    Q_EMIT notifications_.conflictHandled(handled);
}

} // namespace zenlot
