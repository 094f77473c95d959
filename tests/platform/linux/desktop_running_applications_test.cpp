#include "platform/linux/desktop_running_applications.h"
#include "support/qt_temporary_folder.h"

#include <gtest/gtest.h>

#include <vector>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

class DesktopRunningApplicationsTest : public testing::Test {
  protected:
    DesktopRunningApplicationsTest() {
        program(u"bin/python"_s);
        program(u"bin/shell"_s);
        program(u"opt/editor/editor-2"_s);
        QFile::link(folder_.path(u"opt/editor/editor-2"_s), folder_.path(u"bin/editor"_s));
        entry(u"org.Editor"_s, "Exec=editor %U\nIcon=pen\n");
        entry(u"a-handler"_s, "Exec=editor --open %u\nNoDisplay=true\nIcon=link\n");
        entry(u"org.Editor.Notes"_s, "Exec=editor --notes\nIcon=notes\n");
        entry(u"script"_s, "Exec=python /opt/script.py\nIcon=snake\n");
        entry(u"top"_s, "Exec=shell\nTerminal=true\nIcon=top\n");
    }

    void program(const QString& name) {
        folder_.write(name, "");
        QFile::setPermissions(folder_.path(name), QFile::ReadOwner | QFile::ExeOwner);
    }

    void entry(const QString& identifier, const QByteArray& text,
               const QString& data = u"share"_s) {
        folder_.write(data + u"/applications/"_s + identifier + u".desktop"_s,
                      "[Desktop Entry]\nType=Application\n" + text);
    }

    // "identifier icon", with "background" behind it where it applies; "none" for no application.
    QString applicationOf(const QString& executable, const QByteArray& unit = "session-1.scope") {
        const QString process = u"proc/%1"_s.arg(++pid_);
        folder_.write(process + u"/cgroup"_s, "0::/user.slice/" + unit + "\n");
        QFile::link(folder_.path(executable), folder_.path(process + u"/exe"_s));
        const auto found = applications_.applicationWithPid(pid_);
        if (!found)
            return u"none"_s;
        EXPECT_EQ(found->executablePath, folder_.path(QString(executable).remove(u" (deleted)"_s)));
        EXPECT_EQ(found->bundlePath, std::nullopt);
        return found->bundleIdentifier.value_or(u"?"_s) + u' ' + found->iconName +
               (found->isBackgroundOnly ? u" background"_s : QString());
    }

    QtTemporaryFolder folder_;
    qint64 pid_{100};
    DesktopRunningApplications applications_{{folder_.path(u"home"_s), folder_.path(u"share"_s)},
                                             {folder_.path(u"bin"_s)},
                                             folder_.path(u"proc"_s)};
};

TEST_F(DesktopRunningApplicationsTest, IsTheEntryWhoseProgramTheProcessRuns) {
    struct Case {
        QString executable;
        QByteArray unit;
        QString application;
    };
    const QString editor = u"opt/editor/editor-2"_s;
    const std::vector<Case> cases{
        {editor, "session-1.scope", u"org.Editor pen"_s},
        {editor + u" (deleted)"_s, "session-1.scope", u"org.Editor pen"_s},
        {editor, "app-gnome-org.Editor.Notes-12.scope", u"org.Editor.Notes notes"_s},
        {editor, R"(app-a\x2dhandler@3.service)", u"a-handler link background"_s},
        {editor, "app-gnome-a-handler-12.scope", u"a-handler link background"_s},
        // What was started in another application's terminal, and what the unit can't vouch for.
        {u"bin/shell"_s, "app-gnome-org.Editor-12.scope", u"none"_s},
        {editor, "app-gnome-script-12.scope", u"org.Editor pen"_s},
        {u"bin/python"_s, "session-1.scope", u"none"_s},
        {u"bin/python"_s, "app-gnome-script-12.scope", u"script snake"_s},
        {u"bin/shell"_s, "app-top-12.scope", u"none"_s},
        {u"bin/gone"_s, "session-1.scope", u"none"_s}};
    for (const Case& row : cases)
        EXPECT_EQ(applicationOf(row.executable, row.unit), row.application)
            << row.executable.toStdString() << " in " << row.unit.toStdString();
    for (const qint64 pid : {qint64{-1}, qint64{0}, qint64{9999}})
        EXPECT_EQ(applications_.applicationWithPid(pid), std::nullopt);
}

