// The single instance as the owner of a name on the session bus, reached by the interface that
// desktops call too (org.freedesktop.Application of the Desktop Entry Specification).
//
//     name   dev.quorvane.zenlot
//     path   /dev/quorvane/zenlot
//
// Activations travel as "desktop-startup-id" and "activation-token" in the platform data. Of the
// actions "check-port" takes a 64-bit number or nothing, "settings" and "quit" nothing. Without a
// bus, or with one that does not answer, the program is alone; when the bus comes back it takes the
// name again, unless another program was quicker.
#pragma once

#include "platform/application_instance.h"

#include <chrono>
#include <memory>

namespace zenlot {

class SessionBus;

class SessionBusApplicationInstance final : public ApplicationInstance {
  public:
    // The bus must outlive this. `patience` is how long start() waits altogether.
    explicit SessionBusApplicationInstance(
        SessionBus& bus, std::chrono::milliseconds patience = std::chrono::seconds(5));
    ~SessionBusApplicationInstance() override;

    StartOutcome start(const QStringList& uris, const Activation& activation) override;
    void setHandlers(QObject* context, Handlers handlers) override;

  private:
    class Application;

    void exportApplication();
    StartOutcome claimOrHandOver(const QStringList& uris, const Activation& activation);

    SessionBus& bus_;
    std::chrono::milliseconds patience_;
    std::unique_ptr<Application> application_; // what others see on the bus
};

// From DESKTOP_STARTUP_ID and XDG_ACTIVATION_TOKEN. The toolkit removes them when it starts, so
// they are read before.
Activation activationFromEnvironment();

} // namespace zenlot
