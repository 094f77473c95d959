#include "platform/linux/autostart_app_service.h"

#include "platform/linux/desktop_entry.h"
#include "platform/linux/key_file.h"
#include "platform/linux/user_file.h"

#include <QFileInfo>
#include <QList>

#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr qint64 kMaximumEntryBytes = qint64{1} * 1024 * 1024;
constexpr int kMostAttemptsToWrite = 10;

constexpr char kEntryGroup[] = "Desktop Entry";
constexpr char kGroupLine[] = "[Desktop Entry]";
constexpr char kExec[] = "Exec";
constexpr char kHidden[] = "Hidden";
constexpr char kGnomeEnabled[] = "X-GNOME-Autostart-enabled";

AppServiceError errorOf(AutostartError code, const QString& message) {
    return {u"dev.quorvane.zenlot.autostart"_s, static_cast<qint64>(code), message};
}

bool isSwitchedOff(const KeyFile& entry) {
    return entry.isTrue(kEntryGroup, kHidden) || entry.isFalse(kEntryGroup, kGnomeEnabled);
}

AppServiceStatus statusOf(const QByteArray& text) {
    const KeyFile entry(text);
    if (isSwitchedOff(entry))
        return AppServiceStatus::requiresApproval;
    const bool startsProgram = entry.text(kEntryGroup, "Type") == u"Application" &&
                               !entry.text(kEntryGroup, kExec).isEmpty();
    return startsProgram ? AppServiceStatus::enabled : AppServiceStatus::notRegistered;
}

// Whether it starts a program, named by its full path, that is no longer there.
bool isOutdated(const KeyFile& entry) {
    const QString program = wordsOfExec(entry.text(kEntryGroup, kExec)).value(0);
    return program.startsWith(u'/') && !QFileInfo::exists(program);
}

// The entry switched on, with the lines that it lacks and all that it had, but for what starts a
// program that has gone.
QByteArray enabledEntry(const QByteArray& text, const QByteArray& exec) {
    const KeyFile entry(text);
    const bool isExecReplaced = isOutdated(entry);
    QList<QByteArray> additions;
    const std::pair<QByteArray, QByteArray> wanted[] = {
        {"Type", "Application"},         {"Name", "Zenlot"},    {kExec, exec},
        {"Icon", "dev.quorvane.zenlot"}, {"Terminal", "false"}, {kGnomeEnabled, "true"},
    };
    for (const auto& [key, value] : wanted) {
        if (!entry.has(kEntryGroup, key) ||
            (key == kGnomeEnabled && entry.isFalse(kEntryGroup, key)) ||
            (key == kExec && isExecReplaced))
            additions.append(key + '=' + value);
    }

    QList<QByteArray> lines;
    bool isInGroup = false;
    bool isHeaderFound = false;
    for (const QByteArray& line : text.split('\n')) {
        // As KeyFile reads it: what lacks its bracket begins no group.
        const QByteArray trimmed = line.trimmed();
        if (trimmed.startsWith('[') && trimmed.endsWith(']'))
            isInGroup = trimmed == kGroupLine;
        const KeyFile only(isInGroup ? kGroupLine + ('\n' + line) : QByteArray());
        if (isSwitchedOff(only) || (isExecReplaced && only.has(kEntryGroup, kExec)))
            continue;
        lines.append(line);
        if (isInGroup && !std::exchange(isHeaderFound, true))
            lines.append(additions);
    }
    if (!isHeaderFound) {
        if (lines.last().isEmpty())
            lines.removeLast();
        lines.append(kGroupLine);
        lines.append(additions);
        lines.append(QByteArray());
    }
    return lines.join('\n');
}

// What can't stand in front of the arguments of an Exec key, or in a path at all.
bool isUsableProgram(const QString& program) {
    return program.startsWith(u'/') && !program.contains(u'=') && !program.contains(QChar(u'\0'));
}

