// A way through every window of the program, in each of its states, over a machine that is made up:
// for pictures, and for whoever checks how the windows look.
//
//     class Photographer : public Visitor { ... };
//     showMainWindow(photographer);
//
// The windows run the event loop while they get ready. Throws std::runtime_error when one of them
// does not come so far.
#pragma once

#include <QImage>
#include <QString>

#include <functional>

QT_FORWARD_DECLARE_CLASS(QQuickWindow)
QT_FORWARD_DECLARE_CLASS(QWidget)

namespace zenlot {

// Who is shown round. `state` names what there is to see, once in each tour.
class Visitor {
  public:
    Visitor() = default;
    Visitor(const Visitor&) = delete;
    Visitor& operator=(const Visitor&) = delete;
    virtual ~Visitor() = default;

    // Something may still move in the window.
    virtual void see(QQuickWindow& window, const QString& state) = 0;
    virtual void see(QWidget& menu, const QString& state) = 0;

    // What is not there for long.
    virtual void captureNow(QQuickWindow& window, const QString& state) = 0;
};

void showMainWindow(Visitor& visitor);

// The settings, the first run, the page for background items, the update check.
void showOtherWindows(Visitor& visitor);

// Of the settings, over logs of all kinds, one of them very large.
void showLogTab(Visitor& visitor);

void showStatusMenu(Visitor& visitor);

// As a user of the keyboard does.
void press(QQuickWindow& window, int key, Qt::KeyboardModifiers modifiers = {});

// Runs the event loop until nothing moves in the window any more.
QImage pictureOnceStill(QQuickWindow& window);

// Runs the event loop until then.
void waitFor(const std::function<bool()>& isReached);

} // namespace zenlot
