#include "automation/krunner_runner.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>

#include <utility>

namespace zenlot {
namespace {

constexpr int kExactMatch = 100;

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const RunnerMatch& match) {
    argument.beginStructure();
    argument << match.identifier << match.text << match.iconName << match.type << match.relevance
             << match.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, RunnerMatch& match) {
    argument.beginStructure();
    argument >> match.identifier >> match.text >> match.iconName >> match.type >> match.relevance >>
        match.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const RunnerAction& action) {
    argument.beginStructure();
    argument << action.identifier << action.text << action.iconName;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, RunnerAction& action) {
    argument.beginStructure();
    argument >> action.identifier >> action.text >> action.iconName;
    argument.endStructure();
    return argument;
}

KRunnerRunner::KRunnerRunner(AutomationService& service)
    : QDBusAbstractAdaptor(&service), service_(service) {
    qDBusRegisterMetaType<RunnerMatch>();
    qDBusRegisterMetaType<QList<RunnerMatch>>();
    qDBusRegisterMetaType<RunnerAction>();
    qDBusRegisterMetaType<QList<RunnerAction>>();
}

QList<RunnerMatch> KRunnerRunner::Match(const QString& query, const QDBusMessage& call) {
    service_.noteUse();
    const auto portQuery = service_.queryFrom(query);
    if (!portQuery)
        return {};
    service_.reply(call, *portQuery, [query](const QString& dialog) {
        return QVariant::fromValue(QList<RunnerMatch>{
            {query, dialog, QStringLiteral("dev.quorvane.zenlot"), kExactMatch, 1.0, {}}});
    });
    return {};
}

QList<RunnerAction> KRunnerRunner::Actions() {
    service_.noteUse();
    return {};
}

void KRunnerRunner::Run(const QString& identifier, const QString& /*actionIdentifier*/) {
    service_.openMainWindow(service_.queryFrom(identifier).value_or(PortQuery()),
                            std::exchange(activationToken_, QString()));
}

void KRunnerRunner::SetActivationToken(const QString& token) {
    service_.noteUse();
    activationToken_ = token;
}

} // namespace zenlot
