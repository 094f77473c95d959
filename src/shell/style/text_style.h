// The named text styles for QML, in the desktop's own typefaces, which are followed when the user
// changes them. Sizes are device-independent pixels; where the desktop's font is larger than usual,
// they are larger by as much, and `scale` says by how much, for what has to make room.
//
//     StyleText { font: TextStyle.bold(TextStyle.caption) }
//     StyleText { font: TextStyle.sized(52 * TextStyle.scale, Font.Thin) }
#pragma once

#include <QFont>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace zenlot {

class TextStyle : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    Q_PROPERTY(double scale READ scale NOTIFY changed)
    Q_PROPERTY(QFont largeTitle READ largeTitle NOTIFY changed) // 26
    Q_PROPERTY(QFont title READ title NOTIFY changed)           // 22
    Q_PROPERTY(QFont title3 READ title3 NOTIFY changed)         // 15
    Q_PROPERTY(QFont headline READ headline NOTIFY changed)     // 13, semibold
    Q_PROPERTY(QFont body READ body NOTIFY changed)             // 13
    Q_PROPERTY(QFont callout READ callout NOTIFY changed)       // 12
    Q_PROPERTY(QFont caption READ caption NOTIFY changed)       // 10
    Q_PROPERTY(QFont caption2 READ caption2 NOTIFY changed)     // 10, medium

  public:
    // Desktops come with fonts of 9 to 11 points, which make no difference.
    static constexpr double kUsualPoints = 11;
    // 1 or more, within bounds.
    static double scaleOf(const QFont& font);

    // Needs a QGuiApplication.
    explicit TextStyle(QObject* parent = nullptr);

    double scale() const { return scaleOf(base_); }

    QFont largeTitle() const { return sized(26 * scale(), QFont::Normal); }
    QFont title() const { return sized(22 * scale(), QFont::Normal); }
    QFont title3() const { return sized(15 * scale(), QFont::Normal); }
    QFont headline() const { return sized(13 * scale(), QFont::DemiBold); }
    QFont body() const { return sized(13 * scale(), QFont::Normal); }
    QFont callout() const { return sized(12 * scale(), QFont::Normal); }
    QFont caption() const { return sized(10 * scale(), QFont::Normal); }
    QFont caption2() const { return sized(10 * scale(), QFont::Medium); }

    Q_INVOKABLE QFont bold(QFont font) const;
    // The same size and weight in the desktop's typeface of fixed width.
    Q_INVOKABLE QFont monospaced(QFont font) const;
    // The weight is one of QML's Font.Thin to Font.Black. Who multiplies the size by the scale is
    // told when that changes.
    Q_INVOKABLE QFont sized(double pixelSize, int weight) const;

    // What a key sequence is called on keyboards of the user's language.
    Q_INVOKABLE QString keyText(const QString& keys) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

  Q_SIGNALS:
    void changed();

  private:
    QFont base_;
};

} // namespace zenlot
