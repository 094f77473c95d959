// The state of the window that answers "Check for Updates…": a check that is under way, a newer
// release, nothing newer, or why it can't be told. The window draws this and forwards clicks.
//
// Main thread only. Nobody is asked before check().
#pragma once

#include "updates/release_feed.h"

#include <QFutureWatcher>
#include <QObject>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace zenlot {

class UpdateViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application owns it")

    Q_PROPERTY(State state READ state NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    // Asking again could bring another answer.
    Q_PROPERTY(bool canTryAgain READ canTryAgain NOTIFY changed)
    // The address of the release's page, to be copied; only when no browser could be opened.
    Q_PROPERTY(QString pageAddress READ pageAddress NOTIFY changed)

  public:
    enum class State { Idle, Checking, Newer, Current, Failed };
    Q_ENUM(State)

    // Shows a page to the user; false when that can't be done.
    using OpenUrl = std::function<bool(const QUrl&)>;

    // The feed must outlive the object.
    UpdateViewModel(ReleaseFeed& feed, const ReleaseVersion& runningVersion, OpenUrl openUrl,
                    QObject* parent = nullptr);

    State state() const { return state_; }
    QString title() const;
    QString message() const;
    bool canTryAgain() const;
    QString pageAddress() const;

    // Asks the feed, unless that is being done already.
    Q_INVOKABLE void check();

    // Ends what is under way and forgets what was found.
    Q_INVOKABLE void dismiss();

    // Opens the page of the newer release in the browser; then the window has done its work.
    Q_INVOKABLE void openPage();

  Q_SIGNALS:
    void changed();
    void pageOpened();

  private:
    void takeAnswer();
    void become(State state);
    QString newerMessage() const;
    QString failureTitle() const;
    QString failureMessage() const;

    ReleaseFeed& feed_;
    ReleaseVersion runningVersion_;
    OpenUrl openUrl_;
    State state_{State::Idle};
    Release release_;                                        // in the states Newer and Current
    ReleaseFeedFailure failure_{ReleaseFeedFailure::noFeed}; // in the state Failed
    bool isPageAddressShown_{false};
    QFutureWatcher<ReleaseAnswer> answer_;
};

} // namespace zenlot
