// Finds the icon of something for a view, off the main thread.
//
// It begins when the view is complete and shown, when the view is shown again, and when restart()
// is called; once in a turn of the event loop, after the properties that change together have
// changed. What was asked before is dropped: an answer always belongs to the last question. A view
// that is hidden asks nothing.
#pragma once

#include "shell/processicon/process_icon_provider.h"

#include <QFutureWatcher>
#include <QObject>
#include <QQmlParserStatus>
#include <QTimer>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace zenlot {

class IconSource : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    QML_UNCREATABLE("An icon is that of something.")

    // The view's square, in device-independent pixels.
    Q_PROPERTY(double size MEMBER size_)
    Q_PROPERTY(double cornerRadius MEMBER cornerRadius_)
    Q_PROPERTY(bool isShown READ isShown WRITE setShown NOTIFY shownChanged)
    // For an Image; empty when nothing was found.
    Q_PROPERTY(QUrl icon READ icon NOTIFY iconChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY loadingChanged)

  public:
    bool isShown() const { return isShown_; }
    void setShown(bool isShown);

    QUrl icon() const { return icon_; }
    bool isLoading() const { return isLoading_; }

    void classBegin() override {}
    void componentComplete() override;

  Q_SIGNALS:
    void shownChanged();
    void iconChanged();
    void loadingChanged();

  protected:
    // Runs on a worker thread, possibly after its source is gone.
    using Search = std::function<QUrl(const ProcessIconProvider&, const IconFrame&)>;

    explicit IconSource(QObject* parent = nullptr);

    void restart();
    virtual Search search() const = 0;

  private:
    void begin();
    void setIcon(const QUrl& icon);
    void setLoading(bool isLoading);

    double size_{0};
    double cornerRadius_{0};
    bool isShown_{true};
    bool isComplete_{false};
    bool isLoading_{true};
    QUrl icon_;
    QTimer start_;
    QFutureWatcher<QUrl> search_;
};

} // namespace zenlot
