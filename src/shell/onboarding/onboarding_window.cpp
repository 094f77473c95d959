#include "shell/onboarding/onboarding_window.h"

#include <QQmlEngine>
#include <QRunnable>

#include <utility>

namespace zenlot {

OnboardingWindow::OnboardingWindow(const OnboardingViewModel::Collaborators& with,
                                   const std::function<void()>& closeWindow)
    : viewModel_(with, {.closeWindow = [this] { Q_EMIT finished(); },
                        .afterNextFrame =
                            [this](std::function<void()> function) {
                                runAfterNextFrame(std::move(function));
                            }}) {
    if (closeWindow)
        connect(this, &OnboardingWindow::finished, this, closeWindow, Qt::QueuedConnection);
    connect(
        this, &OnboardingWindow::shown, this, [this] { std::exchange(afterNextFrame_, {})(); },
        Qt::QueuedConnection);
    engine()->addImportPath(QStringLiteral(":/qt/qml"));
    setInitialProperties({{QStringLiteral("viewModel"), QVariant::fromValue(&viewModel_)}});
    setSource(QUrl(QStringLiteral("qrc:/qt/qml/Zenlot/Onboarding/OnboardingView.qml")));
}

OnboardingWindow::~OnboardingWindow() {
    setSource(QUrl()); // the content ends before what it shows
}

void OnboardingWindow::runAfterNextFrame(std::function<void()> function) {
    afterNextFrame_ = std::move(function);
    if (!isExposed()) {
        Q_EMIT shown();
        return;
    }
    // A thread of its own may just be drawing the frame before: the frame that counts is the one
    // that takes over the present state. Jobs that wait go with the window.
    const auto waitForSwap = [this] {
        scheduleRenderJob(QRunnable::create([this] { Q_EMIT shown(); }), AfterSwapStage);
    };
    scheduleRenderJob(QRunnable::create(waitForSwap), BeforeSynchronizingStage);
    update();
}

} // namespace zenlot
