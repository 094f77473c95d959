#include "shell/processicon/icon_source.h"

#include <QGuiApplication>
#include <QIcon>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zenlot {

IconSource::IconSource(QObject* parent) : QObject(parent) {
    start_.setSingleShot(true);
    start_.setInterval(0);
    connect(&start_, &QTimer::timeout, this, &IconSource::begin);
    connect(&search_, &QFutureWatcher<QUrl>::finished, this, [this] {
        if (search_.isCanceled())
            return;
        setIcon(search_.result());
        setLoading(false);
    });
}

void IconSource::setShown(bool isShown) {
    if (isShown == isShown_)
        return;
    isShown_ = isShown;
    Q_EMIT shownChanged();
    restart();
}

void IconSource::componentComplete() {
    isComplete_ = true;
    restart();
}

void IconSource::restart() {
    // A search that waits for a thread is not begun any more; the answer of one that runs is lost.
    search_.cancel();
    start_.stop();
    if (!isComplete_ || !isShown_)
        return;
    setLoading(true);
    start_.start();
}

void IconSource::begin() {
    const ProcessIconProvider* provider = ProcessIconProvider::providerFor(this);
    if (!provider) {
        setIcon({});
        setLoading(false);
        return;
    }
    IconFrame frame;
    frame.theme = QIcon::themeName();
    frame.sizeInPixels = static_cast<int>(std::ceil(size_ * qGuiApp->devicePixelRatio()));
    frame.cornerRadius = size_ > 0 ? std::clamp(cornerRadius_ / size_, 0.0, 0.5) : 0;
    search_.setFuture(provider->workers().run(
        [provider, frame, find = search()] { return find(*provider, frame); }));
}

void IconSource::setIcon(const QUrl& icon) {
    if (std::exchange(icon_, icon) != icon)
        Q_EMIT iconChanged();
}

void IconSource::setLoading(bool isLoading) {
    if (std::exchange(isLoading_, isLoading) != isLoading)
        Q_EMIT loadingChanged();
}

} // namespace zenlot
