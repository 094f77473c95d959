// The program's windows on X11 and Wayland.
//
// On X11 the policy is a hint to the window manager, given to each window before it is shown.
// Wayland has no such hint; there a window is brought forward with the token that the toolkit was
// given last (see activation_acceptance.h).
#pragma once

#include "platform/application_windows.h"
#include "platform/linux/windowsystem/x11_windows.h"

#include <QObject>

#include <optional>

namespace zenlot {

class DesktopApplicationWindows final : public QObject, public ApplicationWindows {
    Q_OBJECT

  public:
    // Needs the QGuiApplication.
    DesktopApplicationWindows();

    QList<QWindow*> windows() const override;
    void orderFront(QWindow& window) override;
    void bringForward(QWindow& window) override;
    ActivationPolicy activationPolicy() const override { return policy_; }
    void setActivationPolicy(ActivationPolicy policy) override;
    bool blendsWindows() const override;

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    enum class WindowState { unmapped, mapped };

    void applyPolicy(QWindow& window, WindowState state);

    std::optional<X11Windows> x11_;
    ActivationPolicy policy_{ActivationPolicy::regular};
};

} // namespace zenlot