// A process that runs there, with its parent and session; the key and the name of its application.
TEST_F(DesktopRunningApplicationsTest, AProcessIsAPartOfTheApplicationThatStartedIt) {
    entry(u"org.Browser"_s, "Name=Browser\nName[xx]=?\nExec=/opt/browser/browser %U\nIcon=globe\n");
    entry(u"org.flat.Pack"_s, "Name=Flat\nExec=/usr/bin/flatpak run org.flat.Pack\n");
    entry(u"paint_paint"_s, "Name=Paint\nExec=/snap/bin/paint\n");
    const QByteArray scope = "app-gnome-org.Editor-12.scope";
    const QString editor = folder_.path(u"opt/editor/editor-2"_s);
    const QString node = u"/usr/bin/node"_s;
    constexpr bool kInTerminal = true;
    const struct {
        qint64 pid;
        qint64 parent;
        qint64 session;
        QString executable;
        QByteArray unit;
        QString owner;
        bool hasTerminal{false};
    } cases[] = {
        {10, 1, 10, editor, scope, u"org.Editor org.Editor"_s},
        {11, 10, 10, node, scope, u"org.Editor org.Editor"_s}, // a helper of the editor
        {12, 11, 10, node, scope, u"org.Editor org.Editor"_s}, // and a helper's
        {13, 10, 13, u"/bin/sh"_s, scope, {}, kInTerminal},    // the terminal in the editor
        {14, 13, 13, node, scope, {}, kInTerminal},            // what somebody starts there
        {15, 14, 13, node, scope, {}, kInTerminal},
        {16, 14, 16, node, scope, {}},             // and what detaches itself
        {17, 10, 10, node, "session-1.scope", {}}, // no application's scope
        {18, 18, 10, node, scope, {}},             // its own parent
        {20, 1, 20, u"/opt/browser/browser"_s, "session-1.scope", u"org.Browser Browser"_s},
        {21, 20, 20, u"/opt/browser/lib/helper"_s, "session-1.scope", u"org.Browser Browser"_s},
        {22, 1, 22, u"/opt/plain/bin/serve"_s, "session-1.scope", u"/opt/plain plain"_s},
        {23, 1, 23, u"/opt/alone"_s, "session-1.scope", {}},
        {30, 1, 30, u"/app/bin/pack"_s, "app-flatpak-org.flat.Pack-77.scope",
         u"org.flat.Pack Flat"_s},
        {31, 30, 31, node, "app-flatpak-org.flat.Pack-77.scope", {}, kInTerminal},
        {32, 30, 32, node, "app-flatpak-net.other.Thing-7.scope", u"net.other.Thing Thing"_s},
        {40, 1, 40, u"/snap/paint/12/bin/p"_s, "session-1.scope", u"paint_paint Paint"_s},
        {41, 1, 41, node, "snap.other.tool-6c3f.scope", u"snap.other other"_s},
        {42, 1, 42, node, "snap.other.tool-6c3f.scope", {}, kInTerminal},
        {50, 1, 50, u"/tmp/.mount_DrawXyZ1/usr/bin/d"_s, scope, u"/home/me/Draw.AppImage Draw"_s},
    };
    for (const auto& one : cases) {
        const QString process = u"proc/%1"_s.arg(one.pid);
        folder_.write(process + u"/cgroup"_s, "0::/user.slice/" + one.unit + "\n");
        folder_.write(process + u"/stat"_s, "1 (a) b) S " + QByteArray::number(one.parent) + " 1 " +
                                                QByteArray::number(one.session) +
                                                (one.hasTerminal ? " 34816 1" : " 0 -1"));
        folder_.write(process + u"/environ"_s,
                      QByteArray("A=1\0APPIMAGE=/home/me/Draw.AppImage", 36));
        QFile::link(one.executable, folder_.path(process + u"/exe"_s));
    }
    for (const auto& one : cases) {
        const auto owner = applications_.applicationOwning(one.pid);
        EXPECT_EQ(owner ? owner->key + u' ' + owner->name : QString(), one.owner) << one.pid;
    }
    EXPECT_EQ(applications_.applicationOwning(21)->icon, u"globe"_s);
}

TEST_F(DesktopRunningApplicationsTest, FollowsWhatIsInstalledAndRemoved) {
    EXPECT_EQ(applicationOf(u"bin/python"_s), u"none"_s);
    entry(u"vendor/snake"_s, "Exec=nothing\nTryExec=python\nIcon=new\n");
    EXPECT_EQ(applicationOf(u"bin/python"_s), u"vendor-snake new"_s);
    entry(u"vendor-snake"_s, "Exec=python\nHidden=true\n", u"home"_s);
    EXPECT_EQ(applicationOf(u"bin/python"_s), u"none"_s);
    ASSERT_TRUE(QFile::remove(folder_.path(u"home/applications/vendor-snake.desktop"_s)));
    EXPECT_EQ(applicationOf(u"bin/python"_s), u"vendor-snake new"_s);
}

} // namespace
} // namespace zenlot
