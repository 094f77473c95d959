#include "monitoring/launch_agent_installer.h"

#include <utility>

namespace zenlot {
namespace {

bool requiresApproval(const AppServiceError& error) {
    return error.domain == QStringLiteral("SMAppServiceErrorDomain") && error.code == 1;
}

} // namespace

LaunchAgentInstaller::LaunchAgentInstaller(AppService& service, SystemLog& log, QString bundlePath)
    : service_(service), log_(log), bundlePath_(std::move(bundlePath)) {}

QString LaunchAgentInstaller::statusText() const {
    const AppServiceStatus status = service_.status();
    switch (status) {
    case AppServiceStatus::notRegistered:
        return QStringLiteral("notRegistered");
    case AppServiceStatus::enabled:
        return QStringLiteral("enabled");
    case AppServiceStatus::requiresApproval:
        return QStringLiteral("requiresApproval");
    case AppServiceStatus::notFound:
        return QStringLiteral("notFound");
    }
    return QStringLiteral("unknown(%1)").arg(static_cast<int>(status));
}

bool LaunchAgentInstaller::isEnabled() const {
    return service_.status() == AppServiceStatus::enabled;
}

bool LaunchAgentInstaller::isInstalled() const {
    return isBeingRefreshed_ || service_.status() != AppServiceStatus::notRegistered;
}

std::optional<InstallError> LaunchAgentInstaller::failure() const {
    const std::optional<AppServiceError> error = service_.failure();
    return error ? std::optional(InstallError::other(error->domain, error->code, error->message))
                 : std::nullopt;
}

std::optional<InstallError> LaunchAgentInstaller::install() {
    isBeingRefreshed_ = false;
    const AppServiceStatus before = service_.status();
    log_.write(QStringLiteral("[Zenlot] SMAppService status before register: ") +
               QString::number(static_cast<int>(before)));
    log_.write(QStringLiteral("[Zenlot] Bundle path: ") + bundlePath_);
    if (before == AppServiceStatus::requiresApproval) {
        log_.write(QStringLiteral("[Zenlot] SMAppService status is .requiresApproval before "
                                  "register — needs user approval"));
        return InstallError::requiresApproval();
    }

    const std::optional<AppServiceError> error = service_.registerService();
    const AppServiceStatus after = service_.status();
    const QString postStatus =
        QStringLiteral("post-status=") + QString::number(static_cast<int>(after));
    if (!error) {
        log_.write(QStringLiteral("[Zenlot] SMAppService.register() succeeded, ") + postStatus);
        if (after == AppServiceStatus::requiresApproval)
            return InstallError::requiresApproval();
        return std::nullopt;
    }
    // The services of this system give nothing beyond these three, so the dictionary of what
    // underlies an error is empty.
    log_.write(QStringLiteral("[Zenlot] SMAppService.register() FAILED: domain=") + error->domain +
               QStringLiteral(" code=") + QString::number(error->code) + QStringLiteral(" desc=") +
               error->message + QStringLiteral(" underlying={} ") + postStatus);
    if (requiresApproval(*error))
        return InstallError::requiresApproval();
    return InstallError::other(error->domain, error->code, error->message);
}

std::optional<AppServiceError> LaunchAgentInstaller::uninstall() {
    isBeingRefreshed_ = false;
    return service_.unregisterService();
}

void LaunchAgentInstaller::beginRefresh() {
    [[maybe_unused]] const auto refused = uninstall();
    isBeingRefreshed_ = true;
}

void LaunchAgentInstaller::finishRefresh() {
    if (isBeingRefreshed_) [[maybe_unused]]
        const auto refused = install();
}

} // namespace zenlot
