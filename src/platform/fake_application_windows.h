// ApplicationWindows for tests, over a list that the test fills. It notes what is done to a window.
#pragma once

#include "platform/application_windows.h"

namespace zenlot {

class FakeApplicationWindows final : public ApplicationWindows {
  public:
    QList<QWindow*> open;
    QList<QWindow*> orderedFront;
    QList<QWindow*> broughtForward;

    QList<QWindow*> windows() const override { return open; }
    void orderFront(QWindow& window) override { orderedFront.append(&window); }
    void bringForward(QWindow& window) override { broughtForward.append(&window); }

    ActivationPolicy activationPolicy() const override { return policy_; }
    void setActivationPolicy(ActivationPolicy policy) override { policy_ = policy; }
    bool blendsWindows() const override { return false; }

  private:
    ActivationPolicy policy_{ActivationPolicy::regular};
};

} // namespace zenlot
