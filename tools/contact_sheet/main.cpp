// Draws everything that Zenlot.Style offers, in light and dark, into a folder:
//
//     zenlot_contact_sheet FOLDER
//
// Both pictures are of the same window, whose palette is exchanged in between.
#include "palettes.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QtQml/qqmlextensionplugin.h>

#include <cstdio>

Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace {

// Leaves the drawing of what has changed to the window, and takes the picture.
bool save(QQuickView& view, const QString& path) {
    QGuiApplication::processEvents();
    return view.grabWindow().save(path);
}

} // namespace

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 2 || !QDir().mkpath(arguments.at(1))) {
        std::fputs("usage: zenlot_contact_sheet FOLDER\n", stderr);
        return 2;
    }
    const QDir folder(arguments.at(1));
    QStringList symbols;
    for (const QString& file : QDir(QStringLiteral(":/qt/qml/Zenlot/Style/symbols")).entryList())
        symbols.append(file.chopped(4));

    QGuiApplication::setPalette(zenlot::lightPalette());
    QQuickView view;
    view.engine()->addImportPath(QStringLiteral(":/qt/qml"));
    view.setInitialProperties({{QStringLiteral("symbols"), symbols}});
    view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Zenlot/ContactSheet/ContactSheet.qml")));
    if (view.status() != QQuickView::Ready)
        return 1;
    view.show();
    view.requestActivate();
    while (!view.isActive() || !view.rootObject()->property("isReady").toBool())
        QGuiApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (!save(view, folder.filePath(QStringLiteral("contact-sheet-light.png"))))
        return 1;
    QGuiApplication::setPalette(zenlot::darkPalette());
    return save(view, folder.filePath(QStringLiteral("contact-sheet-dark.png"))) ? 0 : 1;
}
