// Looks over every window, in languages that take much room, for texts and buttons that have not
// enough of it.
#include "localization/longer_texts.h"
#include "localization/translation.h"
#include "picture_tour/tour.h"
#include "shell/app/words.h"
#include "shell/style/text_style.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

// What stands around words: a button, whatever cuts off what does not fit, the window; at the sides
// a layout, too. What scrolls has room enough below.
bool isWithinItsRoom(const Words& words, const QQuickItem* window) {
    for (const QQuickItem* around = words.item->parentItem(); around != nullptr;
         around = around->parentItem()) {
        const QRectF room = around->mapRectToScene({{}, around->size()});
        const bool isRoom =
            around == window || around->clip() || around->inherits("QQuickAbstractButton");
        if ((isRoom || around->inherits("QQuickLayout")) &&
            (words.place.left() < room.left() || words.place.right() > room.right()))
            return false;
        if (around->inherits("QQuickFlickable"))
            return true;
        if (isRoom && (words.place.top() < room.top() || words.place.bottom() > room.bottom()))
            return false;
    }
    return true;
}

class Critic final : public Visitor {
  public:
    explicit Critic(const char* language) : language_(language) {}

    void see(QQuickWindow& window, const QString& state) override {
        const bool isLarge = QGuiApplication::font().pointSizeF() > TextStyle::kUsualPoints;
        if (state.startsWith(u"hostile") || (isLarge && state == u"smallest"_s))
            return; // names that have no room
        // What moves may be anywhere on its way.
        EXPECT_TRUE(QTest::qWaitFor([&] { return misfitsIn(window).isEmpty(); }, 20'000))
            << language_ << ", " << state.toStdString() << ":\n"
            << misfitsIn(window).join(u'\n').toStdString();
        ++statesSeen;
    }
    void see(QWidget& /*menu*/, const QString& /*state*/) override {}
    void captureNow(QQuickWindow& /*window*/, const QString& /*state*/) override {}

    int statesSeen{0};

  private:
    static QStringList misfitsIn(QQuickWindow& window) {
        window.grabWindow(); // lays everything out
        QList<Words> all;
        collectWords(window.contentItem(), all);
        QStringList misfits;
        for (qsizetype each = 0; each < all.size(); ++each) {
            const Words& words = all[each];
            if (words.item->property("cursorRectangle").isValid()) {
                // At the sides it shows by scrolling what has no room.
                if (words.item->property("contentHeight").toReal() > words.item->height())
                    misfits.append(u"is cut off: "_s + words.text);
                continue;
            }
            // The note gives way to the name, and the row's tool tip has all of it.
            const bool mayBeCut = words.item->objectName() == u"originNote"_s;
            if (words.item->property("truncated").toBool() && !mayBeCut)
                misfits.append(u"is cut off: "_s + words.text);
            if (!isWithinItsRoom(words, window.contentItem()))
                misfits.append(u"is too large: "_s + words.text);
            for (qsizetype other = 0; other < each; ++other) {
                if (all[other].item->parentItem() == words.item->parentItem() &&
                    all[other].place.intersects(words.place))
                    misfits.append(u"lies on another: "_s + words.text);
            }
        }
        return misfits;
    }

    const char* language_;
};

void lookAround(const char* language) {
    Critic critic(language);
    showMainWindow(critic);
    showOtherWindows(critic);
    EXPECT_GE(critic.statesSeen, 30) << language;
}

// Nothing is wrong but that windows drawn nowhere have no size hints.
void judge(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
    if (type != QtDebugMsg && !message.startsWith(u"This plugin does not support"))
        ADD_FAILURE() << message.toStdString();
}

TEST(FittingTextsTest, EveryTextHasRoomInLongLanguagesAndLargeTexts) {
    qunsetenv("QT_FATAL_WARNINGS"); // which knows no exception
    qInstallMessageHandler(judge);
    for (const char* language : {"de", "hu"}) {
        const Translation translation({QString::fromLatin1(language)});
        lookAround(language);
    }
    LongerTexts longerTexts;
    QCoreApplication::installTranslator(&longerTexts);
    lookAround("half as long again");
    QCoreApplication::removeTranslator(&longerTexts);
    const Translation translation({u"en"_s});
    QFont font = QGuiApplication::font();
    font.setPointSizeF(1.5 * TextStyle::kUsualPoints);
    QGuiApplication::setFont(font);
    lookAround("half as large again");
}

} // namespace
} // namespace zenlot
