// The content of the first run's window. Whoever shows the window gives it its title, its place and
// its frame; its size is the content's, 440 by 540.
//
//     auto window = std::make_unique<OnboardingWindow>(
//         OnboardingViewModel::Collaborators{settings, installer, loginItems, systemLog},
//         [&] { delegate.closeOnboardingWindow(); });
//
// `closeWindow` is called from the event loop, so that it may also end the window.
#pragma once

#include "shell/onboarding/onboarding_view_model.h"

#include <QQuickView>

#include <functional>

namespace zenlot {

class OnboardingWindow : public QQuickView {
    Q_OBJECT

  public:
    OnboardingWindow(const OnboardingViewModel::Collaborators& with,
                     const std::function<void()>& closeWindow);
    ~OnboardingWindow() override;

    OnboardingViewModel& viewModel() { return viewModel_; }

  Q_SIGNALS:
    void finished();
    // What was there to see when a function was left with runAfterNextFrame() is on the screen; or
    // nobody can see the window. Comes from the thread that draws.
    void shown();

  private:
    // The registration keeps the main thread busy; the user should see that it has begun.
    void runAfterNextFrame(std::function<void()> function);

    OnboardingViewModel viewModel_;
    std::function<void()> afterNextFrame_;
};

} // namespace zenlot
