// Draws every window in each of its states, in light and dark, into a folder:
//
//     zenlot-screenshots [--language LANGUAGE] [--text-scale FACTOR] FOLDER
//
// The windows are the real ones; the machine that they show is made up. The language is that of a
// table, or "longer", in which every text is half as long again; without it, the keys are shown.
// The factor is that of the desktop's texts, such as 1.5.
#include "localization/longer_texts.h"
#include "localization/translation.h"
#include "palettes.h"
#include "picture_tour/tour.h"
#include "shell/style/text_style.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QQuickWindow>
#include <QStyleHints>
#include <QWidget>

#include <cstdio>
#include <stdexcept>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

// Takes a picture of each state.
class Photographer final : public Visitor {
  public:
    Photographer(const QDir& folder, QString look) : folder_(folder), look_(std::move(look)) {}

    void see(QQuickWindow& window, const QString& state) override {
        pictureOnceStill(window);
        captureNow(window, state);
    }

    void captureNow(QQuickWindow& window, const QString& state) override {
        QGuiApplication::processEvents();
        save(window.grabWindow(), state);
    }

    void see(QWidget& menu, const QString& state) override { save(menu.grab().toImage(), state); }

  private:
    void save(const QImage& picture, const QString& state) const {
        const QString file = folder_.filePath(u"%1-%2.png"_s.arg(state, look_));
        if (!picture.save(file))
            throw std::runtime_error("can't write " + file.toStdString());
    }

    QDir folder_;
    QString look_;
};

void photograph(const QDir& folder, const QString& look) {
    Photographer photographer(folder, look);
    showMainWindow(photographer);
    showOtherWindows(photographer);
    showLogTab(photographer);
    showStatusMenu(photographer);
}

} // namespace
} // namespace zenlot

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QGuiApplication::styleHints()->setCursorFlashTime(0); // a cursor that stays
    QCommandLineParser options;
    const QCommandLineOption languageOption(QStringLiteral("language"), {},
                                            QStringLiteral("LANGUAGE"));
    const QCommandLineOption scaleOption(QStringLiteral("text-scale"), {}, QStringLiteral("FACTOR"),
                                         QStringLiteral("1"));
    options.addOptions({languageOption, scaleOption});
    bool isUnderstood = false;
    const bool isParsed = options.parse(QCoreApplication::arguments());
    const double textScale = options.value(scaleOption).toDouble(&isUnderstood);
    isUnderstood = isUnderstood && isParsed;
    const QStringList folders = options.positionalArguments();
    if (!isUnderstood || folders.size() != 1 || !QDir().mkpath(folders.constFirst())) {
        std::fputs("usage: zenlot-screenshots [--language LANGUAGE] [--text-scale FACTOR] FOLDER\n",
                   stderr);
        return 2;
    }
    if (textScale > 1) {
        QFont font = QGuiApplication::font();
        font.setPointSizeF(textScale * zenlot::TextStyle::kUsualPoints);
        QApplication::setFont(font);
    }
    const zenlot::Translation translation(options.values(languageOption));
    zenlot::LongerTexts longerTexts;
    if (options.value(languageOption) == QLatin1String("longer"))
        QCoreApplication::installTranslator(&longerTexts);
    try {
        const QDir folder(folders.constFirst());
        QGuiApplication::setPalette(zenlot::lightPalette());
        zenlot::photograph(folder, QStringLiteral("light"));
        QGuiApplication::setPalette(zenlot::darkPalette());
        zenlot::photograph(folder, QStringLiteral("dark"));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zenlot-screenshots: %s\n", error.what());
        return 1;
    }
    return 0;
}
