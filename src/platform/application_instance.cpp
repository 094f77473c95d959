#include "platform/application_instance.h"

#include <QRegularExpression>

namespace zenlot {

using namespace Qt::StringLiterals;

QStringList urisAmong(const QStringList& arguments) {
    return arguments.filter(QRegularExpression(u"^[A-Za-z][A-Za-z0-9+.-]*:"_s));
}

} // namespace zenlot
