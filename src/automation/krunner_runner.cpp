#include "automation/krunner_runner.h"

#include "automation/result_identifier.h"
#include "text/display_line.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>

#include <utility>

namespace zenlot {
namespace {

constexpr int kExactMatch = 100;
constexpr qsizetype kLongestToken = 4096;

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
    const auto portQuery = AutomationService::queryFrom(query);
    if (!portQuery)
        return {};
    service_.reply(call, {*portQuery}, [portQuery](const QStringList& dialogs) {
        return QVariant::fromValue(
            QList<RunnerMatch>{{resultIdentifier(*portQuery),
                                displayLine(dialogs.first(), kLongestAnswerLine),
                                kAutomationIconName,
                                kExactMatch,
                                1.0,
                                {}}});
    });
    return {};
}

QList<RunnerAction> KRunnerRunner::Actions() {
    service_.noteUse();
    return {};
}

void KRunnerRunner::Run(const QString& identifier, const QString& /*actionIdentifier*/) {
    service_.noteUse();
    const QString token = std::exchange(activationToken_, QString());
    if (const auto query = queryOfResult(identifier))
        service_.openMainWindow(*query, token);
}

void KRunnerRunner::SetActivationToken(const QString& token) {
    service_.noteUse();
    activationToken_ = token.size() <= kLongestToken ? token : QString();
}

void KRunnerRunner::Teardown() {
    service_.noteUse();
}

} // namespace zenlot
