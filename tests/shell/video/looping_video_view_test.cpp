// The item as the program gets it: loaded by name, from the library that only it needs.
#include "support/qt_temporary_folder.h"

#include <QFile>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

const QString kFixture = QStringLiteral(ZENLOT_TEST_FOLDER "/red_then_blue.mov");

class LoopingVideoViewTest : public testing::Test {
  protected:
    LoopingVideoViewTest() {
        window.resize(100, 100);
        window.setColor(Qt::white);
        QQmlComponent component(&engine);
        component.setData("import Zenlot.Video\nLoopingVideoView { radius: 10 }", {});
        view.reset(qobject_cast<QQuickItem*>(component.create()));
        if (!view)
            throw std::runtime_error(component.errorString().toStdString());
        view->setParentItem(window.contentItem());
        view->setSize({100, 100});
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    void play(const QString& file) { view->setProperty("url", QUrl::fromLocalFile(file)); }
    bool hasFailed() const { return view->property("failed").toBool(); }

    // Wherever the video is, and nowhere else.
    bool waitForColor(bool (*isWanted)(const QColor&)) {
        return QTest::qWaitFor([&] { return isWanted(window.grabWindow().pixelColor(50, 25)); },
                               10'000);
    }

    static bool isRed(const QColor& color) { return color.red() > 200 && color.blue() < 60; }
    static bool isBlue(const QColor& color) { return color.blue() > 200 && color.red() < 60; }
    static bool isEmpty(const QColor& color) { return color == QColor(Qt::white); }

    QQuickWindow window;
    QQmlEngine engine;
    std::unique_ptr<QQuickItem> view;
};

TEST_F(LoopingVideoViewTest, PlaysAgainAndAgainWhileItCanBeSeen) {
    play(kFixture);
    for (int round = 0; round < 3; ++round) {
        EXPECT_TRUE(waitForColor(isRed)) << round;
        EXPECT_TRUE(waitForColor(isBlue)) << round;
    }
    const QImage picture = window.grabWindow();
    EXPECT_TRUE(isEmpty(picture.pixelColor(0, 0))) << "round corners";
    EXPECT_TRUE(isEmpty(picture.pixelColor(50, 60))) << "nothing below the video";
    EXPECT_FALSE(hasFailed());

    view->setVisible(false);
    view->setVisible(true);
    EXPECT_TRUE(waitForColor(isRed)) << "from the start";
}

TEST_F(LoopingVideoViewTest, StandsStillInTheMiddleForWhoWantsNothingToMove) {
    view->setProperty("isMoving", false);
    play(kFixture);
    ASSERT_TRUE(waitForColor(isBlue)) << "the first half is red";
    int frames = 0;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [&] { ++frames; });
    QTest::qWait(300);
    EXPECT_EQ(frames, 0);
    view->setProperty("isMoving", true);
    EXPECT_TRUE(waitForColor(isRed));
}

} // namespace
} // namespace zenlot
