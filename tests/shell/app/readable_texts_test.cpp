// Measures in pictures of every window, light and dark, whether what is written there can be read
// and the selection be seen.
#include "palettes.h"
#include "picture_tour/tour.h"
#include "shell/app/words.h"
#include "shell/style/theme_colors.h"

#include <QGuiApplication>
#include <QImage>
#include <QQuickWindow>
#include <QStyleHints>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr double kTextContrast = 4.5;
constexpr double kLargeTextContrast = 3.0;
constexpr int kLargeText = 24; // pixels, as WCAG has it
constexpr double kSelectionContrast = 3.0;

// What most of the picture has stands behind the letters; the farthest from that is their inside.
double contrastIn(const QImage& picture) {
    std::map<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    const auto count = [](const auto& each) { return each.second; };
    const QRgb behind = std::ranges::max_element(counts, {}, count)->first;
    double most = 1;
    for (const auto& [color, times] : counts)
        most = std::max(most, contrastRatio(QColor(behind), QColor(color)));
    return most;
}

// Nobody reads what a dialog or menu covers.
QQuickItem* readablePartOf(QQuickWindow& window) {
    for (QQuickItem* child : window.contentItem()->childItems()) {
        if (child->inherits("QQuickOverlay") && child->isVisible())
            return child;
    }
    return window.contentItem();
}

class Reader final : public Visitor {
  public:
    explicit Reader(const char* look) : look_(look) {}

    void see(QQuickWindow& window, const QString& state) override {
        if (state == u"log-hostile") // rows of the log before are kept there, out of sight
            return;
        const QStringList faint = faintIn(window, pictureOnceStill(window));
        EXPECT_TRUE(faint.isEmpty()) << look_ << ", " << state.toStdString() << ":\n"
                                     << faint.join(u'\n').toStdString();
        ++statesSeen;
    }
    void see(QWidget& /*menu*/, const QString& /*state*/) override {}
    void captureNow(QQuickWindow& /*window*/, const QString& /*state*/) override {}

    int statesSeen{0};
    int wordsRead{0};
    int selectionsSeen{0};

  private:
    QStringList faintIn(QQuickWindow& window, const QImage& picture) {
        const qreal scale = picture.width() / static_cast<qreal>(window.width());
        const auto part = [&](const QRectF& place) {
            return picture.copy(
                QRectF(place.topLeft() * scale, place.size() * scale).toAlignedRect());
        };
        const QRectF all({}, window.size());
        QList<Words> found;
        QQuickItem* const readable = readablePartOf(window);
        collectWords(readable, found);
        QStringList faint;
        for (const Words& words : found) {
            if (words.item->inherits("QQuickAbstractButton"))
                continue; // whose text is another item
            // What is scrolled out of view or cut off is not in the picture.
            QRectF place = words.place & all;
            for (const QQuickItem* around = words.item; around; around = around->parentItem()) {
                if (around->clip())
                    place &= around->mapRectToScene({{}, around->size()});
            }
            if (place.height() < 6 || place.width() < 3 || !words.item->isEnabled())
                continue;
            const bool isLarge =
                words.item->property("font").value<QFont>().pixelSize() >= kLargeText;
            const double contrast = contrastIn(part(place));
            if (contrast < (isLarge ? kLargeTextContrast : kTextContrast))
                faint.append(u"%1 : 1  %2"_s.arg(contrast, 0, 'f', 2).arg(words.text));
            ++wordsRead;
        }
        collectMarks(readable, part, faint);
        return faint;
    }

    template <typename Part>
    void collectMarks(QQuickItem* item, const Part& part, QStringList& faint) {
        if (!item->isVisible() || item->opacity() < 1)
            return;
        if (QLatin1StringView(item->metaObject()->className()).startsWith("SelectedRowMark"_L1)) {
            // The bar, and the window beside it.
            const QRectF place = item->mapRectToScene({-4, item->height() / 2 - 2, 12, 4});
            const double contrast = contrastIn(part(place));
            if (contrast < kSelectionContrast)
                faint.append(u"%1 : 1  the selection"_s.arg(contrast, 0, 'f', 2));
            ++selectionsSeen;
        }
        for (QQuickItem* child : item->childItems())
            collectMarks(child, part, faint);
    }

    const char* look_;
};

TEST(ReadableTextsTest, WhatIsWrittenCanBeReadAndTheSelectionSeen) {
    qunsetenv("QT_FATAL_WARNINGS"); // windows drawn nowhere have no size hints
    QGuiApplication::styleHints()->setCursorFlashTime(0); // a cursor that stays
    const std::pair<const char*, QPalette> looks[] = {{"light", lightPalette()},
                                                      {"dark", darkPalette()}};
    for (const auto& [look, palette] : looks) {
        QGuiApplication::setPalette(palette);
        Reader reader(look);
        showMainWindow(reader);
        showOtherWindows(reader);
        showLogTab(reader);
        EXPECT_GE(reader.statesSeen, 30) << look;
        EXPECT_GE(reader.wordsRead, 500) << look;
        EXPECT_GE(reader.selectionsSeen, 5) << look;
    }
}

} // namespace
} // namespace zenlot
