#include "automation/check_port_adaptor.h"

#include <QDBusMessage>

namespace zenlot {

CheckPortAdaptor::CheckPortAdaptor(AutomationService& service)
    : QDBusAbstractAdaptor(&service), service_(service) {}

QString CheckPortAdaptor::CheckPort(qlonglong portNumber, const QDBusMessage& call) {
    service_.reply(call, {PortQuery{portNumber}},
                   [](const QStringList& dialogs) { return dialogs.first(); });
    return {};
}

} // namespace zenlot
