#include "updates/feed_download.h"

#include "updates/web_address.h"

#include <QNetworkReply>
#include <QNetworkRequest>

#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr int kOk = 200;

// Headers that Qt would fill in with what tells people apart are set to what is the same for all.
QNetworkRequest requestFor(const QUrl& address, std::chrono::milliseconds silence) {
    QNetworkRequest request(address);
    request.setHeader(QNetworkRequest::UserAgentHeader, u"Zenlot"_s);
    request.setRawHeader("Accept", "application/json");
    request.setRawHeader("Accept-Language", "en");
    // A compressed answer could be far larger than what arrives.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setTransferTimeout(static_cast<int>(silence.count()));
    return request;
}

int statusOf(const QNetworkReply& reply) {
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

ReleaseFeedFailure failureOf(const QNetworkReply& reply) {
    switch (reply.error()) {
    case QNetworkReply::OperationCanceledError: // nobody but the time limit does that here
    case QNetworkReply::TimeoutError:
        return ReleaseFeedFailure::tooSlow;
    case QNetworkReply::SslHandshakeFailedError:
        return ReleaseFeedFailure::insecure;
    case QNetworkReply::ProtocolFailure:
        return ReleaseFeedFailure::nonsense;
    default:
        return statusOf(reply) == 0 || statusOf(reply) == kOk ? ReleaseFeedFailure::unreachable
                                                              : ReleaseFeedFailure::refused;
    }
}

} // namespace

FeedDownload::FeedDownload(const ReleaseFeedLimits& limits, ReleaseFeedTransport transport)
    : limits_(limits), transport_(transport) {
    total_.setSingleShot(true);
    connect(&total_, &QTimer::timeout, this, [this] { finish(ReleaseFeedFailure::tooSlow); });
}

void FeedDownload::start(const QUrl& address) {
    total_.start(limits_.total);
    ask(address);
}

void FeedDownload::ask(const QUrl& address) {
    if (!mayAsk(address)) {
        finish(ReleaseFeedFailure::insecure);
        return;
    }
    reply_ = manager_.get(requestFor(address, limits_.silence));
    reply_->setReadBufferSize(limits_.bytes + 1);
    connect(reply_, &QNetworkReply::metaDataChanged, this, &FeedDownload::readHead);
    connect(reply_, &QNetworkReply::readyRead, this, &FeedDownload::readBody);
    connect(reply_, &QNetworkReply::finished, this, &FeedDownload::readEnd);
}

void FeedDownload::readHead() {
    const QVariant target = reply_->attribute(QNetworkRequest::RedirectionTargetAttribute);
    if (target.isValid()) {
        const QUrl next = reply_->url().resolved(target.toUrl());
        reply_->disconnect(this);
        reply_->deleteLater();
        reply_ = nullptr;
        if (++redirects_ > limits_.redirects)
            finish(ReleaseFeedFailure::refused);
        else
            ask(next);
        return;
    }
    if (reply_->header(QNetworkRequest::ContentLengthHeader).toLongLong() > limits_.bytes)
        finish(ReleaseFeedFailure::nonsense);
}

void FeedDownload::readBody() {
    body_ += reply_->readAll();
    if (body_.size() > limits_.bytes)
        finish(ReleaseFeedFailure::nonsense);
}

void FeedDownload::readEnd() {
    if (reply_->error() != QNetworkReply::NoError)
        finish(failureOf(*reply_));
    else if (statusOf(*reply_) != kOk)
        finish(ReleaseFeedFailure::refused);
    else
        finish(std::exchange(body_, {}));
}

bool FeedDownload::mayAsk(const QUrl& address) const {
    return isSecureWebAddress(address) ||
           (transport_ == ReleaseFeedTransport::httpOnLoopbackToo && isLoopbackWebAddress(address));
}

void FeedDownload::finish(Result result) {
    total_.stop();
    if (reply_)
        reply_->disconnect(this);
    result_ = std::move(result);
    Q_EMIT finished();
}

} // namespace zenlot
