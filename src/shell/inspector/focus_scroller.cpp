#include "shell/inspector/focus_scroller.h"

#include <QQuickWindow>

#include <algorithm>

namespace zenlot {
namespace {

constexpr double kMargin = 14; // what stands around the item stays in sight too
constexpr double kLine = 24;

// The toolkit has no public class for a Flickable; its properties are public all the same.
double number(const QQuickItem& flickable, const char* property) {
    return flickable.property(property).toDouble();
}

} // namespace

void FocusScroller::setFlickable(QQuickItem* flickable) {
    if (flickable == flickable_)
        return;
    disconnect(windowConnection_);
    flickable_ = flickable;
    if (flickable)
        windowConnection_ =
            connect(flickable, &QQuickItem::windowChanged, this, &FocusScroller::followWindow);
    followWindow(flickable ? flickable->window() : nullptr);
    Q_EMIT flickableChanged();
}

void FocusScroller::followWindow(QQuickWindow* window) {
    disconnect(focusConnection_);
    if (window)
        focusConnection_ = connect(window, &QQuickWindow::activeFocusItemChanged, this,
                                   &FocusScroller::showFocusItem);
}

bool FocusScroller::scrollForKey(int key) {
    if (!flickable_)
        return false;
    const double y = number(*flickable_, "contentY");
    const double page = flickable_->height() - kLine;
    switch (key) {
    case Qt::Key_Up:
        scrollTo(y - kLine);
        return true;
    case Qt::Key_Down:
        scrollTo(y + kLine);
        return true;
    case Qt::Key_PageUp:
        scrollTo(y - page);
        return true;
    case Qt::Key_PageDown:
        scrollTo(y + page);
        return true;
    default:
        return false;
    }
}

void FocusScroller::showFocusItem() {
    if (!flickable_ || !flickable_->window())
        return;
    const QQuickItem* item = flickable_->window()->activeFocusItem();
    auto* content = flickable_->property("contentItem").value<QQuickItem*>();
    if (!item || !content || item == content || !content->isAncestorOf(item))
        return;
    const QRectF area = item->mapRectToItem(content, item->boundingRect());
    const double y = number(*flickable_, "contentY");
    // Of an item that is higher than the view, its beginning.
    const double lowest = area.top() - kMargin;
    const double highest = std::min(lowest, area.bottom() + kMargin - flickable_->height());
    scrollTo(std::clamp(y, highest, lowest));
}

void FocusScroller::scrollTo(double contentY) {
    const double end = std::max(0.0, number(*flickable_, "contentHeight") - flickable_->height());
    flickable_->setProperty("contentY", std::clamp(contentY, 0.0, end));
}

} // namespace zenlot
