#include "shell/mainwindow/obstacle_text.h"

#include "text/display_line.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr std::size_t kMostObstacles = 3;
constexpr qsizetype kLongestHolderName = 40;

QString obstacleWords(const char* text) {
    return QCoreApplication::translate("ObstacleText", text);
}

QString obstacleHolder(const BindObstacle& obstacle) {
    if (obstacle.holder.pid == 0)
        return obstacleWords(QT_TRANSLATE_NOOP("ObstacleText", "A process of another user"));
    return u"%1 (PID %2)"_s.arg(displayLine(obstacle.holderName, kLongestHolderName),
                                QString::number(obstacle.holder.pid));
}

QString obstacleText(const BindObstacle& obstacle) {
    switch (obstacle.kind) {
    case BindObstacle::Kind::boundOnly:
        return obstacleWords(
                   QT_TRANSLATE_NOOP("ObstacleText", "%1 has reserved it without listening."))
            .arg(obstacleHolder(obstacle));
    case BindObstacle::Kind::connection:
        return obstacleWords(
                   QT_TRANSLATE_NOOP("ObstacleText",
                                     "%1 uses it for a connection to port %2. Some servers can't "
                                     "have it until that ends."))
            .arg(obstacleHolder(obstacle), QString::number(obstacle.foreignPort));
    case BindObstacle::Kind::timeWait:
        return obstacleWords(
                   QT_TRANSLATE_NOOP("ObstacleText",
                                     "Its last connection has just ended. Some servers can't "
                                     "have it for another %1 s."))
            .arg(QString::number(obstacle.remaining.count()));
    case BindObstacle::Kind::reserved:
        return obstacleWords(
            QT_TRANSLATE_NOOP("ObstacleText", "The system keeps it for servers that ask for it."));
    case BindObstacle::Kind::privileged:
        break;
    }
    return obstacleWords(
        QT_TRANSLATE_NOOP("ObstacleText", "Only privileged programs can have it."));
}

} // namespace

QString obstaclesText(std::span<const BindObstacle> obstacles) {
    QStringList lines;
    for (const BindObstacle& obstacle : obstacles.first(std::min(obstacles.size(), kMostObstacles)))
        lines.append(obstacleText(obstacle));
    return lines.join(u'\n');
}

} // namespace zenlot
