// Where this program learns which of its releases is the newest.
//
//     const QFuture<ReleaseAnswer> answer = feed.newestRelease();
//
// Main thread only; nothing waits, the answer comes as a future. Nobody is asked before the call.
#pragma once

#include "updates/release.h"

#include <QFuture>

#include <variant>

namespace zenlot {

enum class ReleaseFeedFailure {
    noFeed,      // this build was not told whom to ask
    unreachable, // no network, no such host, or a connection that broke
    tooSlow,
    insecure, // only to be had without encryption, or from somebody whose identity is in doubt
    refused,  // the server says that it can't or won't answer
    nonsense, // an answer, but not a feed
};

using ReleaseAnswer = std::variant<Release, ReleaseFeedFailure>;

class ReleaseFeed {
  public:
    ReleaseFeed() = default;
    ReleaseFeed(const ReleaseFeed&) = delete;
    ReleaseFeed& operator=(const ReleaseFeed&) = delete;
    virtual ~ReleaseFeed() = default;

    // One question at a time: an earlier one that is still open is canceled. Canceling the future
    // ends the question; there is no answer then.
    virtual QFuture<ReleaseAnswer> newestRelease() = 0;
};

} // namespace zenlot
