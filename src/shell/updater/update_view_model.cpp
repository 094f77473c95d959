#include "shell/updater/update_view_model.h"

#include <QLocale>

#include <utility>

namespace zenlot {

UpdateViewModel::UpdateViewModel(ReleaseFeed& feed, const ReleaseVersion& runningVersion,
                                 OpenUrl openUrl, QObject* parent)
    : QObject(parent), feed_(feed), runningVersion_(runningVersion), openUrl_(std::move(openUrl)) {
    connect(&answer_, &QFutureWatcherBase::finished, this, &UpdateViewModel::takeAnswer);
}

void UpdateViewModel::check() {
    if (state_ == State::Checking)
        return;
    become(State::Checking);
    answer_.setFuture(feed_.newestRelease());
}

void UpdateViewModel::dismiss() {
    answer_.cancel();
    become(State::Idle);
}

void UpdateViewModel::takeAnswer() {
    if (state_ != State::Checking || answer_.isCanceled())
        return;
    const ReleaseAnswer answer = answer_.result();
    if (const auto* release = std::get_if<Release>(&answer)) {
        release_ = *release;
        const bool isNewer = ReleaseVersion::compare(release_.version, runningVersion_) > 0;
        become(isNewer ? State::Newer : State::Current);
    } else {
        failure_ = std::get<ReleaseFeedFailure>(answer);
        become(State::Failed);
    }
}

void UpdateViewModel::become(State state) {
    state_ = state;
    isPageAddressShown_ = false;
    Q_EMIT changed();
}

void UpdateViewModel::openPage() {
    if (state_ != State::Newer)
        return;
    if (openUrl_(release_.page)) {
        Q_EMIT pageOpened();
        return;
    }
    isPageAddressShown_ = true;
    Q_EMIT changed();
}

QString UpdateViewModel::title() const {
    switch (state_) {
    case State::Idle:
        return {};
    case State::Checking:
        return tr("Checking for updates\u2026");
    case State::Newer:
        return tr("Zenlot %1 is available").arg(release_.version.text());
    case State::Current:
        return tr("Zenlot is up to date");
    case State::Failed:
        return failureTitle();
    }
    return {};
}

QString UpdateViewModel::message() const {
    switch (state_) {
    case State::Idle:
        return {};
    case State::Checking:
        return tr("You have version %1.").arg(runningVersion_.text());
    case State::Newer:
        return newerMessage();
    case State::Current:
        if (ReleaseVersion::compare(release_.version, runningVersion_) == 0)
            return tr("Version %1 is the newest release.").arg(runningVersion_.text());
        return tr("You have version %1, which is ahead of the newest release, %2.")
            .arg(runningVersion_.text(), release_.version.text());
    case State::Failed:
        return failureMessage();
    }
    return {};
}

QString UpdateViewModel::newerMessage() const {
    if (isPageAddressShown_)
        return tr("No browser could be opened for this address:");
    QString running = tr("You have version %1.").arg(runningVersion_.text());
    if (!release_.date.isValid())
        return running;
    return running + u'\n' +
           tr("Released on %1.").arg(QLocale().toString(release_.date, QLocale::LongFormat));
}

QString UpdateViewModel::failureTitle() const {
    return failure_ == ReleaseFeedFailure::noFeed ? tr("This build has no update feed")
                                                  : tr("Zenlot could not check for updates");
}

QString UpdateViewModel::failureMessage() const {
    switch (failure_) {
    case ReleaseFeedFailure::noFeed:
        return tr("You have version %1. New ones come from where you got Zenlot.")
            .arg(runningVersion_.text());
    case ReleaseFeedFailure::unreachable:
        return tr("The update feed can\u2019t be reached. Check your network connection and try "
                  "again.");
    case ReleaseFeedFailure::tooSlow:
        return tr("The update feed takes too long to answer. Try again later.");
    case ReleaseFeedFailure::insecure:
        return tr("No secure connection to the update feed could be made.");
    case ReleaseFeedFailure::refused:
        return tr("The update feed is not available at the moment. Try again later.");
    case ReleaseFeedFailure::nonsense:
        return tr("The answer of the update feed makes no sense. Try again later.");
    }
    return {};
}

bool UpdateViewModel::canTryAgain() const {
    return state_ == State::Failed && failure_ != ReleaseFeedFailure::noFeed;
}

QString UpdateViewModel::pageAddress() const {
    return isPageAddressShown_ ? QString::fromLatin1(release_.page.toEncoded()) : QString();
}

} // namespace zenlot
