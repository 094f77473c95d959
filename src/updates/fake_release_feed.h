// A ReleaseFeed for tests. Each question waits for the test to answer it.
#pragma once

#include "updates/release_feed.h"

#include <QPromise>

namespace zenlot {

class FakeReleaseFeed final : public ReleaseFeed {
  public:
    int questions{0};

    QFuture<ReleaseAnswer> newestRelease() override {
        ++questions;
        promise_ = QPromise<ReleaseAnswer>();
        promise_.start();
        return promise_.future();
    }

    bool wasCanceled() const { return promise_.isCanceled(); }

    void answer(ReleaseAnswer answer) {
        promise_.addResult(std::move(answer));
        promise_.finish();
    }

  private:
    QPromise<ReleaseAnswer> promise_;
};

} // namespace zenlot
