// Plays a video again and again, without sound, for as long as it can be seen: nothing is opened or
// decoded while the item is hidden, and each appearance begins from the start.
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

#include "shell/onboarding/top_aligned_player_view.h"

#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace zenlot {

// The base is named in full for the tool that describes types to QML.
class LoopingVideoView : public zenlot::TopAlignedPlayerView {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QUrl url READ url WRITE setUrl NOTIFY urlChanged)
    Q_PROPERTY(bool failed READ failed NOTIFY failedChanged)

  public:
    explicit LoopingVideoView(QQuickItem* parent = nullptr);
    ~LoopingVideoView() override;

    QUrl url() const { return url_; }
    void setUrl(const QUrl& url);
    bool failed() const { return failed_; }

  Q_SIGNALS:
    void urlChanged();
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
    bool failed_{false};
    std::unique_ptr<Coordinator> coordinator_; // exists while the video plays
};

} // namespace zenlot
