#include "shell/mainwindow/force_quit_hint.h"

#include <gtest/gtest.h>

namespace zenlot {
namespace {

using Obstacle = ForceQuitObstacle;

TEST(ForceQuitHintTest, SaysWhatWouldHelp) {
    const std::string container = "docker-0123456789abcdef0123456789abcdef.scope";
    const struct {
        Obstacle obstacle;
        std::string service;
        const char* text;
    } cases[] = {
        {Obstacle::none, "nginx.service", ""},
        {Obstacle::unknownOwner, "", ": sudo ss -Hltnp 'sport = :8080'"},
        {Obstacle::unknownOwner, "nginx.service", ": sudo systemctl stop nginx.service"},
        {Obstacle::unknownOwner, "a\nb.service", ": sudo systemctl stop a\uFFFDb.service"},
        {Obstacle::unknownOwner, container, ": docker stop 0123456789ab"},
        {Obstacle::anotherUser, "docker.service", ": docker ps --filter publish=8080"},
        {Obstacle::anotherUser, "session-3.scope", ": sudo kill -9 42"},
        {Obstacle::serviceManager, "", ": systemctl --user list-sockets"},
        {Obstacle::initProcess, "", ": systemctl list-sockets"},
        {Obstacle::ownProcess, "", "Zenlot itself"},
        {Obstacle::gone, "", "has ended"},
    };
    for (const auto& [obstacle, service, text] : cases) {
        PortProcess process;
        process.pid = 42;
        process.port = 8080;
        process.obstacle = obstacle;
        process.service = service;
        const QString hint = forceQuitHint(process);
        EXPECT_TRUE(hint.contains(QString::fromUtf8(text))) << hint.toStdString();
        EXPECT_EQ(hint.isEmpty(), obstacle == Obstacle::none);
    }
}

} // namespace
} // namespace zenlot
