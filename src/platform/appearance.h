// How the user wants programs to look, as the desktop has it, followed while the program runs.
//
//     connect(&appearance, &Appearance::changed, this, [&] { adopt(appearance.wishes()); });
//
// Nothing is wished for until the desktop has answered, and on desktops that tell nothing. Main
// thread only.
#pragma once

#include <QObject>
#include <QtGlobal>

#include <cstdint>
#include <optional>

namespace zenlot {

// Desktops come with fonts of 9 to 11 points.
inline constexpr double kUsualTextPoints = 11;
inline constexpr double kLargestTextScale = 3;

enum class ColorScheme : std::uint8_t { noPreference, light, dark };

struct AppearanceWishes {
    ColorScheme colorScheme{ColorScheme::noPreference};
    std::optional<quint32> accent{}; // 0xRRGGBB
    bool isContrastHigh{false};
    // Of the desktop's texts, where that is not their usual size: 1.5 for half as large again.
    double textScale{1};
    bool isMotionReduced{false};
    // How much of it the toolkit sees to itself, since the display tells it to.
    double toolkitTextScale{1};

    friend bool operator==(const AppearanceWishes&, const AppearanceWishes&) = default;
};

class Appearance : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    virtual const AppearanceWishes& wishes() const = 0;

  Q_SIGNALS:
    void changed();
};

} // namespace zenlot
