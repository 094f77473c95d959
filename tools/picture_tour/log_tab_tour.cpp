#include "picture_tour/tour.h"
#include "settings/window/settings_view_model.h"
#include "shell/logviewer/log_tab_view_model.h"
#include "support/sample_user.h"

#include <QFile>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>

#include <stdexcept>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

// A morning with a conflict.
constexpr const char* kMorning =
    "2026-03-05T09:07:31Z [zenlot-daemon] background monitor started\n"
    "2026-03-05T09:07:31Z [zenlot-daemon] watching 24 runtimes\n"
    "2026-03-05T09:07:32Z [zenlot-app] conflict listener started\n"
    "2026-03-05T09:07:32Z [zenlot-app] agent status enabled\n"
    "2026-03-05T09:08:10Z [zenlot-daemon] Listening on 5173: node (pid 4312)\n"
    "2026-03-05T09:11:58Z [zenlot-daemon] attempt of node (pid 4377) on port 3000\n"
    "2026-03-05T09:12:02Z [zenlot-daemon] broadcasting port 3000, node (pid 4242)\n"
    "2026-03-05T09:12:02Z [zenlot-app] conflict notifying port=3000 pid=4242 process=node\n"
    "2026-03-05T09:12:03Z [zenlot-app] notification add failed: "
    "org.freedesktop.DBus.Error.ServiceUnknown: The name is not activatable\n"
    "2026-03-05T09:12:09Z [zenlot-daemon] node (pid 4377): Port 3000 already in use\n"
    "2026-03-05T09:12:41Z [zenlot-daemon] process exited pid=4377\n"
    "2026-03-05T09:13:05Z [zenlot-app] killing pid=4242\n"
    "2026-03-05T09:13:05Z [zenlot-daemon] process terminated pid=4242\n"
    "2026-03-05T09:13:06Z [zenlot-daemon] Listening on 3000: node (pid 4391)\n"
    "2026-03-05T09:20:44Z [zenlot-app] conflict records loaded count=1 fresh=0\n"
    "2026-03-05T09:31:17Z [zenlot-daemon] port 8080 is free again\n";

class LogTabScene final {
  public:
    LogTabScene() {
        engine_.addImportPath(u":/qt/qml"_s);
        engine_.setInitialProperties({{u"viewModel"_s, QVariant::fromValue(&settingsViewModel_)},
                                      {u"logViewModel"_s, QVariant::fromValue(&log)}});
        engine_.load(QUrl(u"qrc:/qt/qml/Zenlot/App/SettingsWindow.qml"_s));
        window_ = qobject_cast<QQuickWindow*>(engine_.rootObjects().value(0));
        if (!window_)
            throw std::runtime_error("the settings can't be made");
        for (QQuickItem* item : window_->findChildren<QQuickItem*>()) {
            if (item->property("selectedTab").isValid())
                item->setProperty("selectedTab", 2);
        }
        window_->show();
        window_->requestActivate();
        waitFor([this] { return window_->isActive() && !log.isReading(); });
    }

    // Writes the log anew, and waits until so many lines are shown.
    void write(const QByteArray& text, int lines) {
        QFile file(log.path());
        if (!file.open(QFile::WriteOnly) || file.write(text) < 0)
            throw std::runtime_error("can't write the log");
        file.close();
        log.reloadLog();
        waitFor([&] { return log.lines()->rowCount() == lines; });
    }

    QQuickWindow& window() { return *window_; }

  private:
    QTemporaryDir folder_;
    AppLog appLog_{folder_.filePath(u"zenlot-monitor.log"_s)};
    SampleUser user_;
    SettingsViewModel settingsViewModel_{user_.settings, user_.installer, user_.openLoginItems};

  public:
    LogTabViewModel log{folder_.filePath(u"zenlot-monitor.log"_s), appLog_};

  private:
    QQuickWindow* window_{nullptr};
    QQmlApplicationEngine engine_; // the last member: what it shows must outlive it
};

} // namespace

void showLogTab(Visitor& visitor) {
    const int lines = static_cast<int>(QByteArray(kMorning).count('\n'));
    LogTabScene scene;
    const auto see = [&](const char* state) {
        visitor.see(scene.window(), QString::fromLatin1(state));
    };
    see("log-empty");
    scene.write(kMorning, lines);
    see("log");
    for (const int row : {6, 7, 9})
        scene.log.toggleMark(row);
    see("log-marked");
    scene.window().findChild<QQuickItem*>(u"logLines"_s)->forceActiveFocus(Qt::TabFocusReason);
    press(scene.window(), Qt::Key_Up);
    see("log-keyboard");
    scene.write(QByteArray(kMorning) +
                    "2026-03-05T09:40:00Z [zenlot-daemon] environment of next-server: " +
                    QByteArray("PATH=/usr/local/bin:/usr/bin ").repeated(90) + "\nafter it\n",
                lines + 2);
    see("log-long-line");
    scene.write(
        QByteArrayLiteral("[zenlot-daemon] \x1B[31mred\x1B[0m \xE2\x80\xAEreversed\xE2\x80\xAC "
                          "<b>bold</b>\ttab\r\nNUL \0 within\n"
                          "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D 3000 "
                          "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E\n"),
        3);
    see("log-hostile");
    scene.write("not UTF-8: \xC3\x28\n", 0);
    see("log-not-utf8");
    QByteArray many;
    for (int line = 0; line < 2'300'000; ++line)
        many += "2026-03-05T09:12:03Z [zenlot-daemon] line " + QByteArray::number(line) +
                (line % 5 == 0
                     ? " of an attempt that needs more room than there is in one row of the list\n"
                     : "\n");
    scene.write(many, 2'300'000);
    see("log-large");
}

} // namespace zenlot
