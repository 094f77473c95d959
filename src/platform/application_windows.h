// The windows of this program, and how it appears among those of others.
//
// Menus, tool tips, and icons in the status area are no windows in this sense, and neither is one
// that was closed.
//
//     for (QWindow* window : windows.windows())
//         windows.orderFront(*window);
//
// Everything here belongs to the main thread.
#pragma once

#include <QList>

QT_FORWARD_DECLARE_CLASS(QWindow)

namespace zenlot {

enum class ActivationPolicy {
    regular,   // its windows are listed by the taskbar and the pager
    accessory, // they are not
};

class ApplicationWindows {
  public:
    ApplicationWindows() = default;
    ApplicationWindows(const ApplicationWindows&) = delete;
    ApplicationWindows& operator=(const ApplicationWindows&) = delete;
    virtual ~ApplicationWindows() = default;

    // Those that are open, minimised ones too, in the order in which they were made.
    virtual QList<QWindow*> windows() const = 0;

    // Above the windows of other programs, where the desktop allows it. A minimised one stays so.
    virtual void orderFront(QWindow& window) = 0;

    // Shows the window, minimised or not, above the others and gives it the keyboard. For when the
    // user has asked for it: the desktop is told so.
    virtual void bringForward(QWindow& window) = 0;

    // Regular at first. It holds for windows that are opened later, too. Where a desktop can't
    // keep windows from its taskbar, the policy is remembered and nothing else.
    virtual ActivationPolicy activationPolicy() const = 0;
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;

    // Whether a window can have soft edges, since what is translucent in it shows what lies below.
    virtual bool blendsWindows() const = 0;
};

} // namespace zenlot
