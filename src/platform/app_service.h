// Something that the desktop starts for the user: this program as a login item, or a background
// agent of it.
//
// The registration belongs to the desktop, where the user can change it at any time, so nothing
// here is remembered: each call asks anew. Calls are synchronous, may wait for the desktop, and may
// come from any thread.
//
//     if (std::optional<AppServiceError> error = loginItem.registerService())
//         show(error->message);
#pragma once

#include <QString>
#include <QtGlobal>

#include <optional>

namespace zenlot {

// The numbers stand in log lines. A system may answer with numbers that have no name here.
enum class AppServiceStatus : int {
    notRegistered = 0,
    enabled = 1,
    requiresApproval = 2, // registered, but the user has switched it off in the desktop
    notFound = 3,         // nothing can be registered: it, or the place to register it, is missing
};

struct AppServiceError {
    QString domain; // who refused
    qint64 code{0}; // why, in the numbers of the domain
    QString message;

    friend bool operator==(const AppServiceError&, const AppServiceError&) = default;
};

class AppService {
  public:
    AppService() = default;
    AppService(const AppService&) = delete;
    AppService& operator=(const AppService&) = delete;
    virtual ~AppService() = default;

    virtual AppServiceStatus status() const = 0;

    // Registering what is registered, and unregistering what is not, succeeds.
    [[nodiscard]] virtual std::optional<AppServiceError> registerService() = 0;
    [[nodiscard]] virtual std::optional<AppServiceError> unregisterService() = 0;

    // Why what is registered has been given up by the desktop; none while it runs or may run.
    // Registering it again is another try.
    virtual std::optional<AppServiceError> failure() const { return std::nullopt; }
};

} // namespace zenlot
