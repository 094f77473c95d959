#include "shell/app/zenlot_app.h"

#include "inventory/linux/processors.h"
#include "platform/linux/xdg_data_directories.h"
#include "platform/linux/xdg_home_directories.h"
#include "settings/app_log.h"
#include "shell/processicon/process_icon_provider.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QQuickWindow>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Zenlot_AppPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_InspectorPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_MainWindowPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_ProcessIconPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

QStringList programDirectories() {
    return QString::fromLocal8Bit(qgetenv("PATH")).split(u':', Qt::SkipEmptyParts);
}

} // namespace

ZenlotApp::ZenlotApp()
    : directories_(xdgHomeDirectories()),
      userDefaults_(directories_.configHome + QStringLiteral("/dev.quorvane.zenlot/defaults.json")),
      loginItem_(directories_.configHome, QCoreApplication::applicationFilePath()),
      settings_(userDefaults_, loginItem_),
      runningApplications_(xdgDataDirectories(directories_), programDirectories()),
      workspace_(directories_.home, xdgDataDirectories(directories_), propertyLists_),
      scanner_(processTables_, isPortInUse, availableProcessors()),
      lookup_(scanner_, sharedPortCache_),
      inventory_(scanner_, lookup_, sharedPortCache_, processPinner_),
      broadcasts_(QDBusConnection::sessionBus()),
      portDataCache_(SharedContainer(directories_.stateHome), sharedPortCache_, broadcasts_,
                     notifications_),
      bundleKeys_(propertyLists_),
      contentViewModel_({inventory_, notifications_, runningApplications_, bundleKeys_, appModel_,
                         settings_, userDefaults_},
                        {}),
      detailsCollector_(processInspector_),
      detailsLoader_(detailsCollector_, runningApplications_, propertyLists_),
      detailViewModel_(detailsLoader_) {
    QObject::connect(&contentViewModel_, &ContentViewModel::detailProcessChanged, &detailViewModel_,
                     [this] { detailViewModel_.setProcess(contentViewModel_.detailProcess()); });
    engine_.addImportPath(QStringLiteral(":/qt/qml"));
    ProcessIconProvider::install(engine_, runningApplications_, workspace_);
}

bool ZenlotApp::start() {
    makeMonitorLogDirectory(directories_.home);
    portDataCache_.start();
    engine_.setInitialProperties(
        {{QStringLiteral("detailViewModel"), QVariant::fromValue(&detailViewModel_)},
         {QStringLiteral("viewModel"), QVariant::fromValue(&contentViewModel_)}});
    engine_.load(QUrl(QStringLiteral("qrc:/qt/qml/Zenlot/App/MainWindow.qml")));
    return mainWindow() != nullptr;
}

QQuickWindow* ZenlotApp::mainWindow() const {
    return qobject_cast<QQuickWindow*>(engine_.rootObjects().value(0));
}

} // namespace zenlot
