// The search provider of GNOME: one result, whose title is the answer. Titles are plain text there.
#pragma once

#include "automation/automation_service.h"

#include <QDBusAbstractAdaptor>
#include <QStringList>
#include <QVariantMap>

namespace zenlot {

class SearchProvider final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.Shell.SearchProvider2")

  public:
    explicit SearchProvider(AutomationService& service);

  public Q_SLOTS:
    // NOLINTBEGIN(readability-identifier-naming): names on the bus
    QStringList GetInitialResultSet(const QStringList& terms);
    QStringList GetSubsearchResultSet(const QStringList& previousResults, const QStringList& terms);
    QList<QVariantMap> GetResultMetas(const QStringList& identifiers, const QDBusMessage& call);
    void ActivateResult(const QString& identifier, const QStringList& terms, uint timestamp);
    void LaunchSearch(const QStringList& terms, uint timestamp);
    // NOLINTEND(readability-identifier-naming)

  private:
    AutomationService& service_;
};

} // namespace zenlot
