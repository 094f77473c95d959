#include "updates/https_release_feed.h"

#include "updates/feed_download.h"

#include <QEventLoop>
#include <QFutureWatcher>
#include <QPromise>

#include <utility>

namespace zenlot {
namespace {

ReleaseAnswer answerFrom(const FeedDownload::Result& result) {
    if (const auto* failure = std::get_if<ReleaseFeedFailure>(&result))
        return *failure;
    const std::optional<Release> release = releaseFromFeed(std::get<QByteArray>(result));
    return release ? ReleaseAnswer(*release) : ReleaseFeedFailure::nonsense;
}

void fetch(QPromise<ReleaseAnswer>& promise, const QString& address,
           const ReleaseFeedLimits& limits, ReleaseFeedTransport transport) {
    QEventLoop loop;
    FeedDownload download(limits, transport);
    // Queued, because a download may end before the loop has begun.
    QObject::connect(&download, &FeedDownload::finished, &loop, &QEventLoop::quit,
                     Qt::QueuedConnection);
    QFutureWatcher<ReleaseAnswer> watcher;
    QObject::connect(&watcher, &QFutureWatcherBase::canceled, &loop, &QEventLoop::quit);
    watcher.setFuture(promise.future());
    download.start(QUrl(address, QUrl::StrictMode));
    loop.exec();
    promise.addResult(answerFrom(download.result()));
}

} // namespace

HttpsReleaseFeed::HttpsReleaseFeed(const QString& address, const ReleaseFeedLimits& limits,
                                   ReleaseFeedTransport transport)
    : address_(address), limits_(limits), transport_(transport) {}

HttpsReleaseFeed::~HttpsReleaseFeed() {
    question_.cancel();
}

QFuture<ReleaseAnswer> HttpsReleaseFeed::newestRelease() {
    question_.cancel();
    if (address_.isEmpty())
        return QtFuture::makeReadyFuture(ReleaseAnswer(ReleaseFeedFailure::noFeed));
    question_ = workers_.runWithPromise<ReleaseAnswer>(
        [address = address_, limits = limits_, transport = transport_](
            QPromise<ReleaseAnswer>& promise) { fetch(promise, address, limits, transport); });
    return question_;
}

} // namespace zenlot
