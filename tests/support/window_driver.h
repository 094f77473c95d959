// Works a window of QML as its user does, and sees of it what a screen reader tells.
#pragma once

#include <QAccessible>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>

namespace zenlot {

// Runs the event loop until the condition holds; false after a time that no machine needs.
inline bool waitFor(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 20'000);
}

inline QString nameOf(QObject* item) {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(item);
    return interface ? interface->text(QAccessible::Name) : QString();
}

inline void forEachItem(QQuickItem* root, const std::function<void(QQuickItem*)>& call) {
    call(root);
    for (QQuickItem* child : root->childItems())
        forEachItem(child, call);
}

class WindowDriver {
  public:
    WindowDriver() = default;
    WindowDriver(const WindowDriver&) = delete;
    WindowDriver& operator=(const WindowDriver&) = delete;
    virtual ~WindowDriver() = default;

    virtual QQuickWindow* window() = 0;

    // Those that are shown with this name, outer ones first.
    QList<QQuickItem*> itemsNamed(const QString& name) {
        return itemsThat([&](const QString& itemName) { return itemName == name; });
    }
    QQuickItem* itemNamed(const QString& name) { return itemsNamed(name).value(0); }
    // The first whose name begins so.
    QQuickItem* itemFrom(const QString& name) {
        return itemsThat([&](const QString& itemName) { return itemName.startsWith(name); })
            .value(0);
    }
    QQuickItem* waitForItem(const QString& name) {
        QQuickItem* item = nullptr;
        waitFor([&] { return (item = itemFrom(name)) != nullptr; });
        return item;
    }
    bool waitForNoItem(const QString& name) {
        return waitFor([&] { return !itemFrom(name); });
    }

    QString focused() { return nameOf(window()->activeFocusItem()); }
    bool comesToFocus(const QString& name) {
        return waitFor([&] { return focused() == name; });
    }
    // Tab by Tab, until the item with this name has the focus: what had it on the way.
    QStringList tabTo(const QString& name) {
        QStringList names;
        do {
            press(Qt::Key_Tab);
            names.append(focused());
        } while (names.last() != name && names.size() < 50);
        return names;
    }

    void press(int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(window(), static_cast<Qt::Key>(key), modifiers);
    }
    void type(const QString& text) {
        for (const QChar character : text)
            QTest::keyClick(window(), character.toLatin1());
    }
    void click(const QQuickItem* item, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(window(), button, {},
                          item->mapToScene(item->boundingRect().center()).toPoint());
    }

  private:
    QList<QQuickItem*> itemsThat(const std::function<bool(const QString&)>& fits) {
        QList<QQuickItem*> found;
        forEachItem(window()->contentItem(), [&](QQuickItem* item) {
            QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(item);
            if (item->isVisible() && interface && !interface->state().invisible &&
                fits(interface->text(QAccessible::Name)))
                found.append(item);
        });
        return found;
    }
};

// One QML file of the program in a window of its own.
class ViewDriver : public WindowDriver {
  public:
    QQuickWindow* window() override { return &view; }

    void open(const char* file, const QVariantMap& properties) {
        view.engine()->addImportPath(QStringLiteral(":/qt/qml"));
        view.setInitialProperties(properties);
        view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Zenlot/") + QLatin1StringView(file)));
        view.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&view));
    }

    QQuickView view;
};

// Whose view is empty before what it shows is gone.
class ViewTest : public testing::Test, protected ViewDriver {
  protected:
    void TearDown() override { view.setSource(QUrl()); }
};

} // namespace zenlot
