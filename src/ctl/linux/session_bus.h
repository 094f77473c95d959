// What the user's session bus says of the programs on it. Nothing is started by asking, and nobody
// is waited for longer than a second.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

struct sd_bus;

namespace zenlot {

class SessionBus {
  public:
    SessionBus();

    // Why there is none; empty when there is.
    const std::string& failure() const { return failure_; }

    // The process that owns a name; none when nobody does.
    std::optional<int> ownerOf(const std::string& name) const;

    // What the notification server says that it can do.
    std::vector<std::string> notificationCapabilities() const;

    // How the user's service manager has a unit, as "enabled" and "active"; empty without an
    // answer.
    std::string unitFileState(const std::string& unit) const;
    std::string activeState(const std::string& unit) const;

  private:
    struct Closer {
        void operator()(sd_bus* bus) const;
    };

    std::unique_ptr<sd_bus, Closer> bus_;
    std::string failure_;
};

} // namespace zenlot
