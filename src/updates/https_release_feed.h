// The release feed at an address on the web, read with one GET.
//
// What it gives away is that somebody at this network address asked: no cookies, no language, no
// version, no identifiers. What it takes is bounded in time, size and number of redirects, each of
// which must lead to https again. Certificates are verified as the system does it.
//
// The work, with everything that may block (the system's proxy settings, certificates, names), is
// done on a worker thread. The destructor cancels an open question and waits for its end.
#pragma once

#include "updates/release_feed.h"
#include "workers/worker_threads.h"

#include <QString>

#include <chrono>

namespace zenlot {

struct ReleaseFeedLimits {
    std::chrono::milliseconds silence{std::chrono::seconds(10)}; // without any progress
    std::chrono::milliseconds total{std::chrono::seconds(30)};   // with all redirects
    qint64 bytes{65'536};
    int redirects{5};
};

enum class ReleaseFeedTransport {
    httpsOnly,
    httpOnLoopbackToo, // for tests
};

class HttpsReleaseFeed final : public ReleaseFeed {
  public:
    // An empty address means that there is no feed; see release_feed_address.h for the one that
    // this program was built with.
    explicit HttpsReleaseFeed(const QString& address, const ReleaseFeedLimits& limits = {},
                              ReleaseFeedTransport transport = ReleaseFeedTransport::httpsOnly);
    ~HttpsReleaseFeed() override;

    QFuture<ReleaseAnswer> newestRelease() override;

  private:
    QString address_;
    ReleaseFeedLimits limits_;
    ReleaseFeedTransport transport_;
    QFuture<ReleaseAnswer> question_;
    WorkerThreads workers_; // the last member, so that it ends before what its work uses
};

} // namespace zenlot
