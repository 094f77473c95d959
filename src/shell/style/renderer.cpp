#include "shell/style/renderer.h"

#include <QQuickWindow>
#include <QSGRendererInterface>

namespace zenlot {

void chooseRenderer() {
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND") &&
        qEnvironmentVariableIsEmpty("QSG_RHI_BACKEND"))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

} // namespace zenlot
