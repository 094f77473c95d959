#include "shell/menubar/status_menu.h"

#include "shell/menubar/port_search_field_host_view.h"
#include "shell/menubar/status_menu_style.h"
#include "shell/style/text_style.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QWidgetAction>
#include <QWindow>

#include <algorithm>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr int kFontSize = 13;
constexpr int kGap = 4; // between the menu and the panel or the edge of the screen
constexpr QMargins kFieldText(22, 0, 4, 0); // leaves room for the symbol in front

QFont menuFont() {
    QFont font = QGuiApplication::font();
    font.setPixelSize(qRound(kFontSize * TextStyle::scaleOf(font)));
    font.setWeight(QFont::Normal);
    return font;
}

// Of a typeface whose digits differ in width, the one of fixed width is taken.
QFont fontForDigits() {
    QFont font = menuFont();
    const QFontMetrics metrics(font);
    const QString digits = u"023456789"_s;
    const bool isEven = std::ranges::all_of(digits, [&](QChar digit) {
        return metrics.horizontalAdvance(digit) == metrics.horizontalAdvance(u'1');
    });
    if (!isEven) {
        font.setFamilies(QFontDatabase::systemFont(QFontDatabase::FixedFont).families());
        font.setStyleHint(QFont::Monospace);
    }
    return font;
}

// What QMenu would take for the mark of a key is text.
QString literal(QString title) {
    return title.replace(u'&', u"&&"_s);
}

// What panels leave of the screen.
QRect areaAround(const QRect& place) {
    const QScreen* screen = QGuiApplication::screenAt(place.center());
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    return screen->availableGeometry().marginsRemoved({kGap, kGap, kGap, kGap});
}

} // namespace

StatusMenu::StatusMenu(const QList<Command>& entries, QObject* context, Edges edges, Search search)
    : style_(new StatusMenuStyle(edges == Edges::soft)) {
    style_->setParent(this);
    setStyle(style_);
    setFont(menuFont());
    setAttribute(Qt::WA_TranslucentBackground, edges == Edges::soft);
    if (search == Search::withField)
        addSearchField();
    for (const Command& entry : entries)
        add(entry, context);
    connect(this, &QMenu::aboutToShow, this, &StatusMenu::menuWillOpen);
}

StatusMenu::~StatusMenu() = default;

void StatusMenu::addSearchField() {
    auto* field = new QLineEdit;
    field->setStyle(style_);
    field->setFont(fontForDigits());
    field->setContextMenuPolicy(Qt::NoContextMenu);
    field->setPlaceholderText(tr("Port number\u2026"));
    field->setAccessibleName(field->placeholderText());
    field->setTextMargins(kFieldText);
    field->installEventFilter(this);
    connect(field, &QLineEdit::textEdited, this, [this] { setActiveAction(nullptr); });
    hostView_ = new PortSearchFieldHostView(field);
    auto* row = new QWidgetAction(this);
    row->setDefaultWidget(hostView_);
    addAction(row);
    addSeparator();
    // The menu would take the focus for each of its commands.
    setFocusProxy(field);
}

void StatusMenu::add(const Command& entry, QObject* context) {
    if (entry.title.isEmpty()) {
        addSeparator();
        return;
    }
    QAction* action = addAction(literal(entry.title));
    action->setShortcut(QKeySequence(entry.keyEquivalent));
    action->setShortcutVisibleInContextMenu(true);
    action->setEnabled(entry.isEnabled && entry.run);
    action->setProperty(kHeadingProperty, !entry.run);
    if (!entry.symbol.isEmpty())
        action->setIcon(style_->headingIcon(entry.symbol));
    action->setIconVisibleInMenu(true);
    action->setToolTip(entry.symbolDescription);
    if (entry.run)
        connect(action, &QAction::triggered, context, entry.run, Qt::QueuedConnection);
}

QLineEdit& StatusMenu::searchField() const {
    return *hostView_->searchField();
}

void StatusMenu::belongTo(QWindow& window) {
    winId(); // makes the menu's own window
    windowHandle()->setTransientParent(&window);
    window.installEventFilter(this);
}

void StatusMenu::popUp(const QRect& place) {
    const QRect area = areaAround(place);
    QRect frame({}, sizeHint());
    frame.moveLeft(place.center().x() - frame.width() / 2);
    if (place.center().y() < area.center().y())
        frame.moveTop(std::max(place.bottom() + 1 + kGap, area.top()));
    else
        frame.moveBottom(std::min(place.top() - 1 - kGap, area.bottom()));
    frame.moveRight(std::min(frame.right(), area.right()));
    frame.moveLeft(std::max(frame.left(), area.left()));
    popup(frame.topLeft());
}

// Once the menu is open: before, it has no keyboard to give.
void StatusMenu::menuWillOpen() {
    isWalking_ = false;
    style_->followPalette();
    if (hostView_ == nullptr)
        return;
    searchField().setPalette(style_->fieldPalette());
    QMetaObject::invokeMethod(
        this, [this] { searchField().setFocus(Qt::PopupFocusReason); }, Qt::QueuedConnection);
}

// Without a field the menu has the keys itself.
void StatusMenu::keyPressEvent(QKeyEvent* event) {
    if (!handleKey(event))
        QMenu::keyPressEvent(event);
}

void StatusMenu::mouseMoveEvent(QMouseEvent* event) {
    isWalking_ = false;
    QMenu::mouseMoveEvent(event);
}

bool StatusMenu::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        // The window's own keys rest while the menu is open.
        const bool isOfWindow = watched->isWindowType();
        if (isOfWindow && !isVisible())
            return false;
        if (handleKey(static_cast<QKeyEvent*>(event)) || isOfWindow)
            return true;
    }
    return QMenu::eventFilter(watched, event);
}

bool StatusMenu::handleKey(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Down:
    case Qt::Key_Tab:
        walk(1);
        return true;
    case Qt::Key_Up:
    case Qt::Key_Backtab:
        walk(-1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        handleReturn();
        return true;
    case Qt::Key_Escape:
        close();
        return true;
    default:
        break;
    }
    const QKeySequence keys(event->keyCombination());
    for (QAction* action : actions()) {
        if (action->isEnabled() && !action->shortcut().isEmpty() && action->shortcut() == keys) {
            run(action);
            return true;
        }
    }
    return false;
}

// From the last command on to the first, as menus do. In between is the field, where no command is
// chosen.
void StatusMenu::walk(int step) {
    QList<QAction*> stops;
    if (hostView_ != nullptr)
        stops.append(nullptr);
    for (QAction* action : actions()) {
        if (action->isEnabled() && !action->isSeparator() &&
            qobject_cast<QWidgetAction*>(action) == nullptr)
            stops.append(action);
    }
    if (stops.isEmpty())
        return;
    const qsizetype last = stops.size() - 1;
    const qsizetype at = stops.indexOf(activeAction());
    const qsizetype from = at >= 0 ? at : step > 0 ? last : 0;
    isWalking_ = true;
    setActiveAction(stops.at((from + step + stops.size()) % stops.size()));
}

// The pointer may happen to rest on a command while somebody types a port.
void StatusMenu::handleReturn() {
    QAction* chosen = activeAction();
    const bool isMeant = isWalking_ || hostView_ == nullptr || searchField().text().isEmpty();
    if (chosen != nullptr && chosen->isEnabled() && isMeant)
        run(chosen);
    else if (hostView_ != nullptr)
        Q_EMIT portSearchCommitted();
}

void StatusMenu::run(QAction* action) {
    close();
    action->trigger();
}

} // namespace zenlot
