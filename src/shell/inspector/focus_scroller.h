// Moves the content of a Flickable for people who use the keyboard: what gets the focus comes into
// sight, and the paging keys scroll.
//
//     FocusScroller { id: scroller; flickable: view }
//     Keys.onPressed: event => event.accepted = scroller.scrollForKey(event.key)
#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace zenlot {

class FocusScroller : public QObject {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QQuickItem* flickable READ flickable WRITE setFlickable NOTIFY flickableChanged)

  public:
    using QObject::QObject;

    QQuickItem* flickable() const { return flickable_; }
    void setFlickable(QQuickItem* flickable);

    // Whether the key is one that scrolls.
    Q_INVOKABLE bool scrollForKey(int key);

  Q_SIGNALS:
    void flickableChanged();

  private:
    void followWindow(QQuickWindow* window);
    void showFocusItem();
    void scrollTo(double contentY);

    QPointer<QQuickItem> flickable_;
    QMetaObject::Connection windowConnection_;
    QMetaObject::Connection focusConnection_;
};

} // namespace zenlot
