// The runner for the search of KDE: one match, whose text is the answer. Texts of a single line are
// plain there.
#pragma once

#include "automation/automation_service.h"

#include <QDBusAbstractAdaptor>
#include <QList>
#include <QString>
#include <QVariantMap>

QT_FORWARD_DECLARE_CLASS(QDBusArgument)

namespace zenlot {

// As the protocol has them, in its order.
struct RunnerMatch {
    QString identifier;
    QString text;
    QString iconName;
    int type{0};
    double relevance{0};
    QVariantMap properties;
};
struct RunnerAction {
    QString identifier;
    QString text;
    QString iconName;
};

QDBusArgument& operator<<(QDBusArgument& argument, const RunnerMatch& match);
const QDBusArgument& operator>>(const QDBusArgument& argument, RunnerMatch& match);
QDBusArgument& operator<<(QDBusArgument& argument, const RunnerAction& action);
const QDBusArgument& operator>>(const QDBusArgument& argument, RunnerAction& action);

class KRunnerRunner final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.krunner1")

  public:
    explicit KRunnerRunner(AutomationService& service);

  public Q_SLOTS:
    // NOLINTBEGIN(readability-identifier-naming): names on the bus
    QList<zenlot::RunnerMatch> Match(const QString& query, const QDBusMessage& call);
    QList<zenlot::RunnerAction> Actions();
    void Run(const QString& identifier, const QString& actionIdentifier);
    void SetActivationToken(const QString& token);
    void Teardown(); // the search is over; nothing was kept for it
                     // NOLINTEND(readability-identifier-naming)

  private:
    AutomationService& service_;
    QString activationToken_; // for the next run
};

} // namespace zenlot

Q_DECLARE_METATYPE(zenlot::RunnerMatch)
Q_DECLARE_METATYPE(zenlot::RunnerAction)
