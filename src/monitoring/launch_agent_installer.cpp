#include "monitoring/launch_agent_installer.h"

#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

bool requiresApproval(const AppServiceError& error) {
    return error.domain == u"SMAppServiceErrorDomain"_s && error.code == 1;
}

} // namespace

QString AgentState::statusText() const {
    switch (status) {
    case AppServiceStatus::notRegistered:
        return u"notRegistered"_s;
    case AppServiceStatus::enabled:
        return u"enabled"_s;
    case AppServiceStatus::requiresApproval:
        return u"requiresApproval"_s;
    case AppServiceStatus::notFound:
        return u"notFound"_s;
    }
    return u"unknown(%1)"_s.arg(static_cast<int>(status));
}

LaunchAgentInstaller::LaunchAgentInstaller(AppService& service, SystemLog& log, QString bundlePath)
    : service_(service), log_(log), bundlePath_(std::move(bundlePath)) {}

QFuture<AgentState> LaunchAgentInstaller::state() {
    return worker_.run([this, isBeingRefreshed = isBeingRefreshed_] {
        AgentState state = readState();
        state.isBeingRefreshed = isBeingRefreshed;
        return state;
    });
}

AgentState LaunchAgentInstaller::readState() const {
    AgentState state{.status = service_.status()};
    if (state.status == AppServiceStatus::notRegistered)
        return state;
    if (const std::optional<AppServiceError> error = service_.failure())
        state.failure = InstallError::other(error->domain, error->code, error->message);
    return state;
}

QFuture<std::optional<InstallError>> LaunchAgentInstaller::install() {
    isBeingRefreshed_ = false;
    return worker_.run([this] { return registerAgent(); });
}

std::optional<InstallError> LaunchAgentInstaller::registerAgent() {
    const AppServiceStatus before = service_.status();
    log_.write(u"[Zenlot] SMAppService status before register: "_s +
               QString::number(static_cast<int>(before)));
    log_.write(u"[Zenlot] Bundle path: "_s + bundlePath_);
    if (before == AppServiceStatus::requiresApproval) {
        log_.write(u"[Zenlot] SMAppService status is .requiresApproval before "
                   "register — needs user approval"_s);
        return InstallError::requiresApproval();
    }

    const std::optional<AppServiceError> error = service_.registerService();
    const AppServiceStatus after = service_.status();
    const QString postStatus = u"post-status="_s + QString::number(static_cast<int>(after));
    if (!error) {
        log_.write(u"[Zenlot] SMAppService.register() succeeded, "_s + postStatus);
        if (after == AppServiceStatus::requiresApproval)
            return InstallError::requiresApproval();
        return std::nullopt;
    }
    // The services of this system give nothing beyond these three, so the dictionary of what
    // underlies an error is empty.
    log_.write(u"[Zenlot] SMAppService.register() FAILED: domain="_s + error->domain + u" code="_s +
               QString::number(error->code) + u" desc="_s + error->message + u" underlying={} "_s +
               postStatus);
    if (requiresApproval(*error))
        return InstallError::requiresApproval();
    return InstallError::other(error->domain, error->code, error->message);
}

QFuture<std::optional<AppServiceError>> LaunchAgentInstaller::uninstall() {
    isBeingRefreshed_ = false;
    return worker_.run([this] { return service_.unregisterService(); });
}

void LaunchAgentInstaller::beginRefresh() {
    uninstall();
    isBeingRefreshed_ = true;
}

void LaunchAgentInstaller::finishRefresh() {
    if (isBeingRefreshed_)
        install();
}

} // namespace zenlot
