#include "shell/app/zenlot_app.h"

#include "inventory/linux/processors.h"
#include "platform/linux/xdg_home_directories.h"
#include "settings/app_log.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Zenlot_AppPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_MainWindowPlugin)

namespace zenlot {

ZenlotApp::ZenlotApp()
    : directories_(xdgHomeDirectories()),
      userDefaults_(directories_.configHome + QStringLiteral("/dev.quorvane.zenlot/defaults.json")),
      loginItem_(directories_.configHome, QCoreApplication::applicationFilePath()),
      settings_(userDefaults_, loginItem_),
      scanner_(processTables_, isPortInUse, availableProcessors()),
      lookup_(scanner_, sharedPortCache_),
      inventory_(scanner_, lookup_, sharedPortCache_, processPinner_),
      broadcasts_(QDBusConnection::sessionBus()),
      portDataCache_(SharedContainer(directories_.stateHome), sharedPortCache_, broadcasts_,
                     notifications_),
      contentViewModel_(inventory_, notifications_) {
    engine_.addImportPath(QStringLiteral(":/qt/qml"));
}

bool ZenlotApp::start() {
    makeMonitorLogDirectory(directories_.home);
    portDataCache_.start();
    engine_.setInitialProperties(
        {{QStringLiteral("viewModel"), QVariant::fromValue(&contentViewModel_)}});
    engine_.load(QUrl(QStringLiteral("qrc:/qt/qml/Zenlot/App/MainWindow.qml")));
    return !engine_.rootObjects().isEmpty();
}

} // namespace zenlot
