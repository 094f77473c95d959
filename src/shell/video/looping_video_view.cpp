#include "shell/video/looping_video_view.h"

#include "shell/video/frame_image.h"

#include <QFile>
#include <QMediaPlayer>
#include <QVideoFrame>
#include <QVideoSink>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

bool isThere(const QUrl& url) {
    if (url.scheme() == u"qrc"_s)
        return QFile::exists(u':' + url.path());
    return !url.isLocalFile() || QFile::exists(url.toLocalFile());
}

} // namespace

// Plays one file, and starts it again at its end. A player that was given no audio output makes no
// sound.
class LoopingVideoView::Coordinator final : public QObject {
  public:
    explicit Coordinator(LoopingVideoView& view) : view_(view) {
        player_.setVideoSink(&sink_);
        connect(&sink_, &QVideoSink::videoFrameChanged, this, [this](const QVideoFrame& frame) {
            // The frame at the end is none; the one before stays.
            if (!frame.isValid())
                return;
            hasShownFrame_ = true;
            view_.present(frameImage(frame));
        });
        // Queued, because the player is not done with what it reports.
        connect(&player_, &QMediaPlayer::mediaStatusChanged, this, &Coordinator::follow,
                Qt::QueuedConnection);
        connect(
            &player_, &QMediaPlayer::errorOccurred, this, [this] { view_.setFailed(true); },
            Qt::QueuedConnection);
        player_.setSource(view.url());
    }

    ~Coordinator() override {
        player_.disconnect(this);
        sink_.disconnect(this);
        player_.stop();
    }

  private:
    void begin() {
        if (view_.isMoving()) {
            player_.play();
        } else {
            player_.setPosition(player_.duration() / 2);
            player_.pause();
        }
    }

    // What is told to the view may be the end of this object.
    void follow(QMediaPlayer::MediaStatus status) {
        if (status == QMediaPlayer::InvalidMedia)
            view_.setFailed(true);
        if (status == QMediaPlayer::LoadedMedia && !hasBegun_) {
            hasBegun_ = true;
            begin();
        }
        if (status != QMediaPlayer::EndOfMedia)
            return;
        if (hasShownFrame_) {
            hasShownFrame_ = false;
            isFirstRound_ = false;
            // Only a player that was stopped takes the file up again from its start.
            player_.stop();
            player_.play();
        } else if (isFirstRound_) {
            view_.setFailed(true);
        } else {
            view_.reopen();
        }
    }

    LoopingVideoView& view_;
    bool hasBegun_{false};
    // A round without a frame: in the first the file has none; later, the end of the round before
    // was reported again, which the FFmpeg backend of Qt 6.4 does now and then.
    bool hasShownFrame_{false};
    bool isFirstRound_{true};
    QVideoSink sink_;
    QMediaPlayer player_; // after the sink, which it uses to the end
};

LoopingVideoView::LoopingVideoView(QQuickItem* parent) : TopAlignedPlayerView(parent) {}

LoopingVideoView::~LoopingVideoView() = default;

void LoopingVideoView::setUrl(const QUrl& url) {
    if (url == url_)
        return;
    url_ = url;
    coordinator_.reset();
    present(QImage());
    setFailed(!isThere(url_));
    playWhenSeen();
    Q_EMIT urlChanged();
}

void LoopingVideoView::setMoving(bool isMoving) {
    if (isMoving == isMoving_)
        return;
    isMoving_ = isMoving;
    Q_EMIT isMovingChanged();
    reopen();
}

void LoopingVideoView::setFailed(bool failed) {
    if (failed == failed_)
        return;
    failed_ = failed;
    Q_EMIT failedChanged();
    playWhenSeen();
}

void LoopingVideoView::reopen() {
    coordinator_.reset();
    playWhenSeen();
}

void LoopingVideoView::componentComplete() {
    TopAlignedPlayerView::componentComplete();
    playWhenSeen();
}

void LoopingVideoView::itemChange(ItemChange change, const ItemChangeData& data) {
    TopAlignedPlayerView::itemChange(change, data);
    if (change == ItemVisibleHasChanged || change == ItemSceneChange)
        playWhenSeen();
}

void LoopingVideoView::playWhenSeen() {
    const bool isSeen =
        isComponentComplete() && isVisible() && window() != nullptr && !url_.isEmpty() && !failed_;
    if (!isSeen)
        coordinator_.reset();
    else if (!coordinator_)
        coordinator_ = std::make_unique<Coordinator>(*this);
}

} // namespace zenlot
