#include "shell/menubar/port_search_field_host_view.h"

#include <QCoreApplication>
#include <QMouseEvent>

#include <algorithm>

namespace zenlot {
namespace {

constexpr QSize kSize(240, 34);
constexpr int kSideMargin = 12;
constexpr int kFieldHeight = 24; // at least
constexpr int kTextMargin = 8;

} // namespace

PortSearchFieldHostView::PortSearchFieldHostView(QLineEdit* searchField)
    : searchField_(searchField) {
    searchField_->setParent(this);
    setCursor(searchField_->cursor());
    setFocusProxy(searchField_);
}

QWidget* PortSearchFieldHostView::hitTest(QPoint point) const {
    return rect().contains(point) ? searchField_ : nullptr;
}

QSize PortSearchFieldHostView::sizeHint() const {
    return {kSize.width(), kSize.height() - kFieldHeight + fieldHeight()};
}

int PortSearchFieldHostView::fieldHeight() const {
    return std::max(kFieldHeight, searchField_->fontMetrics().height() + kTextMargin);
}

void PortSearchFieldHostView::resizeEvent(QResizeEvent* /*event*/) {
    searchField_->setGeometry(kSideMargin, (height() - fieldHeight()) / 2,
                              width() - 2 * kSideMargin, fieldHeight());
}

// The field gets the event as if the nearest point of it had been clicked.
void PortSearchFieldHostView::forward(QMouseEvent* event) const {
    event->accept();
    QWidget* field = hitTest(event->position().toPoint());
    if (field == nullptr)
        return;
    const QPointF inField = event->position() - field->pos();
    const QPointF nearest(std::clamp(inField.x(), 0.0, field->width() - 1.0),
                          std::clamp(inField.y(), 0.0, field->height() - 1.0));
    QMouseEvent copy(event->type(), nearest, event->globalPosition(), event->button(),
                     event->buttons(), event->modifiers(), event->pointingDevice());
    QCoreApplication::sendEvent(field, &copy);
    field->setFocus(Qt::MouseFocusReason);
}

} // namespace zenlot
