#include "platform/linux/statusarea/tray_status_item.h"

#include "platform/linux/statusarea/template_icon.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

const QColor kOnLight(0x30, 0x30, 0x30);
const QColor kOnDark(0xf2, 0xf2, 0xf2);

// Panels take an underscore for the mark of a key, and the toolkit sends one for an ampersand,
// which it leaves no way to write.
QString exported(QString title) {
    return title.replace(u'_', u"__"_s).replace(u'&', u'+');
}

// Of the corners, which the picture leaves free; none when the display does not show them.
std::optional<int> brightnessAround(const QRect& icon) {
    QScreen* screen = QGuiApplication::screenAt(icon.center());
    if (screen == nullptr)
        return std::nullopt;
    const QRect onScreen = icon.translated(-screen->geometry().topLeft());
    const QImage image =
        screen->grabWindow(0, onScreen.x(), onScreen.y(), onScreen.width(), onScreen.height())
            .toImage();
    if (image.isNull())
        return std::nullopt;
    const int right = image.width() - 1;
    const int bottom = image.height() - 1;
    int sum = 0;
    for (const QPoint corner :
         {QPoint(0, 0), QPoint(right, 0), QPoint(0, bottom), QPoint(right, bottom)})
        sum += qGray(image.pixel(corner));
    return sum / 4;
}

} // namespace

TrayStatusItem::TrayStatusItem(StatusBar::ActivationHandler handler)
    : handler_(std::move(handler)), color_(QGuiApplication::palette().color(QPalette::WindowText)) {
    qGuiApp->installEventFilter(this);
}

TrayStatusItem::~TrayStatusItem() = default;

void TrayStatusItem::install(TrayKind kind) {
    kind_ = kind;
    icon_.reset();
    if (kind == TrayKind::undecided)
        return;
    icon_ = std::make_unique<QSystemTrayIcon>();
    updateIcon();
    icon_->setToolTip(toolTip_);
    if (kind == TrayKind::statusNotifier)
        icon_->setContextMenu(&menu_);
    // Later, since the handler may end the icon.
    connect(icon_.get(), &QSystemTrayIcon::activated, this, &TrayStatusItem::handleActivation,
            Qt::QueuedConnection);
    icon_->show();
    if (kind == TrayKind::xembed)
        watchIconWindow();
}

void TrayStatusItem::setImage(const TemplateImage& image) {
    if (image == std::exchange(image_, image))
        return;
    updateIcon();
}

void TrayStatusItem::setToolTip(const QString& text) {
    toolTip_ = text;
    if (icon_)
        icon_->setToolTip(text);
}

// Always the same menu, filled anew: panels don't notice when it is another one.
void TrayStatusItem::setMenu(const QList<Command>& entries) {
    menu_.clear();
    for (const Command& entry : entries) {
        if (entry.title.isEmpty()) {
            menu_.addSeparator();
            continue;
        }
        QAction* action = menu_.addAction(exported(entry.title));
        action->setShortcut(QKeySequence(entry.keyEquivalent));
        action->setEnabled(entry.isEnabled && entry.run);
        if (entry.run)
            connect(action, &QAction::triggered, this, entry.run, Qt::QueuedConnection);
    }
}

void TrayStatusItem::handleActivation(QSystemTrayIcon::ActivationReason reason) {
    const bool isClick = reason == QSystemTrayIcon::Trigger ||
                         (reason == QSystemTrayIcon::Context && kind_ == TrayKind::xembed);
    if (!isClick)
        return;
    const StatusBar::ActivationHandler handler = handler_;
    handler(place());
}

std::optional<QRect> TrayStatusItem::place() const {
    if (QGuiApplication::platformName().startsWith(u"wayland"_s))
        return std::nullopt;
    const QRect geometry = icon_ ? icon_->geometry() : QRect();
    return geometry.isValid() ? geometry : QRect(QCursor::pos(), QSize(1, 1));
}

// The toolkit keeps the window to itself, but paints it whenever the tray's background changes.
void TrayStatusItem::watchIconWindow() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->inherits("QSystemTrayIconSys"))
            widget->installEventFilter(this);
    }
}

bool TrayStatusItem::eventFilter(QObject* watched, QEvent* event) {
    // Of the menu's palette, which has never been shown, the toolkit takes no care.
    if (event->type() == QEvent::ApplicationPaletteChange) {
        if (watched == qGuiApp && kind_ != TrayKind::xembed) {
            color_ = QGuiApplication::palette().color(QPalette::WindowText);
            updateIcon();
        }
    } else if (event->type() == QEvent::Paint && watched->inherits("QSystemTrayIconSys")) {
        QMetaObject::invokeMethod(this, &TrayStatusItem::followBackground, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void TrayStatusItem::followBackground() {
    const std::optional<int> brightness =
        icon_ ? brightnessAround(icon_->geometry()) : std::nullopt;
    if (!brightness)
        return;
    const QColor color = *brightness < kMiddleGrey ? kOnDark : kOnLight;
    if (color == std::exchange(color_, color))
        return;
    updateIcon();
}

void TrayStatusItem::updateIcon() {
    if (icon_)
        icon_->setIcon(templateIcon(image_, color_));
}

} // namespace zenlot
