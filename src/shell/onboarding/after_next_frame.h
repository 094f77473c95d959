// For work that keeps the main thread busy, of whose beginning the user should see something.
#pragma once

#include <QQuickWindow>

#include <functional>

namespace zenlot {

// Runs the function from the event loop when the window has shown what is there to see now; soon
// when nobody can see the window, and never when the window has gone by then.
void runAfterNextFrame(QQuickWindow& window, const std::function<void()>& function);

} // namespace zenlot
