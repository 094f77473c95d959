// One icon of the program, in a tray of either kind.
//
// A tray of status notifier items gets the picture by name and as pixels, and shows our menu itself
// at a right click. In a tray of the older kind the icon is a window of ours: every click opens our
// own menu, and the picture is tinted to stand out from what is seen around it.
#pragma once

#include "platform/status_bar.h"

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>

#include <memory>

namespace zenlot {

// The toolkit settles for one when it first uses a tray, until the program ends.
enum class TrayKind { undecided, statusNotifier, xembed };

class TrayStatusItem final : public QObject, public StatusItem {
    Q_OBJECT

  public:
    explicit TrayStatusItem(StatusBar::ActivationHandler handler);
    ~TrayStatusItem() override;

    // Puts the icon into the tray that is there now. Nothing while the kind is undecided.
    void install(TrayKind kind);

    void setImage(const TemplateImage& image) override;
    void setToolTip(const QString& text) override;
    void setMenu(const QList<Command>& entries) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void handleActivation(QSystemTrayIcon::ActivationReason reason);
    std::optional<QRect> place() const;
    void watchIconWindow();
    void followBackground();
    void updateIcon();

    StatusBar::ActivationHandler handler_;
    TrayKind kind_{TrayKind::undecided};
    TemplateImage image_;
    QString toolTip_;
    QColor color_;
    QMenu menu_; // outlives the icon, which shows it
    std::unique_ptr<QSystemTrayIcon> icon_;
};

} // namespace zenlot
