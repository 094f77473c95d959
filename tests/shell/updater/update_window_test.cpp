// The real window over a feed that answers when the test says so.
#include "shell/style/qml_window.h"
#include "shell/updater/update_view_model.h"
#include "support/window_driver.h"
#include "updates/fake_release_feed.h"

#include <QPointer>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_UpdaterPlugin)

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

Release release(const char* text) {
    return {*ReleaseVersion::fromText(QLatin1String(text)), QUrl(u"https://zenlot.example/notes"_s),
            QDate(2026, 3, 5)};
}

class UpdateWindowTest : public testing::Test, protected WindowDriver {
  protected:
    QQuickWindow* window() override { return updates.window(); }
    void ask() {
        engine.addImportPath(u":/qt/qml"_s);
        viewModel.check();
        updates.open()->show();
        window()->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window()));
    }

    void answer(const ReleaseAnswer& answer) {
        feed.answer(answer);
        EXPECT_TRUE(
            waitFor([this] { return viewModel.state() != UpdateViewModel::State::Checking; }));
    }

    bool isShown(const QString& name) { return itemNamed(name) != nullptr; }

    FakeReleaseFeed feed;
    QList<QUrl> opened;
    bool hasBrowser{true};
    UpdateViewModel viewModel{feed, release("1.9").version, [this](const QUrl& url) {
                                  opened.append(url);
                                  return hasBrowser;
                              }};
    QQmlEngine engine;
    QmlWindow updates{[this]() -> QQmlEngine& { return engine; }, "Updater/UpdateWindow.qml",
                      QmlWindow::showing(viewModel)};
};

TEST_F(UpdateWindowTest, AsksOnceHoweverOftenItIsToldUntilEscape) {
    EXPECT_EQ(feed.questions, 0);
    ask();
    const QPointer<QQuickWindow> first = window();
    ask();
    EXPECT_EQ(feed.questions, 1);
    EXPECT_EQ(window(), first);
    EXPECT_EQ(focused(), u"Cancel"_s);
    press(Qt::Key_Escape);
    EXPECT_EQ(window(), nullptr);
    EXPECT_TRUE(feed.wasCanceled());
    EXPECT_TRUE(waitFor([&] { return first.isNull(); }));
    feed.answer(release("2.0"));
    QCoreApplication::processEvents();
    EXPECT_EQ(viewModel.state(), UpdateViewModel::State::Idle);
}

TEST_F(UpdateWindowTest, TellsWhatCameOfItAndWhatCanBeDone) {
    struct Outcome {
        ReleaseAnswer answer;
        QString title;
        QStringList buttons; // the last one is what Return does
    };
    const QString failed = u"Zenlot could not check for updates"_s;
    const QStringList again{u"Close"_s, u"Try Again"_s};
    const Outcome outcomes[]{
        {release("1.10"), u"Zenlot 1.10 is available"_s, {u"Later"_s, u"Release Notes"_s}},
        {release("1.9.0"), u"Zenlot is up to date"_s, {u"OK"_s}},
        {release("1.9-rc1"), u"Zenlot is up to date"_s, {u"OK"_s}},
        {ReleaseFeedFailure::unreachable, failed, again},
        {ReleaseFeedFailure::nonsense, failed, again},
        {ReleaseFeedFailure::noFeed, u"This build has no update feed"_s, {u"OK"_s}},
    };
    for (const Outcome& outcome : outcomes) {
        ask();
        answer(outcome.answer);
        EXPECT_TRUE(isShown(outcome.title)) << outcome.title.toStdString();
        EXPECT_TRUE(isShown(viewModel.message()));
        for (const char* button : {"Cancel", "Close", "Later", "OK", "Release Notes", "Try Again"})
            EXPECT_EQ(isShown(QLatin1String(button)),
                      outcome.buttons.contains(QLatin1String(button)))
                << button << " of " << outcome.title.toStdString();
        EXPECT_EQ(focused(), outcome.buttons.last());
    }
    EXPECT_TRUE(opened.isEmpty()) << "only when asked";
}

TEST_F(UpdateWindowTest, ReturnOpensTheNotesAndTriesAgain) {
    ask();
    answer(ReleaseFeedFailure::tooSlow);
    press(Qt::Key_Return);
    EXPECT_EQ(feed.questions, 2);
    EXPECT_EQ(focused(), u"Cancel"_s);
    answer(release("2.0"));
    hasBrowser = false;
    press(Qt::Key_Return);
    EXPECT_TRUE(isShown(u"https://zenlot.example/notes"_s)) << "to be copied at least";
    hasBrowser = true;
    press(Qt::Key_Return);
    EXPECT_EQ(opened, QList<QUrl>(2, QUrl(u"https://zenlot.example/notes"_s)));
    EXPECT_EQ(window(), nullptr);
}

} // namespace
} // namespace zenlot
