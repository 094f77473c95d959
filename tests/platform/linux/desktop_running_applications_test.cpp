#include "platform/linux/desktop_running_applications.h"
#include "support/qt_temporary_folder.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace zenlot {
namespace {

class DesktopRunningApplicationsTest : public testing::Test {
  protected:
    DesktopRunningApplicationsTest() {
        program(u"bin/python"_qs);
        program(u"bin/shell"_qs);
        program(u"opt/editor/editor-2"_qs);
        QFile::link(folder_.path(u"opt/editor/editor-2"_qs), folder_.path(u"bin/editor"_qs));
        entry(u"org.Editor"_qs, "Exec=editor %U\nIcon=pen\n");
        entry(u"a-handler"_qs, "Exec=editor --open %u\nNoDisplay=true\nIcon=link\n");
        entry(u"org.Editor.Notes"_qs, "Exec=editor --notes\nIcon=notes\n");
        entry(u"script"_qs, "Exec=python /opt/script.py\nIcon=snake\n");
        entry(u"top"_qs, "Exec=shell\nTerminal=true\nIcon=top\n");
    }

    void program(const QString& name) {
        folder_.write(name, "");
        QFile::setPermissions(folder_.path(name), QFile::ReadOwner | QFile::ExeOwner);
    }

    void entry(const QString& identifier, const QByteArray& text,
               const QString& data = u"share"_qs) {
        folder_.write(data + u"/applications/"_qs + identifier + u".desktop"_qs,
                      "[Desktop Entry]\nType=Application\n" + text);
    }

    // "identifier icon", with "background" behind it where it applies; "none" for no application.
    QString applicationOf(const QString& executable, const QByteArray& unit = "session-1.scope") {
        const QString process = u"proc/%1"_qs.arg(++pid_);
        folder_.write(process + u"/cgroup"_qs, "0::/user.slice/" + unit + "\n");
        QFile::link(folder_.path(executable), folder_.path(process + u"/exe"_qs));
        const auto found = applications_.applicationWithPid(pid_);
        if (!found)
            return u"none"_qs;
        EXPECT_EQ(found->executablePath,
                  folder_.path(QString(executable).remove(u" (deleted)"_qs)));
        EXPECT_EQ(found->bundlePath, std::nullopt);
        return found->bundleIdentifier.value_or(u"?"_qs) + u' ' + found->iconName +
               (found->isBackgroundOnly ? u" background"_qs : QString());
    }

    QtTemporaryFolder folder_;
    qint64 pid_{100};
    DesktopRunningApplications applications_{{folder_.path(u"home"_qs), folder_.path(u"share"_qs)},
                                             {folder_.path(u"bin"_qs)},
                                             folder_.path(u"proc"_qs)};
};

TEST_F(DesktopRunningApplicationsTest, IsTheEntryWhoseProgramTheProcessRuns) {
    struct Case {
        QString executable;
        QByteArray unit;
        QString application;
    };
    const QString editor = u"opt/editor/editor-2"_qs;
    const std::vector<Case> cases{
        {editor, "session-1.scope", u"org.Editor pen"_qs},
        {editor + u" (deleted)"_qs, "session-1.scope", u"org.Editor pen"_qs},
        {editor, "app-gnome-org.Editor.Notes-12.scope", u"org.Editor.Notes notes"_qs},
        {editor, R"(app-a\x2dhandler@3.service)", u"a-handler link background"_qs},
        {editor, "app-gnome-a-handler-12.scope", u"a-handler link background"_qs},
        // What was started in another application's terminal, and what the unit can't vouch for.
        {u"bin/shell"_qs, "app-gnome-org.Editor-12.scope", u"none"_qs},
        {editor, "app-gnome-script-12.scope", u"org.Editor pen"_qs},
        {u"bin/python"_qs, "session-1.scope", u"none"_qs},
        {u"bin/python"_qs, "app-gnome-script-12.scope", u"script snake"_qs},
        {u"bin/shell"_qs, "app-top-12.scope", u"none"_qs},
        {u"bin/gone"_qs, "session-1.scope", u"none"_qs}};
    for (const Case& row : cases)
        EXPECT_EQ(applicationOf(row.executable, row.unit), row.application)
            << row.executable.toStdString() << " in " << row.unit.toStdString();
    for (const qint64 pid : {qint64{-1}, qint64{0}, qint64{9999}})
        EXPECT_EQ(applications_.applicationWithPid(pid), std::nullopt);
}

TEST_F(DesktopRunningApplicationsTest, FollowsWhatIsInstalledAndRemoved) {
    EXPECT_EQ(applicationOf(u"bin/python"_qs), u"none"_qs);
    entry(u"vendor/snake"_qs, "Exec=nothing\nTryExec=python\nIcon=new\n");
    EXPECT_EQ(applicationOf(u"bin/python"_qs), u"vendor-snake new"_qs);
    entry(u"vendor-snake"_qs, "Exec=python\nHidden=true\n", u"home"_qs);
    EXPECT_EQ(applicationOf(u"bin/python"_qs), u"none"_qs);
    ASSERT_TRUE(QFile::remove(folder_.path(u"home/applications/vendor-snake.desktop"_qs)));
    EXPECT_EQ(applicationOf(u"bin/python"_qs), u"vendor-snake new"_qs);
}

TEST_F(DesktopRunningApplicationsTest, AnswersSeveralThreads) {
    const QString expected = applicationOf(u"opt/editor/editor-2"_qs);
    std::vector<std::jthread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&, i] {
            for (int round = 0; round < 50; ++round) {
                if (i == 0)
                    entry(u"more-%1"_qs.arg(round), "Exec=shell\n");
                EXPECT_EQ(applications_.applicationWithPid(pid_)->iconName, u"pen"_qs);
            }
        });
    }
}

} // namespace
} // namespace zenlot
