#include "platform/linux/statusarea/tray_status_bar.h"

#include <utility>

namespace zenlot {
namespace {

using namespace std::chrono_literals;

constexpr auto kTimeToSettle = 500ms;

} // namespace

TrayStatusBar::TrayStatusBar(SessionBus& bus, std::chrono::milliseconds patience)
    : notifiers_(bus) {
    settling_.setSingleShot(true);
    settling_.setInterval(kTimeToSettle);
    connect(&settling_, &QTimer::timeout, this, [this] {
        if (kind_ == TrayKind::undecided && hasXembedTray())
            decide(TrayKind::xembed);
    });
    patience_.setSingleShot(true);
    patience_.setInterval(patience);
    connect(&patience_, &QTimer::timeout, this, [this] { setAvailable(false); });

    connect(&notifiers_, &StatusNotifierWatch::changed, this, &TrayStatusBar::reconsider);
    connect(&notifiers_, &StatusNotifierWatch::busReplaced, this,
            [this] { areItemsOnOldBus_ = kind_ == TrayKind::statusNotifier; });
    // The toolkit hears of the tray at the same time, and has to be first.
    connect(
        &xembedTray_, &X11SelectionWatch::ownerChanged, this,
        [this] {
            if (kind_ == TrayKind::xembed && hasXembedTray())
                installItems();
            reconsider();
        },
        Qt::QueuedConnection);
    reconsider();
}

std::unique_ptr<StatusItem> TrayStatusBar::makeStatusItem(ActivationHandler handler) {
    auto item = std::make_unique<TrayStatusItem>(std::move(handler));
    item->install(kind_);
    items_.removeAll(nullptr);
    items_.append(item.get());
    return item;
}

void TrayStatusBar::observeAvailability(QObject* context, std::function<void()> handler) {
    connect(this, &TrayStatusBar::availabilityChanged, context, std::move(handler));
}

void TrayStatusBar::reconsider() {
    if (kind_ == TrayKind::undecided) {
        if (notifiers_.hasHost())
            decide(TrayKind::statusNotifier);
        else if (notifiers_.isKnown() && hasXembedTray() && !settling_.isActive())
            settling_.start();
    }
    if (notifiers_.hasHost() && std::exchange(areItemsOnOldBus_, false))
        installItems();
    if (hasTray()) {
        patience_.stop();
        setAvailable(true);
    } else if (isAvailable_ && !patience_.isActive()) {
        patience_.start();
    }
}

bool TrayStatusBar::hasTray() const {
    switch (kind_) {
    case TrayKind::undecided:
        return false;
    case TrayKind::statusNotifier:
        return notifiers_.hasHost();
    case TrayKind::xembed:
        return hasXembedTray();
    }
    return false;
}

void TrayStatusBar::decide(TrayKind kind) {
    kind_ = kind;
    installItems();
    reconsider();
}

void TrayStatusBar::installItems() {
    for (const QPointer<TrayStatusItem>& item : std::as_const(items_)) {
        if (item)
            item->install(kind_);
    }
}

void TrayStatusBar::setAvailable(bool isAvailable) {
    if (isAvailable == std::exchange(isAvailable_, isAvailable))
        return;
    Q_EMIT availabilityChanged();
}

} // namespace zenlot
