#include "automation/search_provider.h"

#include "automation/result_identifier.h"
#include "text/display_line.h"

#include <QDBusMessage>
#include <QDBusMetaType>

#include <algorithm>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

// A search never has more than one from us.
constexpr qsizetype kMostResults = 16;

} // namespace

SearchProvider::SearchProvider(AutomationService& service)
    : QDBusAbstractAdaptor(&service), service_(service) {
    qDBusRegisterMetaType<QList<QVariantMap>>();
}

QStringList SearchProvider::GetInitialResultSet(const QStringList& terms) {
    service_.noteUse();
    const auto query = AutomationService::queryFrom(terms);
    return query ? QStringList(resultIdentifier(*query)) : QStringList();
}

QStringList SearchProvider::GetSubsearchResultSet(const QStringList& /*previousResults*/,
                                                  const QStringList& terms) {
    return GetInitialResultSet(terms); // "300" says nothing about "3000"
}

QList<QVariantMap> SearchProvider::GetResultMetas(const QStringList& identifiers,
                                                  const QDBusMessage& call) {
    service_.noteUse();
    QList<PortQuery> queries;
    for (const QString& identifier : identifiers.first(std::min(identifiers.size(), kMostResults)))
        if (const auto query = queryOfResult(identifier))
            queries.append(*query);
    if (queries.isEmpty())
        return {};
    service_.reply(call, queries, [queries](const QStringList& dialogs) {
        QList<QVariantMap> metas;
        for (qsizetype index = 0; index < queries.size(); ++index)
            metas.append({{u"id"_s, resultIdentifier(queries.at(index))},
                          {u"name"_s, displayLine(dialogs.at(index), kLongestAnswerLine)},
                          {u"gicon"_s, QString(kAutomationIconName)}});
        return QVariant::fromValue(metas);
    });
    return {};
}

void SearchProvider::ActivateResult(const QString& identifier, const QStringList& /*terms*/,
                                    uint /*timestamp*/) {
    service_.noteUse();
    if (const auto query = queryOfResult(identifier))
        service_.openMainWindow(*query, QString());
}

// The desktop wants the application itself, whatever it was looking for.
void SearchProvider::LaunchSearch(const QStringList& terms, uint /*timestamp*/) {
    service_.openMainWindow(AutomationService::queryFrom(terms).value_or(PortQuery()), QString());
}

} // namespace zenlot
