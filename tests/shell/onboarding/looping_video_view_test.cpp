#include "shell/onboarding/looping_video_view.h"
#include "support/qt_temporary_folder.h"

#include <QFile>
#include <QQuickWindow>
#include <QTest>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

const QString kFixture = QStringLiteral(ZENLOT_TEST_FOLDER "/red_then_blue.mov");

class LoopingVideoViewTest : public testing::Test {
  protected:
    LoopingVideoViewTest() {
        window.resize(100, 100);
        window.setColor(Qt::white);
        view.setParentItem(window.contentItem());
        view.setSize({100, 100});
        view.setRadius(10);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    void play(const QString& file) { view.setUrl(QUrl::fromLocalFile(file)); }

    // Wherever the video is, and nowhere else.
    bool waitForColor(bool (*isWanted)(const QColor&)) {
        return QTest::qWaitFor([&] { return isWanted(window.grabWindow().pixelColor(50, 25)); },
                               10'000);
    }

    static bool isRed(const QColor& color) { return color.red() > 200 && color.blue() < 60; }
    static bool isBlue(const QColor& color) { return color.blue() > 200 && color.red() < 60; }
    static bool isEmpty(const QColor& color) { return color == QColor(Qt::white); }

    QQuickWindow window;
    LoopingVideoView view;
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
    EXPECT_FALSE(view.failed());

    view.setVisible(false);
    view.setVisible(true);
    EXPECT_TRUE(waitForColor(isRed)) << "from the start";
}

TEST_F(LoopingVideoViewTest, LeavesAloneWhatItCanNotPlay) {
    const QtTemporaryFolder folder;
    QFile whole(kFixture);
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray bytes = whole.readAll();
    const std::pair<const char*, QByteArray> files[] = {
        {"empty", {}}, {"text", "no video"}, {"half", bytes.first(bytes.size() / 2)}};
    for (const auto& [name, content] : files) {
        folder.write(QLatin1String(name), content);
        play(folder.path(QLatin1String(name)));
        EXPECT_TRUE(QTest::qWaitFor([&] { return view.failed(); }, 10'000)) << name;
        EXPECT_TRUE(waitForColor(isEmpty)) << name;
    }
    play(u"/nowhere/clip.mov"_s);
    EXPECT_TRUE(view.failed());
    play(kFixture);
    EXPECT_FALSE(view.failed());
    EXPECT_TRUE(waitForColor(isRed));
}

} // namespace
} // namespace zenlot
