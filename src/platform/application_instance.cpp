#include "platform/application_instance.h"

#include <QRegularExpression>

namespace zenlot {

using namespace Qt::StringLiterals;

QStringList urisAmong(const QStringList& arguments) {
    QStringList requests = arguments;
    requests.replaceInStrings(QRegularExpression(u"^--(background|check-port|quit|settings)$"_s),
                              kCommandScheme + u"\\1"_s);
    return requests.filter(QRegularExpression(u"^[A-Za-z][A-Za-z0-9+.-]*:"_s));
}

} // namespace zenlot
