// Draws the main window in each of its states, in light and dark, into a folder:
//
//     zenlot-screenshots FOLDER
//
// The window is the real one; the machine that it shows is made up.
#include "shell/app/screenshots/sample_machine.h"
#include "shell/processicon/process_icon_provider.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPalette>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QStyleHints>
#include <QTimer>
#include <QtQml/qqmlextensionplugin.h>

#include <chrono>
#include <cstdio>
#include <functional>
#include <stdexcept>

Q_IMPORT_QML_PLUGIN(Zenlot_AppPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_InspectorPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_MainWindowPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_ProcessIconPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 20s;
// Longer than the longest pause between two changes of an animation.
constexpr auto kStillness = 200ms;

QPalette paletteOf(const QColor& window, const QColor& base, const QColor& text) {
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Text, text);
    return palette;
}

QPalette lightPalette() {
    return paletteOf(QColor(0xef, 0xef, 0xef), Qt::white, QColor(0x1c, 0x1c, 0x1e));
}

QPalette darkPalette() {
    return paletteOf(QColor(0x2a, 0x2a, 0x2d), QColor(0x1b, 0x1b, 0x1d), QColor(0xf2, 0xf2, 0xf4));
}

// The window over a machine of its own.
class Scene final {
  public:
    Scene() {
        engine_.addImportPath(QStringLiteral(":/qt/qml"));
        ProcessIconProvider::install(engine_, machine.runningApplications(), machine.workspace());
    }

    void open() {
        engine_.setInitialProperties(
            {{QStringLiteral("detailViewModel"), QVariant::fromValue(&machine.inspector())},
             {QStringLiteral("viewModel"), QVariant::fromValue(&content())}});
        engine_.load(QUrl(QStringLiteral("qrc:/qt/qml/Zenlot/App/MainWindow.qml")));
        window_ = qobject_cast<QQuickWindow*>(engine_.rootObjects().value(0));
        if (!window_)
            throw std::runtime_error("the window can't be made");
        window_->show();
        window_->requestActivate();
        waitFor([this] { return window_->isActive() && content().sidebar()->rowCount() > 0; });
    }

    // Types the number and waits for what is known of it.
    void check(const QString& port) {
        bool wasChecking = false;
        const auto watch =
            QObject::connect(&content(), &ContentViewModel::statusChanged, &content(),
                             [&] { wasChecking = wasChecking || content().isChecking(); });
        content().setPortInput(port);
        waitFor([&] { return wasChecking && !content().isChecking(); });
        QObject::disconnect(watch);
    }

    void openInspector() {
        content().openRow(0);
        waitFor([this] { return machine.inspector().hasDetails(); });
    }

    void press(int key, Qt::KeyboardModifiers modifiers = {}) {
        QKeyEvent down(QEvent::KeyPress, key, modifiers);
        QGuiApplication::sendEvent(window_, &down);
        QKeyEvent up(QEvent::KeyRelease, key, modifiers);
        QGuiApplication::sendEvent(window_, &up);
    }

    void resize(int width, int height) { window_->resize(width, height); }

    // As it is at this moment.
    void takeNow(const QString& file) {
        QGuiApplication::processEvents();
        if (!window_->grabWindow().save(file))
            throw std::runtime_error("can't write " + file.toStdString());
    }

    // Once nothing moves any more.
    void take(const QString& file) {
        QImage last;
        QDeadlineTimer still;
        waitFor([&] {
            QImage now = window_->grabWindow();
            if (last != now) {
                last = std::move(now);
                still.setRemainingTime(kStillness);
            }
            return still.hasExpired();
        });
        takeNow(file);
    }

    ContentViewModel& content() { return machine.content(); }

    SampleMachine machine;

  private:
    static void waitFor(const std::function<bool()>& isReached) {
        const QDeadlineTimer patience(kPatience);
        QEventLoop loop;
        QTimer looks;
        looks.callOnTimeout([&] {
            if (isReached() || patience.hasExpired())
                loop.quit();
        });
        looks.start(10ms);
        loop.exec();
        if (!isReached())
            throw std::runtime_error("the window did not come so far");
    }

    QQuickWindow* window_{nullptr};
    QQmlApplicationEngine engine_; // the last member: what it shows must outlive it
};

void openSections(ProcessDetailViewModel& inspector) {
    for (const char* section : {"identityExpanded", "resourceExpanded", "networkExpanded",
                                "appExpanded", "commandExpanded"})
        inspector.setProperty(section, true);
}

void takeAll(const QDir& folder, const QString& look) {
    const auto file = [&](const char* state) {
        return folder.filePath(QStringLiteral("%1-%2.png").arg(QLatin1String(state), look));
    };
    {
        Scene scene;
        scene.open();
        scene.take(file("empty"));
        scene.content().setPortInput(QStringLiteral("80"));
        scene.takeNow(file("typing"));
        scene.check(QStringLiteral("3001"));
        scene.take(file("free"));
        scene.check(QStringLiteral("8080"));
        scene.take(file("one-owner"));
        scene.check(QStringLiteral("5432"));
        scene.take(file("two-owners"));
        scene.check(QStringLiteral("7070"));
        scene.openInspector();
        scene.take(file("inspector"));
        scene.resize(580, 380);
        scene.take(file("smallest"));
        scene.resize(860, 560);
        openSections(scene.machine.inspector());
        scene.take(file("inspector-open"));
        scene.content().requestForceQuit();
        scene.take(file("confirmation"));
        scene.content().cancelForceQuit();
        scene.content().closeInspector();
        SidebarModel& sidebar = *scene.content().sidebar();
        for (int row = sidebar.rowCount(); row-- > 0;)
            sidebar.setExpanded(row, true);
        scene.take(file("grouped"));
        scene.press(Qt::Key_Tab);
        scene.press(Qt::Key_Tab);
        scene.take(file("focus"));
        scene.press(Qt::Key_Tab);
        scene.press(Qt::Key_Tab);
        scene.take(file("focus-button"));
    }
    Scene crowded;
    crowded.machine.becomeCrowded(600);
    crowded.open();
    crowded.check(QStringLiteral("20400"));
    crowded.take(file("crowded"));
    Scene hostile;
    hostile.machine.addProcess(
        666, true, "/tmp/<b>two\nlines</b> \u202Ereversed " + std::string(4'000, 'z'), {6666});
    hostile.open();
    hostile.check(QStringLiteral("6666"));
    hostile.openInspector();
    hostile.take(file("hostile"));
    hostile.content().requestForceQuit();
    hostile.take(file("hostile-confirmation"));
}

} // namespace
} // namespace zenlot

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Fusion"));
    QGuiApplication::styleHints()->setCursorFlashTime(0); // a cursor that stays
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 2 || !QDir().mkpath(arguments.at(1))) {
        std::fputs("usage: zenlot-screenshots FOLDER\n", stderr);
        return 2;
    }
    try {
        const QDir folder(arguments.at(1));
        QGuiApplication::setPalette(zenlot::lightPalette());
        zenlot::takeAll(folder, QStringLiteral("light"));
        QGuiApplication::setPalette(zenlot::darkPalette());
        zenlot::takeAll(folder, QStringLiteral("dark"));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zenlot-screenshots: %s\n", error.what());
        return 1;
    }
    return 0;
}
