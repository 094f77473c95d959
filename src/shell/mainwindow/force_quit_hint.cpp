#include "shell/mainwindow/force_quit_hint.h"

#include "text/display_line.h"

#include <QCoreApplication>
#include <QStringView>

#include <array>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype kShownDigits = 12; // of a container's number, as its own tools show it
constexpr qsizetype kLongestService = 64;
constexpr auto kSuffix = ".scope";

struct ContainerTool {
    const char* prefix;
    const char* command;
};
constexpr std::array kContainerTools{
    ContainerTool{"docker-", "docker stop"}, ContainerTool{"libpod-", "podman stop"},
    ContainerTool{"cri-containerd-", "crictl stop"}, ContainerTool{"crio-", "crictl stop"}};

QString tr(const char* key) {
    return QCoreApplication::translate("ForceQuitHint", key);
}

// Of a process that belongs to a service or container; empty for others.
QString hintOfService(const QString& service, std::int64_t port) {
    for (const ContainerTool& tool : kContainerTools) {
        const QLatin1StringView prefix(tool.prefix);
        if (service.startsWith(prefix) && service.endsWith(QLatin1StringView(kSuffix)))
            return tr(QT_TRANSLATE_NOOP("ForceQuitHint",
                                        "It runs in a container. To stop that: %1"))
                .arg(QLatin1StringView(tool.command) + u' ' +
                     service.mid(prefix.size(), kShownDigits));
    }
    // What listens there for a container is a part of the service.
    if (service == u"docker.service"_s)
        return tr(QT_TRANSLATE_NOOP("ForceQuitHint",
                                    "It is the port of a container. To find that: %1"))
            .arg(u"docker ps --filter publish=%1"_s.arg(port));
    if (service.endsWith(u".service"_s) || service.endsWith(u".socket"_s))
        return tr(QT_TRANSLATE_NOOP("ForceQuitHint", "It belongs to a service. To stop that: %1"))
            .arg(u"sudo systemctl stop "_s + displayLine(service, kLongestService));
    return {};
}

} // namespace

QString forceQuitHint(const PortProcess& process) {
    const QString byService = hintOfService(QString::fromStdString(process.service), process.port);
    switch (process.obstacle) {
    case ForceQuitObstacle::none:
        break;
    case ForceQuitObstacle::gone:
        return tr(QT_TRANSLATE_NOOP("ForceQuitHint", "This process has ended"));
    case ForceQuitObstacle::unknownOwner:
        return byService.isEmpty()
                   ? tr(QT_TRANSLATE_NOOP("ForceQuitHint",
                                          "Its process is hidden from you. To see it: %1"))
                         .arg(u"sudo ss -Hltnp 'sport = :%1'"_s.arg(process.port))
                   : byService;
    case ForceQuitObstacle::anotherUser:
        return byService.isEmpty()
                   ? tr(QT_TRANSLATE_NOOP("ForceQuitHint",
                                          "It belongs to another user. To end it: %1"))
                         .arg(u"sudo kill -9 %1"_s.arg(process.pid))
                   : byService;
    case ForceQuitObstacle::serviceManager:
        return tr(QT_TRANSLATE_NOOP(
                      "ForceQuitHint",
                      "The manager of your services holds it for one of them. To find that: %1"))
            .arg(u"systemctl --user list-sockets"_s);
    case ForceQuitObstacle::initProcess:
        return tr(QT_TRANSLATE_NOOP(
                      "ForceQuitHint",
                      "The system's manager holds it for one of its services. To find that: %1"))
            .arg(u"systemctl list-sockets"_s);
    case ForceQuitObstacle::ownProcess:
        return tr(QT_TRANSLATE_NOOP("ForceQuitHint", "This is Zenlot itself"));
    }
    return {};
}

} // namespace zenlot
