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
