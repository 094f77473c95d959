// Sees to it that somebody in sight has the keyboard of a window. Whoever disappears with it (is
// hidden, disabled or destroyed) hands it back to where it came from, as far as that is still in
// sight, or else to `home`. Popups are left alone: they lie outside of the area and are no place
// to go back to.
//
//     KeyboardKeeper {
//         id: keeper; area: root; home: field
//         onBroughtHome: field.selectAll()
//     }
#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace zenlot {

class KeyboardKeeper : public QObject {
    Q_OBJECT
    QML_ELEMENT

    // The content of the window.
    Q_PROPERTY(QQuickItem* area READ area WRITE setArea NOTIFY areaChanged)
    Q_PROPERTY(QQuickItem* home MEMBER home_ NOTIFY homeChanged)

  public:
    using QObject::QObject;

    QQuickItem* area() const { return area_; }
    void setArea(QQuickItem* area);

    // Whether a dialog or a menu has the keyboard, or gets it back with the window.
    Q_INVOKABLE bool isWithPopup() const;

  Q_SIGNALS:
    void areaChanged();
    void homeChanged();
    void broughtHome();

  private:
    void followWindow(QQuickWindow* window);
    void followHolder();
    QQuickItem* placeOf(QQuickItem* holder) const;
    void settleLater();
    void settle();
    bool isLostWith(const QQuickItem* item) const;

    QPointer<QQuickItem> area_;
    QPointer<QQuickItem> home_;
    QList<QPointer<QQuickItem>> earlierHolders_; // the latest is the last
    bool isSettling_{false};
    QMetaObject::Connection windowConnection_;
    QMetaObject::Connection holderConnection_;
    QMetaObject::Connection visibleConnection_;
};

} // namespace zenlot
