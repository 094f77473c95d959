// A stranger's server, the background monitor that publishes it, and the application with its
// window.
#pragma once

#include "e2e/accessible_tree.h"
#include "e2e/private_desktop.h"

#include <QTest>
#include <gtest/gtest.h>

#include <csignal>

namespace zenlot {

class EndToEndTest : public testing::Test {
  protected:
    using State = AccessibleTree::State;
    static constexpr int kUntilEverythingWasAskedAgain = 1500;

    // Starts a web server by a program with the given name, the background monitor, and when that
    // has published the server, the application.
    void open(const QString& name) {
        server = &desktop.startServer(name);
        port = PrivateDesktop::portOf(*server);
        desktop.start(QStringLiteral(ZENLOT_MONITOR), {});
        ASSERT_TRUE(waitUntil([this] { return isPublished(); }));
        pid = QStringLiteral("PID %1").arg(server->processId());
        // What would turn the direction of a line is shown as a mark.
        shownName = QString(name).replace(QChar(0x202E), QChar(0xFFFD));
        row = QStringLiteral("%1 TCP4 LISTEN %2 *:%3 ").arg(shownName, pid, port);

        zenlot = &desktop.start(QStringLiteral(ZENLOT_PROGRAM), {});
        ASSERT_TRUE(tree.find("frame", QStringLiteral("Zenlot"), State::active));
        ASSERT_TRUE(tree.find("text", QStringLiteral("Port"), State::focused));
        // A list makes only the rows that fit, and the machine may have many listeners.
        desktop.start("xdotool search --sync --onlyvisible --name ^Zenlot$ windowsize 860 3900");
        ASSERT_TRUE(tree.find("list item", port + QLatin1Char(' ')));
    }

    bool isPublished() const {
        return desktop.files()
                   .read("XDG_STATE_HOME/group.dev.quorvane.zenlot/ports.json")
                   .find("{\"port\":" + port.toStdString() + ",") != std::string::npos;
    }

    bool hasKeyboard(const char* role, const QString& name) const {
        return tree.find(role, name, State::focused).has_value();
    }

    QString freeLine() const { return QStringLiteral("Port %1 is free").arg(port); }

    void expectServerIsGone() {
        EXPECT_TRUE(PrivateDesktop::hasEnded(*server));
        EXPECT_EQ(server->exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(server->exitCode(), SIGKILL);
        EXPECT_TRUE(tree.isGone("list item", row));
        EXPECT_TRUE(tree.isGone("list item", port + QLatin1Char(' ')));
        EXPECT_TRUE(tree.find("label", freeLine()));
        // The window checks again after a moment, and the monitor publishes: neither may bring the
        // server back.
        EXPECT_TRUE(waitUntil([this] { return !isPublished(); }));
        QTest::qWait(kUntilEverythingWasAskedAgain);
        EXPECT_TRUE(tree.isGone("list item", row));
        EXPECT_TRUE(tree.isGone("list item", port + QLatin1Char(' ')));
        EXPECT_TRUE(tree.find("label", freeLine()));
        EXPECT_EQ(zenlot->readAllStandardError().toStdString(), "");
    }

    PrivateDesktop desktop;
    AccessibleTree tree{desktop.sessionBus()};
    QProcess* server = nullptr;
    QProcess* zenlot = nullptr;
    QString port;
    QString pid;
    QString shownName;
    QString row;
};

} // namespace zenlot
