#include "shell/onboarding/after_next_frame.h"

#include <QRunnable>

namespace zenlot {

void runAfterNextFrame(QQuickWindow& window, const std::function<void()>& function) {
    const auto run = [&window, function] {
        QMetaObject::invokeMethod(&window, function, Qt::QueuedConnection);
    };
    if (!window.isExposed()) {
        run();
        return;
    }
    // A thread of its own may just be drawing the frame before: the frame that counts is the one
    // that takes over the present state. Jobs that wait go with the window.
    window.scheduleRenderJob(QRunnable::create([&window, run] {
                                 window.scheduleRenderJob(QRunnable::create(run),
                                                          QQuickWindow::AfterSwapStage);
                             }),
                             QQuickWindow::BeforeSynchronizingStage);
    window.update();
}

} // namespace zenlot
