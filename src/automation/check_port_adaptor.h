// "Check Port" for scripts and for whatever else wants to ask: the question as a plain method, and
// as properties what a front end needs to put it to people itself, in the user's language.
//
//     CheckPort(x portNumber) -> s    "Port 3000 is used by: node (PID 12)"
#pragma once

#include "automation/automation_service.h"
#include "shell/intents/check_port_intent.h"

#include <QDBusAbstractAdaptor>

namespace zenlot {

class CheckPortAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "dev.quorvane.zenlot.Automation")
    Q_PROPERTY(QString Title READ title CONSTANT)
    Q_PROPERTY(QString PortNumberTitle READ portNumberTitle CONSTANT)
    Q_PROPERTY(QString PortNumberDescription READ portNumberDescription CONSTANT)
    Q_PROPERTY(QString ValueRequestDialog READ valueRequestDialog CONSTANT)
    Q_PROPERTY(QStringList Phrases READ phrases CONSTANT)
    Q_PROPERTY(QString ShortTitle READ shortTitle CONSTANT)
    Q_PROPERTY(QString SystemImage READ systemImage CONSTANT)

  public:
    explicit CheckPortAdaptor(AutomationService& service);

    static QString title() { return CheckPortIntent::title(); }
    static QString portNumberTitle() { return CheckPortIntent::portNumberTitle(); }
    static QString portNumberDescription() { return CheckPortIntent::portNumberDescription(); }
    static QString valueRequestDialog() { return CheckPortIntent::valueRequestDialog(); }
    static QStringList phrases() { return AutomationService::phrases(); }
    static QString shortTitle() { return ZenlotAppShortcuts::shortTitle(); }
    static QString systemImage() { return ZenlotAppShortcuts::systemImage(); }

  public Q_SLOTS:
    // NOLINTNEXTLINE(readability-identifier-naming): a name on the bus
    QString CheckPort(qlonglong portNumber, const QDBusMessage& call);

  private:
    AutomationService& service_;
};

} // namespace zenlot
