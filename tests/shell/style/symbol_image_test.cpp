#include "shell/style/symbol_image.h"

#include <QDir>
#include <QPainter>
#include <QSvgRenderer>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

// Every symbol that the program's windows and menus name.
const QStringList kNames{
    QStringLiteral("antenna.radiowaves.left.and.right"),
    QStringLiteral("arrow.clockwise"),
    QStringLiteral("arrow.up.circle.fill"),
    QStringLiteral("bell.badge.fill"),
    QStringLiteral("bookmark"),
    QStringLiteral("bookmark.fill"),
    QStringLiteral("bookmark.slash"),
    QStringLiteral("checkmark.circle.fill"),
    QStringLiteral("chevron.right"),
    QStringLiteral("doc.text"),
    QStringLiteral("exclamationmark.triangle.fill"),
    QStringLiteral("gearshape"),
    QStringLiteral("magnifyingglass"),
    QStringLiteral("magnifyingglass.circle.fill"),
    QStringLiteral("minus"),
    QStringLiteral("network"),
    QStringLiteral("plus"),
    QStringLiteral("sidebar.left"),
    QStringLiteral("sidebar.right"),
    QStringLiteral("trash"),
    QStringLiteral("xmark.octagon.fill"),
};

// The share of the picture that is drawn, in per cent.
double inkOf(const QImage& image) {
    double ink = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ink += image.pixelColor(x, y).alphaF();
    return 100 * ink / (image.width() * image.height());
}

TEST(SymbolImageTest, EverySymbolIsDrawnAtEverySize) {
    QStringList files;
    for (const QString& file : QDir(QStringLiteral(":/qt/qml/Zenlot/Style/symbols")).entryList())
        files.append(file.chopped(4));
    EXPECT_EQ(QSet<QString>(files.begin(), files.end()),
              QSet<QString>(kNames.begin(), kNames.end()));
    for (const QString& name : kNames) {
        for (const int side : {10, 16, 48}) {
            SCOPED_TRACE(name.toStdString() + " " + std::to_string(side));
            const QImage image = symbolImage(name, side, Qt::red);
            ASSERT_EQ(image.size(), QSize(side, side));
            EXPECT_GT(inkOf(image), 4);
            EXPECT_LT(inkOf(image), 80);
            for (int y = 0; y < side; ++y)
                for (int x = 0; x < side; ++x)
                    ASSERT_EQ(image.pixelColor(x, y).green(), 0);
        }
    }
}

TEST(SymbolImageTest, WhiteErasesAndTheColorsAlphaCounts) {
    const QImage image =
        symbolImage(QStringLiteral("xmark.octagon.fill"), 48, QColor(0, 0, 0, 128));
    EXPECT_EQ(image.pixelColor(24, 24).alpha(), 0);
    EXPECT_NEAR(image.pixelColor(24, 8).alpha(), 128, 1);
}

TEST(SymbolImageTest, NoSuchSymbolIsNoPicture) {
    EXPECT_TRUE(symbolImage(QStringLiteral("trash"), 0, Qt::red).isNull());
    EXPECT_TRUE(symbolImage(QString(), 16, Qt::red).isNull());
    EXPECT_TRUE(symbolImage(QStringLiteral("no.such.symbol"), 16, Qt::red).isNull());
    EXPECT_TRUE(symbolImage(QStringLiteral("../images/nodejs"), 16, Qt::red).isNull());
}

TEST(PictureTest, TheRuntimesPictureIsInTheResources) {
    QSvgRenderer picture(QStringLiteral(":/qt/qml/Zenlot/Style/images/nodejs.svg"));
    ASSERT_TRUE(picture.isValid());
    QImage image(28, 28, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    picture.render(&painter);
    EXPECT_GT(inkOf(image), 80);
}

} // namespace
} // namespace zenlot
