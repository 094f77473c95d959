#include "monitoring/install_error.h"

#include <QCoreApplication>

namespace zenlot {

using namespace Qt::StringLiterals;

InstallError InstallError::other(const QString& domain, qint64 code, const QString& message) {
    InstallError error;
    error.kind_ = Case::other;
    error.domain_ = domain;
    error.code_ = code;
    error.message_ = message;
    return error;
}

InstallError InstallError::requiresApproval() {
    return {};
}

QString InstallError::description() const {
    if (kind_ == Case::requiresApproval)
        return QCoreApplication::translate(
            "InstallError",
            "Zenlot is blocked from running in the background. Open System Settings → General → "
            "Login Items & Extensions and turn Zenlot back on under \"Allow in the Background\", "
            "then click Re-check.");
    return u'[' + domain_ + u' ' + QString::number(code_) + u"] "_s + message_;
}

} // namespace zenlot
