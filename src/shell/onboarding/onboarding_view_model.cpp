#include "shell/onboarding/onboarding_view_model.h"

#include <QCoreApplication>

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
    : QObject(parent), with_(with), actions_(std::move(actions)),
      daemonInstalled_(with.installer.isEnabled()) {}

template <typename Value>
void OnboardingViewModel::change(Value& member, const Value& value, Changed changed) {
    if (member == value)
        return;
    member = value;
    Q_EMIT(this->*changed)();
}

void OnboardingViewModel::appear() {
    with_.systemLog.write(u"[Zenlot] OnboardingView appeared, SMAppService status="_s +
                          with_.installer.statusText() + u", isEnabled="_s +
                          word(with_.installer.isEnabled()) + u", isInstalled="_s +
                          word(with_.installer.isInstalled()));
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
    if (actions_.afterNextFrame)
        actions_.afterNextFrame([this] { install(); });
    else
        install();
}

void OnboardingViewModel::install() {
    const std::optional<InstallError> error = with_.installer.install();
    if (!error) {
        finish(); // the window goes as it is
        return;
    }
    change(installError_, error->description(), &OnboardingViewModel::installErrorChanged);
    if (error->kind() == InstallError::Case::requiresApproval) {
        change(needsApproval_, true, &OnboardingViewModel::needsApprovalChanged);
        openLoginItems();
    }
    change(daemonInstalling_, false, &OnboardingViewModel::daemonInstallingChanged);
}

void OnboardingViewModel::recheckApproval() {
    if (!with_.installer.isEnabled()) {
        change(installError_,
               QCoreApplication::translate(
                   "InstallError",
                   "Zenlot is still blocked. Toggle \"Allow in the Background\" on for Zenlot "
                   "in System Settings → General → Login Items & Extensions."),
               &OnboardingViewModel::installErrorChanged);
        return;
    }
    // Whoever allows a service here has not started it. Whatever comes of it, it is enabled.
    [[maybe_unused]] const auto ignored = with_.installer.install();
    change(daemonInstalled_, true, &OnboardingViewModel::daemonInstalledChanged);
    change(needsApproval_, false, &OnboardingViewModel::needsApprovalChanged);
    change(installError_, QString(), &OnboardingViewModel::installErrorChanged);
    finish();
}

void OnboardingViewModel::openLoginItems() const {
    actions_.openLoginItems();
}

} // namespace zenlot
