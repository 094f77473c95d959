#include "shell/model/app_model.h"

namespace zenlot {

void AppModel::setPendingPort(std::optional<qint64> port) {
    if (port == pendingPort_)
        return;
    pendingPort_ = port;
    Q_EMIT pendingPortChanged();
}

void AppModel::setOpenSettingsRequested(bool requested) {
    if (requested == openSettingsRequested_)
        return;
    openSettingsRequested_ = requested;
    Q_EMIT openSettingsRequestedChanged();
}

} // namespace zenlot
