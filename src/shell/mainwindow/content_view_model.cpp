#include "shell/mainwindow/content_view_model.h"

#include <QCoroFuture>
#include <QPointer>
#include <unicode/uchar.h>

#include <chrono>

namespace zenlot {
namespace {

using namespace std::chrono_literals;

constexpr auto kTypingPause = 350ms;
constexpr int kMostDigits = 5;

// The first five characters that stand for a number, in whatever script. Only ASCII digits make a
// port of them; the others stay visible, so that people see what they typed.
QString numericCharacters(const QString& text) {
    QString kept;
    int count = 0;
    for (const uint codePoint : text.toUcs4()) {
        if (count == kMostDigits)
            break;
        if (u_getNumericValue(static_cast<UChar32>(codePoint)) == U_NO_NUMERIC_VALUE)
            continue;
        kept += QString::fromUcs4(reinterpret_cast<const char32_t*>(&codePoint), 1);
        ++count;
    }
    return kept;
}

std::optional<int> parsePort(const QString& text) {
    for (const QChar character : text) {
        if (character < u'0' || character > u'9')
            return std::nullopt;
    }
    bool isNumber = false;
    const int port = text.toInt(&isNumber);
    return isNumber ? std::optional(port) : std::nullopt;
}

} // namespace

ContentViewModel::ContentViewModel(PortInventory& inventory, NotificationCenter& notifications,
                                   QObject* parent)
    : QObject(parent), inventory_(inventory) {
    debounce_.setSingleShot(true);
    debounce_.setInterval(kTypingPause);
    connect(&debounce_, &QTimer::timeout, this, &ContentViewModel::performCheck);
    notifications.observe(kPortsUpdated, this, [this](const UserInfo&) { loadOccupiedPorts(); });
}

void ContentViewModel::setPortInput(const QString& text) {
    if (text == portInput_)
        return;
    portInput_ = numericCharacters(text);
    // Also when the text is what it was: the field may show a character that was refused.
    Q_EMIT portInputChanged();
    assignSidebarSelection(parsePort(portInput_));
    scheduleDebouncedCheck();
    Q_EMIT statusChanged();
}

void ContentViewModel::setSidebarSelection(int port) {
    assignSidebarSelection(port == kNoSelection ? std::nullopt : std::optional(port));
}

void ContentViewModel::assignSidebarSelection(std::optional<int> port) {
    if (port == sidebarSelection_)
        return;
    sidebarSelection_ = port;
    Q_EMIT sidebarSelectionChanged();
    if (!port || QString::number(*port) == portInput_)
        return;
    setPortInput(QString::number(*port));
    performCheck();
}

bool ContentViewModel::isFree() const {
    return !isChecking_ && hasSearched_ && !portInput_.isEmpty() && processes_.isEmpty();
}

QString ContentViewModel::statusText() const {
    if (isChecking_)
        return {};
    if (!hasSearched_)
        return tr("Enter a port number");
    return isFree() ? tr("Port %1 is free").arg(portInput_) : QString();
}

QString ContentViewModel::resultsHeader() const {
    const int count = processes_.rowCount();
    return (count == 1 ? tr("%1 process on port %2") : tr("%1 processes on port %2"))
        .arg(QString::number(count), portInput_);
}

void ContentViewModel::appear() {
    loadOccupiedPorts();
}

void ContentViewModel::scheduleDebouncedCheck() {
    debounce_.stop();
    if (!portInput_.isEmpty()) {
        debounce_.start();
        return;
    }
    // What is still being looked up belongs to a number that is no longer there.
    ++newestCheck_;
    isChecking_ = false;
    hasSearched_ = false;
    processes_.setProcesses({});
}

void ContentViewModel::performCheck() {
    const std::optional<int> port = parsePort(portInput_);
    if (port && isValidPort(*port))
        check(*port);
}

QCoro::Task<> ContentViewModel::check(int port) {
    const quint64 number = ++newestCheck_;
    isChecking_ = true;
    hasSearched_ = true;
    Q_EMIT statusChanged();

    const QPointer<ContentViewModel> self(this);
    std::vector<PortProcess> processes = co_await inventory_.processesOnPort(port);
    if (!self || number != newestCheck_)
        co_return;
    const bool hasFound = !processes.empty();
    processes_.setProcesses(std::move(processes));
    isChecking_ = false;
    Q_EMIT statusChanged();
    if (hasFound)
        Q_EMIT resultsFocusRequested();
}

void ContentViewModel::loadOccupiedPorts() {
    loadSidebar();
}

QCoro::Task<> ContentViewModel::loadSidebar() {
    assignIsLoadingSidebar(true);
    const QPointer<ContentViewModel> self(this);
    std::vector<OccupiedPort> ports = co_await inventory_.listMergedPorts();
    if (!self)
        co_return;
    sidebar_.setPorts(std::move(ports));
    assignIsLoadingSidebar(false);
}

void ContentViewModel::assignIsLoadingSidebar(bool isLoading) {
    if (isLoading == isLoadingSidebar_)
        return;
    isLoadingSidebar_ = isLoading;
    Q_EMIT isLoadingSidebarChanged();
}

} // namespace zenlot