// One attempt to write the enabled entry. Changed meanwhile means that it is worth another.
Replacement enableEntry(const QString& path, const QByteArray& exec) {
    const UserFile file = readUserFile(path, kMaximumEntryBytes);
    if (file.state == UserFile::State::unusable)
        return {Replacement::Outcome::failed, file.reason};
    if (file.state == UserFile::State::tooLarge)
        return {Replacement::Outcome::failed, u"File too large"_s};
    if (statusOf(file.content) == AppServiceStatus::enabled && !isOutdated(KeyFile(file.content)))
        return {Replacement::Outcome::done, QString()};
    const QByteArray entry = enabledEntry(file.content, exec);
    if (statusOf(entry) != AppServiceStatus::enabled)
        return {Replacement::Outcome::failed, u"The entry there starts no program"_s};
    return replaceUserFile(path, file, entry);
}

} // namespace

AutostartAppService::AutostartAppService(const QString& configHome, QString program,
                                         QByteArray option)
    : entryPath_(configHome + u"/autostart/dev.quorvane.zenlot.desktop"_s),
      program_(std::move(program)), option_(std::move(option)) {}

AppServiceStatus AutostartAppService::status() const {
    const UserFile file = readUserFile(entryPath_, kMaximumEntryBytes);
    switch (file.state) {
    case UserFile::State::missing:
        return AppServiceStatus::notRegistered;
    case UserFile::State::read:
        return statusOf(file.content);
    default:
        return AppServiceStatus::notFound;
    }
}

std::optional<AppServiceError> AutostartAppService::registerService() {
    if (!isUsableProgram(program_))
        return errorOf(AutostartError::invalidProgram,
                       u"Cannot start this program at login: %1"_s.arg(program_));
    const auto cannotWrite = [this](const QString& reason) {
        return errorOf(AutostartError::cannotWrite,
                       u"Cannot write %1: %2"_s.arg(entryPath_, reason));
    };
    if (const std::error_code error = makePrivateDirectories(QFileInfo(entryPath_).absolutePath()))
        return cannotWrite(QString::fromStdString(error.message()));
    QByteArray exec = desktopEntryExec(program_);
    if (!option_.isEmpty())
        exec += ' ' + option_;
    Replacement replacement{Replacement::Outcome::changedMeanwhile, QString()};
    for (int attempt = 0; attempt < kMostAttemptsToWrite; ++attempt) {
        replacement = enableEntry(entryPath_, exec);
        if (replacement.outcome != Replacement::Outcome::changedMeanwhile)
            break;
    }
    if (replacement.outcome == Replacement::Outcome::changedMeanwhile)
        return cannotWrite(u"Another program keeps changing it"_s);
    if (replacement.outcome == Replacement::Outcome::failed)
        return cannotWrite(replacement.reason);
    return std::nullopt;
}

std::optional<AppServiceError> AutostartAppService::unregisterService() {
    if (status() != AppServiceStatus::enabled ||
        ::unlink(QFile::encodeName(entryPath_).constData()) == 0 || errno == ENOENT)
        return std::nullopt;
    return errorOf(AutostartError::cannotRemove,
                   u"Cannot remove %1: %2"_s.arg(
                       entryPath_, QString::fromStdString(std::system_category().message(errno))));
}

QByteArray desktopEntryExec(const QString& program) {
    QByteArray exec = "\"";
    for (const char character : program.toUtf8()) {
        switch (character) {
        // First the quoting of an argument, then that of a string in a desktop entry, which
        // doubles every backslash again.
        case '"':
        case '`':
        case '$':
            exec.append("\\\\").append(character);
            break;
        case '\\':
            exec.append("\\\\\\\\");
            break;
        case '\n':
            exec.append("\\n");
            break;
        case '\t':
            exec.append("\\t");
            break;
        case '\r':
            exec.append("\\r");
            break;
        case '%': // would start a field code
            exec.append("%%");
            break;
        default:
            exec.append(character);
        }
    }
    return exec + '"';
}

} // namespace zenlot
