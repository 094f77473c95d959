#include "shell/model/app_model.h"

namespace zenlot {

void AppModel::setPendingPort(std::optional<qint64> port) {
    if (port == pendingPort_)
        return;
    pendingPort_ = port;
    Q_EMIT pendingPortChanged();
}

} // namespace zenlot
