#include "shell/model/command.h"

#include <utility>

namespace zenlot {

Command::Command(const QString& text, const QString& keyEquivalent, std::function<void()> run,
                 QObject* parent)
    : QObject(parent), text_(text), keyEquivalent_(keyEquivalent), run_(std::move(run)) {}

void Command::setEnabled(bool enabled) {
    if (enabled == isEnabled_)
        return;
    isEnabled_ = enabled;
    Q_EMIT changed();
}

void Command::run() {
    if (!isEnabled_)
        return;
    // A copy, since what runs may end the command.
    const std::function<void()> run = run_;
    run();
}

} // namespace zenlot
