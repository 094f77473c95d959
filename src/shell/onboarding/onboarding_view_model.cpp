#include "shell/onboarding/onboarding_view_model.h"

#include <QCoreApplication>
#include <QCoroFuture>
#include <QPointer>

#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

QString word(bool value) {
    return value ? u"true"_s : u"false"_s;
}

} // namespace

OnboardingViewModel::OnboardingViewModel(const Collaborators& with, Actions actions,
                                         QObject* parent)
    : QObject(parent), with_(with), actions_(std::move(actions)) {}

template <typename Value>
void OnboardingViewModel::change(Value& member, const Value& value, Changed changed) {
    if (member == value)
        return;
    member = value;
    Q_EMIT(this->*changed)();
}

QCoro::Task<> OnboardingViewModel::lookAtAgent() {
    const QPointer<OnboardingViewModel> self(this);
    const QFuture<AgentState> answer = with_.installer.state();
    const AgentState state = co_await answer;
    if (!self)
        co_return;
    with_.systemLog.write(u"[Zenlot] OnboardingView appeared, SMAppService status="_s +
                          state.statusText() + u", isEnabled="_s + word(state.isEnabled()) +
                          u", isInstalled="_s + word(state.isInstalled()));
    change(daemonInstalled_, state.isEnabled(), &OnboardingViewModel::daemonInstalledChanged);
}

void OnboardingViewModel::advance() {
    change(page_, 1, &OnboardingViewModel::pageChanged);
}

void OnboardingViewModel::finish() {
    with_.settings.setHasCompletedOnboarding(true);
    Q_EMIT finished();
}

void OnboardingViewModel::enableBackgroundMonitor() {
    if (daemonInstalling_)
        return;
    change(daemonInstalling_, true, &OnboardingViewModel::daemonInstallingChanged);
    change(installError_, QString(), &OnboardingViewModel::installErrorChanged);
    change(needsApproval_, false, &OnboardingViewModel::needsApprovalChanged);
    install();
}

QCoro::Task<> OnboardingViewModel::install() {
    const QPointer<OnboardingViewModel> self(this);
    const QPointer<AppSettings> settings(&with_.settings);
    const QFuture<std::optional<InstallError>> installation = with_.installer.install();
    const std::optional<InstallError> error = co_await installation;
    // The window may have been closed meanwhile; what was asked for holds.
    if (!error && settings)
        settings->setConflictMonitoringEnabled(true);
    if (!self)
        co_return;
    if (!error) {
        finish(); // the window goes as it is
        co_return;
    }
    change(installError_, error->description(), &OnboardingViewModel::installErrorChanged);
    if (error->kind() == InstallError::Case::requiresApproval) {
        change(needsApproval_, true, &OnboardingViewModel::needsApprovalChanged);
        openLoginItems();
    }
    change(daemonInstalling_, false, &OnboardingViewModel::daemonInstallingChanged);
}

QCoro::Task<> OnboardingViewModel::lookAgain() {
    const QPointer<OnboardingViewModel> self(this);
    const QFuture<AgentState> answer = with_.installer.state();
    const AgentState state = co_await answer;
    if (!self)
        co_return;
    if (!state.isEnabled()) {
        change(installError_,
               QCoreApplication::translate(
                   "InstallError",
                   "Zenlot is still blocked. Toggle \"Allow in the Background\" on for Zenlot "
                   "in System Settings → General → Login Items & Extensions."),
               &OnboardingViewModel::installErrorChanged);
        co_return;
    }
    // Whoever allows a service here has not started it. Whatever comes of it, it is enabled.
    with_.installer.install();
    with_.settings.setConflictMonitoringEnabled(true);
    change(daemonInstalled_, true, &OnboardingViewModel::daemonInstalledChanged);
    change(needsApproval_, false, &OnboardingViewModel::needsApprovalChanged);
    change(installError_, QString(), &OnboardingViewModel::installErrorChanged);
    finish();
}

void OnboardingViewModel::openLoginItems() const {
    actions_.openLoginItems();
}

} // namespace zenlot
