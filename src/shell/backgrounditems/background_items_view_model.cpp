#include "shell/backgrounditems/background_items_view_model.h"

#include <QClipboard>
#include <QGuiApplication>

#include <chrono>
#include <utility>

namespace zenlot {

using namespace std::chrono_literals;

BackgroundItemsViewModel::BackgroundItemsViewModel(AppService& monitor,
                                                   UnblockCommand unblockCommand, QString unit,
                                                   QObject* parent)
    : QObject(parent), monitor_(monitor), unblockCommand_(std::move(unblockCommand)),
      unit_(std::move(unit)) {
    copied_.setSingleShot(true);
    copied_.setInterval(2s);
    QObject::connect(&copied_, &QTimer::timeout, this, &BackgroundItemsViewModel::copiedChanged);
}

QString BackgroundItemsViewModel::headline() const {
    switch (status_) {
    case AppServiceStatus::requiresApproval:
        return tr("Zenlot is blocked from running in the background");
    case AppServiceStatus::enabled:
        return tr("Zenlot may run in the background");
    case AppServiceStatus::notRegistered:
        return tr("Zenlot's background monitor is turned off");
    default:
        return tr("Zenlot's background monitor was not found");
    }
}

QString BackgroundItemsViewModel::explanation() const {
    switch (status_) {
    case AppServiceStatus::requiresApproval:
        return tr("The background monitor is masked, so systemd refuses to start it. You, an "
                  "administrator or a clean-up tool may have switched it off.");
    case AppServiceStatus::enabled:
        return tr("The background monitor starts when you log in. Click Re-check in Zenlot to go "
                  "on.");
    case AppServiceStatus::notRegistered:
        return tr("Nothing blocks it. Turn it on here, then click Re-check in Zenlot.");
    default:
        return tr("systemd knows no such service of yours. Either Zenlot is not completely "
                  "installed, or your session is not run by systemd.");
    }
}

QString BackgroundItemsViewModel::statusText() const {
    switch (status_) {
    case AppServiceStatus::requiresApproval:
        return isStill_ ? tr("Still blocked") : tr("Blocked");
    case AppServiceStatus::enabled:
        return tr("Allowed");
    case AppServiceStatus::notRegistered:
        return isStill_ ? tr("Still off") : tr("Off");
    default:
        return isStill_ ? tr("Still not found") : tr("Not found");
    }
}

void BackgroundItemsViewModel::refresh() {
    const AppServiceStatus before = std::exchange(status_, monitor_.status());
    if (status_ != before) {
        isStill_ = false;
        problem_.clear();
    }
    command_ = isBlocked() ? unblockCommand_() : QString();
    Q_EMIT changed();
}

void BackgroundItemsViewModel::recheck() {
    const AppServiceStatus before = status_;
    refresh();
    isStill_ = status_ == before;
    Q_EMIT changed();
}

void BackgroundItemsViewModel::turnOn() {
    const std::optional<AppServiceError> error = monitor_.registerService();
    refresh();
    problem_ = error ? error->message : QString();
    Q_EMIT changed();
}

void BackgroundItemsViewModel::copyCommand() {
    QGuiApplication::clipboard()->setText(command_);
    copied_.start();
    Q_EMIT copiedChanged();
}

} // namespace zenlot
