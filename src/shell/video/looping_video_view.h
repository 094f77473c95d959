// Plays a video again and again, without sound, for as long as it can be seen: nothing is opened or
// decoded while the item is hidden, and each appearance begins from the start. While it is not to
// move it shows the picture from the middle.
//
// A file that is missing or can't be played sets `failed` and is left alone until another `url` is
// set. The program must have chosen a media backend that needs no audio or graphics hardware:
//
//     qputenv("QT_MEDIA_BACKEND", "ffmpeg"); // in main, before anything of QtMultimedia
//
//     LoopingVideoView {
//         radius: 10
//         url: "qrc:/clip.mov"
//         visible: !failed
//     }
#pragma once

#include "shell/video/top_aligned_player_view.h"

#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace zenlot {

// The base is named in full for the tool that describes types to QML.
class LoopingVideoView : public zenlot::TopAlignedPlayerView {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QUrl url READ url WRITE setUrl NOTIFY urlChanged)
    Q_PROPERTY(bool isMoving READ isMoving WRITE setMoving NOTIFY isMovingChanged)
    Q_PROPERTY(bool failed READ failed NOTIFY failedChanged)

  public:
    explicit LoopingVideoView(QQuickItem* parent = nullptr);
    ~LoopingVideoView() override;

    QUrl url() const { return url_; }
    void setUrl(const QUrl& url);
    bool isMoving() const { return isMoving_; }
    void setMoving(bool isMoving);
    bool failed() const { return failed_; }

  Q_SIGNALS:
    void urlChanged();
    void isMovingChanged();
    void failedChanged();

  protected:
    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

  private:
    class Coordinator;

    void setFailed(bool failed);
    void playWhenSeen();
    void reopen();

    QUrl url_;
    bool isMoving_{true};
    bool failed_{false};
    std::unique_ptr<Coordinator> coordinator_; // exists while the video plays
};

} // namespace zenlot
