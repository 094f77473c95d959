#include "shell/mainwindow/keyboard_keeper.h"

#include <QQuickWindow>

#include <utility>

namespace zenlot {

void KeyboardKeeper::setArea(QQuickItem* area) {
    if (area == area_)
        return;
    disconnect(windowConnection_);
    area_ = area;
    if (area)
        windowConnection_ =
            connect(area, &QQuickItem::windowChanged, this, &KeyboardKeeper::followWindow);
    followWindow(area ? area->window() : nullptr);
    Q_EMIT areaChanged();
}

bool KeyboardKeeper::isWithPopup() const {
    if (!area_ || !area_->window())
        return false;
    // A window without the keyboard has no active item, but knows which one is next.
    const QQuickItem* item = area_->window()->contentItem();
    while (item->isFocusScope() && item->scopedFocusItem())
        item = item->scopedFocusItem();
    return item->isVisible() && item != area_ && !item->isAncestorOf(area_) &&
           !area_->isAncestorOf(item);
}

void KeyboardKeeper::followWindow(QQuickWindow* window) {
    disconnect(holderConnection_);
    if (window)
        holderConnection_ = connect(window, &QQuickWindow::activeFocusItemChanged, this,
                                    &KeyboardKeeper::followHolder);
    followHolder();
}

void KeyboardKeeper::followHolder() {
    disconnect(visibleConnection_);
    QQuickItem* const holder =
        area_ && area_->window() ? area_->window()->activeFocusItem() : nullptr;
    if (holder) {
        // Here the toolkit leaves the keyboard where it is.
        visibleConnection_ =
            connect(holder, &QQuickItem::visibleChanged, this, &KeyboardKeeper::settleLater);
        if (area_->isAncestorOf(holder)) {
            QQuickItem* const place = placeOf(holder);
            earlierHolders_.removeAll(place);
            earlierHolders_.removeAll(nullptr);
            earlierHolders_.append(place);
        }
    }
    settleLater();
}

// Rows come and go; their list stays.
QQuickItem* KeyboardKeeper::placeOf(QQuickItem* holder) const {
    QQuickItem* place = holder;
    for (QQuickItem* item = holder->parentItem(); item != area_; item = item->parentItem()) {
        if (item->isFocusScope())
            place = item;
    }
    return place;
}

// The keyboard may be on its way, and who takes it comes first.
void KeyboardKeeper::settleLater() {
    if (!std::exchange(isSettling_, true))
        QMetaObject::invokeMethod(this, &KeyboardKeeper::settle, Qt::QueuedConnection);
}

bool KeyboardKeeper::isLostWith(const QQuickItem* item) const {
    return !item || !item->isVisible() || !item->isEnabled() || item == area_ ||
           item->isAncestorOf(area_);
}

void KeyboardKeeper::settle() {
    isSettling_ = false;
    if (!area_ || !area_->window() || !area_->window()->isActive() ||
        !isLostWith(area_->window()->activeFocusItem()))
        return;
    QQuickItem* next = home_;
    for (auto each = earlierHolders_.crbegin(); each != earlierHolders_.crend(); ++each) {
        if (!isLostWith(*each)) {
            next = *each;
            break;
        }
    }
    if (!next)
        return;
    next->forceActiveFocus(Qt::OtherFocusReason);
    if (next == home_)
        Q_EMIT broughtHome();
}

} // namespace zenlot
