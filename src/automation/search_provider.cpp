#include "automation/search_provider.h"

#include <QDBusMessage>
#include <QDBusMetaType>

namespace zenlot {
namespace {

const QString kRequest = QStringLiteral("request");

QString identifierOf(const PortQuery& query) {
    return query.port ? QStringLiteral(":%1").arg(*query.port) : kRequest;
}

} // namespace

SearchProvider::SearchProvider(AutomationService& service)
    : QDBusAbstractAdaptor(&service), service_(service) {
    qDBusRegisterMetaType<QList<QVariantMap>>();
}

QStringList SearchProvider::GetInitialResultSet(const QStringList& terms) {
    service_.noteUse();
    const auto query = service_.queryFrom(terms.join(u' '));
    return query ? QStringList(identifierOf(*query)) : QStringList();
}

QStringList SearchProvider::GetSubsearchResultSet(const QStringList& /*previousResults*/,
                                                  const QStringList& terms) {
    return GetInitialResultSet(terms); // "300" says nothing about "3000"
}

QList<QVariantMap> SearchProvider::GetResultMetas(const QStringList& identifiers,
                                                  const QDBusMessage& call) {
    service_.noteUse();
    // There is never more than one result.
    const QString identifier = identifiers.value(0);
    const auto query = identifier == kRequest ? PortQuery() : service_.queryFrom(identifier);
    if (!query)
        return {};
    service_.reply(call, *query, [identifier](const QString& dialog) {
        return QVariant::fromValue(
            QList<QVariantMap>{{{QStringLiteral("id"), identifier},
                                {QStringLiteral("name"), dialog},
                                {QStringLiteral("gicon"), QStringLiteral("dev.quorvane.zenlot")}}});
    });
    return {};
}

void SearchProvider::ActivateResult(const QString& identifier, const QStringList& /*terms*/,
                                    uint /*timestamp*/) {
    service_.openMainWindow(service_.queryFrom(identifier).value_or(PortQuery()), QString());
}

void SearchProvider::LaunchSearch(const QStringList& terms, uint /*timestamp*/) {
    service_.openMainWindow(service_.queryFrom(terms.join(u' ')).value_or(PortQuery()), QString());
}

} // namespace zenlot
