#include "picture_tour/sample_machine.h"
#include "picture_tour/tour.h"
#include "platform/fake_application_windows.h"
#include "platform/fake_global_shortcut.h"
#include "platform/fake_status_bar.h"
#include "shell/app/window_commands.h"
#include "shell/processicon/process_icon_provider.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>
#include <QtQml/qqmlextensionplugin.h>

#include <chrono>
#include <stdexcept>
#include <utility>

Q_IMPORT_QML_PLUGIN(Zenlot_AppPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_InspectorPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_MainWindowPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_ProcessIconPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr auto kPatience = 60s;
// Longer than the longest pause between two changes of an animation.
constexpr auto kStillness = 200ms;

// The window over a machine of its own.
class Scene final {
  public:
    Scene() {
        engine_.addImportPath(u":/qt/qml"_s);
        ProcessIconProvider::install(engine_, machine.runningApplications(), machine.workspace());
    }

    void open() {
        engine_.setInitialProperties(
            {{u"detailViewModel"_s, QVariant::fromValue(&machine.inspector())},
             {u"viewModel"_s, QVariant::fromValue(&content())}});
        engine_.load(QUrl(u"qrc:/qt/qml/Zenlot/App/MainWindow.qml"_s));
        window_ = qobject_cast<QQuickWindow*>(engine_.rootObjects().value(0));
        if (!window_)
            throw std::runtime_error("the window can't be made");
        window_->show();
        window_->requestActivate();
        waitFor([this] { return window_->isActive() && content().sidebar()->rowCount() > 0; });
    }

    // As on a desktop without a status area.
    void showMenuButton(bool shown) {
        window_->setProperty("commands", QVariant::fromValue(shown ? &commands_ : nullptr));
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

    void resize(QSize size) {
        window_->resize(size);
        waitFor([&] { return window_->contentItem()->size() == size; });
    }

    QQuickWindow& window() { return *window_; }

    ContentViewModel& content() { return machine.content(); }

    SampleMachine machine;

  private:
    NotificationCenter notifications_;
    FakeStatusBar bar_;
    FakeGlobalShortcut shortcut_;
    FakeApplicationWindows windows_;
    AppDelegate delegate_{{machine.inventory(), notifications_, bar_, shortcut_, windows_}, {}};
    WindowCommands commands_{delegate_};
    QQuickWindow* window_{nullptr};
    QQmlApplicationEngine engine_; // the last member: what it shows must outlive it
};

void openSections(ProcessDetailViewModel& inspector) {
    for (const char* section : {"identityExpanded", "resourceExpanded", "networkExpanded",
                                "appExpanded", "commandExpanded"})
        inspector.setProperty(section, true);
}

} // namespace

void showMainWindow(Visitor& visitor) {
    {
        Scene scene;
        scene.open();
        visitor.see(scene.window(), u"empty"_s);
        scene.showMenuButton(true);
        visitor.see(scene.window(), u"without-status-item"_s);
        scene.showMenuButton(false);
        scene.content().setPortInput(u"80"_s);
        visitor.captureNow(scene.window(), u"typing"_s);
        scene.check(u"3001"_s);
        visitor.see(scene.window(), u"free"_s);
        scene.check(u"41234"_s);
        waitFor([&] { return !scene.content().freeNote().isEmpty(); });
        visitor.see(scene.window(), u"free-but-kept"_s);
        scene.check(u"3000"_s);
        visitor.see(scene.window(), u"one-owner"_s);
        scene.check(u"5432"_s);
        visitor.see(scene.window(), u"two-owners"_s);
        scene.check(u"80"_s);
        press(scene.window(), Qt::Key_Delete); // which can only tell why not
        visitor.see(scene.window(), u"not-mine"_s);
        scene.check(u"3000"_s);
        press(scene.window(), Qt::Key_Menu);
        visitor.see(scene.window(), u"context-menu"_s);
        press(scene.window(), Qt::Key_Escape);
        scene.openInspector();
        visitor.see(scene.window(), u"inspector"_s);
        scene.resize({580, 380});
        visitor.see(scene.window(), u"smallest"_s);
        scene.resize({860, 560});
        openSections(scene.machine.inspector());
        visitor.see(scene.window(), u"inspector-open"_s);
        scene.resize({860, 1'050});
        visitor.see(scene.window(), u"inspector-tall"_s);
        scene.resize({860, 560});
        scene.content().requestForceQuit();
        visitor.see(scene.window(), u"confirmation"_s);
        scene.content().cancelForceQuit();
        scene.content().requestStop();
        waitFor([&] { return scene.content().isAskingToStop(); });
        visitor.see(scene.window(), u"stop"_s);
    }
    {
        Scene scene;
        scene.machine.addApplications();
        scene.open();
        scene.check(u"7070"_s);
        scene.openInspector();
        openSections(scene.machine.inspector());
        visitor.see(scene.window(), u"inspector-bundle"_s);
        scene.content().closeInspector();
        SidebarModel& sidebar = *scene.content().sidebar();
        for (int row = sidebar.rowCount(); row-- > 0;)
            sidebar.setExpanded(row, true);
        visitor.see(scene.window(), u"grouped"_s);
        press(scene.window(), Qt::Key_Tab);
        press(scene.window(), Qt::Key_Tab);
        visitor.see(scene.window(), u"focus"_s);
        press(scene.window(), Qt::Key_Tab);
        press(scene.window(), Qt::Key_Tab);
        visitor.see(scene.window(), u"focus-button"_s);
    }
    Scene crowded;
    crowded.machine.becomeCrowded(600);
    crowded.open();
    crowded.check(u"20400"_s);
    visitor.see(crowded.window(), u"crowded"_s);
    Scene hostile;
    hostile.machine.addProcess(
        666, true, "/tmp/<b>two\nlines</b> \u202Ereversed " + std::string(4'000, 'z'), {6666});
    hostile.open();
    hostile.check(u"6666"_s);
    hostile.openInspector();
    visitor.see(hostile.window(), u"hostile"_s);
    hostile.content().requestForceQuit();
    visitor.see(hostile.window(), u"hostile-confirmation"_s);
}

void press(QQuickWindow& window, int key, Qt::KeyboardModifiers modifiers) {
    QKeyEvent down(QEvent::KeyPress, key, modifiers);
    QGuiApplication::sendEvent(&window, &down);
    QKeyEvent up(QEvent::KeyRelease, key, modifiers);
    QGuiApplication::sendEvent(&window, &up);
}

QImage pictureOnceStill(QQuickWindow& window) {
    QImage last;
    QDeadlineTimer still;
    waitFor([&] {
        QImage now = window.grabWindow();
        if (last != now) {
            last = std::move(now);
            still.setRemainingTime(kStillness);
        }
        return still.hasExpired();
    });
    return last;
}

void waitFor(const std::function<bool()>& isReached) {
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

} // namespace zenlot
