// A server can't have its port; an alert says who holds it, its button ends the holder, and the
// server starts.
#include "e2e/private_desktop.h"

#include <QTest>
#include <gmock/gmock.h>

#include <csignal>

namespace zenlot {
namespace {

using testing::HasSubstr;

constexpr int kPatienceMilliseconds = 30'000;

TEST(ConflictEndToEndTest, AlertNamesTheHolderAndItsButtonFreesThePort) {
    PrivateDesktop desktop;
    const std::filesystem::path folder = desktop.folder();
    const auto write = [&folder](const char* name, const std::string& text) {
        std::filesystem::create_directories((folder / name).parent_path());
        std::ofstream(folder / name) << text;
    };
    const auto read = [&folder](const char* name) {
        std::ifstream file(folder / name);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    write("XDG_CONFIG_HOME/dev.quorvane.zenlot/defaults.json",
          R"({"conflictMonitoringEnabled": true, "hasCompletedOnboarding": true,
              "portMonitoringEnabled": false})");
    // The notification service writes down what it shows, and a script chooses the button.
    write("alert", "#!/bin/sh\nprintf '%s\\n' \"$DUNST_SUMMARY\" \"$DUNST_BODY\" >>" +
                       (folder / "shown").string() + "\n");
    write("choose", "#!/bin/sh\ngrep -m1 'Kill Process'\n");
    for (const char* script : {"alert", "choose"})
        std::filesystem::permissions(folder / script, std::filesystem::perms::owner_all);
    write("dunstrc", "[global]\ndmenu = " + (folder / "choose").string() +
                         "\n[all]\nsummary = \"*\"\nscript = " + (folder / "alert").string() +
                         "\n");
    desktop.start(QStringLiteral("dunst"),
                  {QStringLiteral("-conf"), QString::fromStdString((folder / "dunstrc").string())});

    QProcess& holder = desktop.start("python3 -u -m http.server -b 127.0.0.1 0");
    const QString port = PrivateDesktop::firstLine(holder).section(QLatin1Char(' '), 5, 5);
    const QStringList serve{QStringLiteral("-u"),          QStringLiteral("-m"),
                            QStringLiteral("http.server"), QStringLiteral("-b"),
                            QStringLiteral("127.0.0.1"),   port};
    desktop.start(QStringLiteral(ZENLOT_MONITOR), {});
    desktop.start(QStringLiteral(ZENLOT_PROGRAM), {});
    const char* log = "HOME/Library/Logs/zenlot-monitor.log";
    const auto logHas = [&](const char* text) {
        return QTest::qWaitFor([&] { return read(log).find(text) != std::string::npos; },
                               kPatienceMilliseconds);
    };
    ASSERT_TRUE(logHas("background monitor started"));
    ASSERT_TRUE(logHas("conflict listener started"));

    QProcess& refused = desktop.start(QStringLiteral("python3"), serve);
    EXPECT_TRUE(refused.waitForFinished(kPatienceMilliseconds));
    EXPECT_EQ(refused.exitCode(), 1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !read("shown").empty(); }, kPatienceMilliseconds));
    EXPECT_THAT(read("shown"), HasSubstr("Python3"));
    EXPECT_THAT(read("shown"), HasSubstr(port.toStdString()));

    ASSERT_TRUE(desktop.start("dunstctl context").waitForFinished(kPatienceMilliseconds));
    EXPECT_TRUE(holder.state() == QProcess::NotRunning ||
                holder.waitForFinished(kPatienceMilliseconds));
    EXPECT_EQ(holder.exitCode(), SIGKILL);
    QProcess& second = desktop.start(QStringLiteral("python3"), serve);
    EXPECT_THAT(PrivateDesktop::firstLine(second).toStdString(), HasSubstr("Serving HTTP"));
}

} // namespace
} // namespace zenlot
