// One attempt to fetch a document from the web within limits. It lives on the thread that made it,
// which needs an event loop; it ends with finished(), or silently when it is destroyed.
#pragma once

#include "updates/https_release_feed.h"

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QObject>
#include <QTimer>

#include <variant>

QT_FORWARD_DECLARE_CLASS(QNetworkReply)

namespace zenlot {

class FeedDownload final : public QObject {
    Q_OBJECT

  public:
    using Result = std::variant<QByteArray, ReleaseFeedFailure>;

    FeedDownload(const ReleaseFeedLimits& limits, ReleaseFeedTransport transport);

    // To be called once.
    void start(const QUrl& address);

    const Result& result() const { return result_; }

  Q_SIGNALS:
    void finished();

  private:
    void ask(const QUrl& address);
    void readHead();
    void readBody();
    void readEnd();
    bool mayAsk(const QUrl& address) const;
    void finish(Result result);

    ReleaseFeedLimits limits_;
    ReleaseFeedTransport transport_;
    int redirects_{0};
    QByteArray body_;
    Result result_{ReleaseFeedFailure::unreachable};
    QTimer total_;
    QNetworkReply* reply_{nullptr};
    QNetworkAccessManager manager_; // the last member: it ends the reply
};

} // namespace zenlot
