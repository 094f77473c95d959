// Why the background monitor could not be registered, with a sentence for the user.
#pragma once

#include <QString>
#include <QtGlobal>

namespace zenlot {

class InstallError {
  public:
    enum class Case {
        other,
        requiresApproval, // the user has to allow it on the page for background items
    };

    // What the service said: who refused, why in the numbers of the domain, and in words.
    static InstallError other(const QString& domain, qint64 code, const QString& message);
    static InstallError requiresApproval();

    Case kind() const { return kind_; }
    QString description() const;

    friend bool operator==(const InstallError&, const InstallError&) = default;

  private:
    InstallError() = default;

    Case kind_{Case::requiresApproval};
    QString domain_;
    qint64 code_{0};
    QString message_;
};

} // namespace zenlot
