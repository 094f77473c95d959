// The menu that opens when the status item is clicked: the port search field, then the commands. In
// a window, which has a field, it opens without one.
//
// It has the keyboard from the start, and the field has the focus all the time, so that a port can
// be typed at once and at any moment. The arrow keys and Tab walk the commands; Return runs the one
// that they chose, and commits the search otherwise; Escape closes the menu. The key equivalents of
// the commands work too. Titles are taken literally.
//
//     auto menu = std::make_unique<StatusMenu>(entries, this, StatusMenu::Edges::soft);
//     connect(menu.get(), &StatusMenu::portSearchCommitted, this, &AppDelegate::lookUp);
//     menu->popUp(place);
#pragma once

#include "platform/status_item.h"

#include <QMenu>

QT_FORWARD_DECLARE_CLASS(QLineEdit)
QT_FORWARD_DECLARE_CLASS(QWindow)

namespace zenlot {

class PortSearchFieldHostView;
class StatusMenuStyle;

class StatusMenu final : public QMenu {
    Q_OBJECT

  public:
    // Soft ones need a desktop that blends windows.
    enum class Edges { hard, soft };
    enum class Search { withField, without };

    // Commands run from the event loop, when the menu has closed and while `context` lives.
    StatusMenu(const QList<Command>& entries, QObject* context, Edges edges,
               Search search = Search::withField);
    ~StatusMenu() override;

    // Desktops that place popups themselves need to know whose it is, and some leave the keyboard
    // with that window: while the menu is open, its keys are the menu's.
    void belongTo(QWindow& window);

    // Opens beside what was clicked, in pixels of the desktop.
    void popUp(const QRect& place);

    // Not of a menu without one.
    QLineEdit& searchField() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

  Q_SIGNALS:
    void portSearchCommitted();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

  private:
    void addSearchField();
    void add(const Command& entry, QObject* context);
    void menuWillOpen();
    bool handleKey(QKeyEvent* event);
    void walk(int step);
    void handleReturn();
    void run(QAction* action);

    StatusMenuStyle* style_;
    PortSearchFieldHostView* hostView_{nullptr};
    bool isWalking_{false}; // whether the keys, and not the pointer, chose the active command
};

} // namespace zenlot
