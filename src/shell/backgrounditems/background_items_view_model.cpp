#include "shell/backgrounditems/background_items_view_model.h"

#include <QClipboard>
#include <QCoroFuture>
#include <QGuiApplication>
#include <QPointer>

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

BackgroundItemsViewModel::Finding BackgroundItemsViewModel::find() const {
    Finding finding{.status = monitor_.status()};
    if (finding.status == AppServiceStatus::requiresApproval)
        finding.command = unblockCommand_();
    return finding;
}

void BackgroundItemsViewModel::note(const Finding& finding) {
    if (std::exchange(status_, finding.status) != finding.status) {
        isStill_ = false;
        problem_.clear();
    }
    command_ = finding.command;
    Q_EMIT changed();
}

QCoro::Task<> BackgroundItemsViewModel::look() {
    const QPointer<BackgroundItemsViewModel> self(this);
    const QFuture<Finding> answer = worker_.run([this] { return find(); });
    const Finding finding = co_await answer;
    if (self)
        note(finding);
}

QCoro::Task<> BackgroundItemsViewModel::lookAgain() {
    const QPointer<BackgroundItemsViewModel> self(this);
    const AppServiceStatus before = status_;
    QCoro::Task<> look = this->look();
    co_await look;
    if (!self)
        co_return;
    isStill_ = status_ == before;
    Q_EMIT changed();
}

QCoro::Task<> BackgroundItemsViewModel::registerMonitor() {
    const QPointer<BackgroundItemsViewModel> self(this);
    const QFuture<Finding> answer = worker_.run([this] {
        const std::optional<AppServiceError> error = monitor_.registerService();
        Finding finding = find();
        finding.problem = error ? error->message : QString();
        return finding;
    });
    const Finding finding = co_await answer;
    if (!self)
        co_return;
    note(finding);
    problem_ = finding.problem;
    Q_EMIT changed();
}

void BackgroundItemsViewModel::copyCommand() {
    QGuiApplication::clipboard()->setText(command_);
    copied_.start();
    Q_EMIT copiedChanged();
}

} // namespace zenlot
