// The colours of the program for QML, in light and dark. They come from the application's palette
// and change with it at once: when the desktop switches, or when the application sets a palette of
// its own. What each colour is for, and which contrasts hold, stands in theme_colors.h.
//
//     import Zenlot.Style
//     Rectangle { color: Theme.sidebar }
#pragma once

#include "shell/style/theme_colors.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace zenlot {

class Theme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    Q_PROPERTY(bool isDark READ isDark NOTIFY changed)
    // 1, or 0 for people who want nothing to move: what durations are multiplied with.
    Q_PROPERTY(double motion READ motion WRITE setMotion NOTIFY motionChanged)
    Q_PROPERTY(QColor label READ label NOTIFY changed)
    Q_PROPERTY(QColor secondaryLabel READ secondaryLabel NOTIFY changed)
    Q_PROPERTY(QColor tertiaryLabel READ tertiaryLabel NOTIFY changed)
    Q_PROPERTY(QColor quaternaryLabel READ quaternaryLabel NOTIFY changed)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(QColor accentText READ accentText NOTIFY changed)
    Q_PROPERTY(QColor focus READ focus NOTIFY changed)
    Q_PROPERTY(QColor window READ window NOTIFY changed)
    Q_PROPERTY(QColor sidebar READ sidebar NOTIFY changed)
    Q_PROPERTY(QColor field READ field NOTIFY changed)
    Q_PROPERTY(QColor popover READ popover NOTIFY changed)
    Q_PROPERTY(QColor card READ card NOTIFY changed)
    Q_PROPERTY(QColor quaternaryFill READ quaternaryFill NOTIFY changed)
    Q_PROPERTY(QColor glass READ glass NOTIFY changed)
    Q_PROPERTY(QColor separator READ separator NOTIFY changed)
    Q_PROPERTY(QColor hover READ hover NOTIFY changed)
    Q_PROPERTY(QColor pressed READ pressed NOTIFY changed)
    Q_PROPERTY(QColor selection READ selection NOTIFY changed)
    Q_PROPERTY(QColor scrim READ scrim NOTIFY changed)
    Q_PROPERTY(QColor green READ green NOTIFY changed)
    Q_PROPERTY(QColor blue READ blue NOTIFY changed)
    Q_PROPERTY(QColor orange READ orange NOTIFY changed)
    Q_PROPERTY(QColor red READ red NOTIFY changed)
    Q_PROPERTY(QColor teal READ teal NOTIFY changed)
    Q_PROPERTY(QColor vividGreen READ vividGreen NOTIFY changed)
    Q_PROPERTY(QColor vividBlue READ vividBlue NOTIFY changed)
    Q_PROPERTY(QColor vividOrange READ vividOrange NOTIFY changed)
    Q_PROPERTY(QColor vividRed READ vividRed NOTIFY changed)
    Q_PROPERTY(QColor yellow READ yellow NOTIFY changed)

  public:
    // Needs a QGuiApplication.
    explicit Theme(QObject* parent = nullptr);

    double motion() const { return motion_; }
    void setMotion(double motion);

    bool isDark() const { return colors_.isDark; }
    QColor label() const { return colors_.label; }
    QColor secondaryLabel() const { return colors_.secondaryLabel; }
    QColor tertiaryLabel() const { return colors_.tertiaryLabel; }
    QColor quaternaryLabel() const { return colors_.quaternaryLabel; }
    QColor accent() const { return colors_.accent; }
    QColor accentText() const { return colors_.accentText; }
    QColor focus() const { return colors_.focus; }
    QColor window() const { return colors_.window; }
    QColor sidebar() const { return colors_.sidebar; }
    QColor field() const { return colors_.field; }
    QColor popover() const { return colors_.popover; }
    QColor card() const { return colors_.card; }
    QColor quaternaryFill() const { return colors_.quaternaryFill; }
    QColor glass() const { return colors_.glass; }
    QColor separator() const { return colors_.separator; }
    QColor hover() const { return colors_.hover; }
    QColor pressed() const { return colors_.pressed; }
    QColor selection() const { return colors_.selection; }
    QColor scrim() const { return colors_.scrim; }
    QColor green() const { return colors_.green; }
    QColor blue() const { return colors_.blue; }
    QColor orange() const { return colors_.orange; }
    QColor red() const { return colors_.red; }
    QColor teal() const { return colors_.teal; }
    QColor vividGreen() const { return colors_.vividGreen; }
    QColor vividBlue() const { return colors_.vividBlue; }
    QColor vividOrange() const { return colors_.vividOrange; }
    QColor vividRed() const { return colors_.vividRed; }
    QColor yellow() const { return colors_.yellow; }

    bool eventFilter(QObject* watched, QEvent* event) override;

  Q_SIGNALS:
    void changed();
    void motionChanged();

  private:
    ThemeColors colors_;
    double motion_{1};
};

} // namespace zenlot
