// The status area of X11 and Wayland desktops: a tray of status notifier items, or else one of the
// older kind (XEmbed).
//
// The toolkit settles for a kind when it first touches a tray, and takes the older one when no
// panel shows the items of the newer one yet. So nothing is touched before a tray has shown up: at
// login the program may start before the panel does.
//
// When the panel, or the session bus, ends and comes back, the items are put into it again.
#pragma once

#include "platform/linux/statusarea/status_notifier_watch.h"
#include "platform/linux/statusarea/tray_status_item.h"
#include "platform/linux/windowsystem/x11_selection_watch.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <chrono>

namespace zenlot {

class TrayStatusBar final : public QObject, public StatusBar {
    Q_OBJECT

  public:
    // How long a status area may be missing before it counts as none: a panel may be on its way.
    static constexpr std::chrono::milliseconds kPatience{3000};

    // Needs the QApplication. The bus must outlive the object.
    explicit TrayStatusBar(SessionBus& bus, std::chrono::milliseconds patience = kPatience);

    std::unique_ptr<StatusItem> makeStatusItem(ActivationHandler handler) override;
    bool isAvailable() const override { return isAvailable_; }
    void observeAvailability(QObject* context, std::function<void()> handler) override;

  Q_SIGNALS:
    void availabilityChanged();

  private:
    void reconsider();
    void decide(TrayKind kind);
    void installItems();
    bool hasTray() const;
    bool hasXembedTray() const { return xembedTray_.owner() != 0; }
    void setAvailable(bool isAvailable);

    StatusNotifierWatch notifiers_;
    X11SelectionWatch xembedTray_{"_NET_SYSTEM_TRAY_S"}; // takes in the windows of its icons
    TrayKind kind_{TrayKind::undecided};
    bool isAvailable_{true};
    bool areItemsOnOldBus_{false};
    QTimer settling_; // a panel may offer its trays one after the other
    QTimer patience_;
    QList<QPointer<TrayStatusItem>> items_;
};

} // namespace zenlot
