#include "platform/application_instance.h"

#include <QRegularExpression>

namespace zenlot {

QStringList urisAmong(const QStringList& arguments) {
    return arguments.filter(QRegularExpression(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]*:")));
}

} // namespace zenlot
