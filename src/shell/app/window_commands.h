// What a window has of the commands of the application: their menu, and the keys that hold in every
// window. Main thread only.
#pragma once

#include "shell/menubar/app_delegate.h"

#include <QObject>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace zenlot {

class WindowCommands : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application owns it")

    // Whether the window shows a button for the menu, which its key opens in any case.
    Q_PROPERTY(bool needsButton READ needsButton NOTIFY needsButtonChanged)

  public:
    // The delegate must outlive the object.
    explicit WindowCommands(AppDelegate& delegate, QObject* parent = nullptr);

    bool needsButton() const { return delegate_.needsWindowMenu(); }

    // Below the item, in whose window it is.
    Q_INVOKABLE void openMenu(QQuickItem* item);
    Q_INVOKABLE void quit();

  Q_SIGNALS:
    void needsButtonChanged();

  private:
    AppDelegate& delegate_;
};

} // namespace zenlot
