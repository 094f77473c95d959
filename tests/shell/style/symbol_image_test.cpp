#include "shell/style/symbol_image.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

// The share of the picture that is drawn, in per cent.
double inkOf(const QImage& image) {
    double ink = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ink += image.pixelColor(x, y).alphaF();
    return 100 * ink / (image.width() * image.height());
}

// Those that the sources name, and those that are there.
TEST(SymbolImageTest, EverySymbolIsDrawnAtEverySize) {
    static const QRegularExpression named(
        u"[sS]ymbol(?:Name)?\\b[^\\n\"]*\"([a-z]+(?:\\.[a-z]+)*)\""_s);
    QSet<QString> names;
    QDirIterator sources(QStringLiteral(ZENLOT_SOURCE_FOLDER), {u"*.qml"_s}, QDir::Files,
                         QDirIterator::Subdirectories);
    while (sources.hasNext()) {
        QFile source(sources.next());
        ASSERT_TRUE(source.open(QFile::ReadOnly));
        for (const auto& match : named.globalMatch(QString::fromUtf8(source.readAll())))
            names.insert(match.captured(1));
    }
    EXPECT_GT(names.size(), 10);
    for (const QString& file : QDir(u":/qt/qml/Zenlot/Style/symbols"_s).entryList())
        names.insert(file.chopped(4));
    for (const QString& name : std::as_const(names)) {
        for (const int side : {10, 48}) {
            SCOPED_TRACE(name.toStdString() + " " + std::to_string(side));
            const QImage image = symbolImage(name, side, Qt::red);
            ASSERT_EQ(image.size(), QSize(side, side));
            EXPECT_GT(inkOf(image), 4);
            EXPECT_LT(inkOf(image), 80);
        }
    }
}

} // namespace
} // namespace zenlot
