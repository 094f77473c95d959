// The page on which the user allows programs to run in the background. It is opened when a service
// answers that it requires approval (see app_service.h); the user may take any time with it, so
// whoever opens it asks the service again later.
#pragma once

namespace zenlot {

class BackgroundItemsSettings {
  public:
    BackgroundItemsSettings() = default;
    BackgroundItemsSettings(const BackgroundItemsSettings&) = delete;
    BackgroundItemsSettings& operator=(const BackgroundItemsSettings&) = delete;
    virtual ~BackgroundItemsSettings() = default;

    // Returns before the user has done anything there. A page that is open comes to the front.
    virtual void openSystemSettingsLoginItems() = 0;
};

} // namespace zenlot
