// What the entry of an application in the desktop's menus says about its program.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace zenlot {

struct DesktopEntry {
    QString icon;
    QString program;      // of Exec, as written; empty when there is none
    QString triedProgram; // of TryExec, as written; empty when there is none
    // Exec gives the program something to run that is no option and no file of the user's, as
    // an interpreter gets its script: other processes of that program are not this application.
    bool isInterpreted{false};
    bool isHidden{false};   // deleted by the user
    bool isDisplayed{true}; // stands in menus
    bool isInTerminal{false};
    QString name{}; // in the user's language, if the entry has it

    friend bool operator==(const DesktopEntry&, const DesktopEntry&) = default;
};

// None when the text is no entry of an application. The locale is called as in "de_AT".
std::optional<DesktopEntry> parseDesktopEntry(const QByteArray& content,
                                              const QString& locale = {});

// The words of an Exec value by its own rules of quoting, field codes left out.
QStringList wordsOfExec(const QString& value);

// The identifiers of desktop entries that the name of a systemd unit may stand for, the most likely
// first: app[-LAUNCHER]-IDENTIFIER[-RANDOM].scope or app[-LAUNCHER]-IDENTIFIER[@RANDOM].service,
// each part escaped on its own. Some launchers leave hyphens in identifiers as they are, hence the
// many; none for a unit that is no application's.
QStringList desktopEntriesOfUnit(const QString& unit);

// The innermost scope or service in /proc/PID/cgroup; empty when there is none.
QString unitOfCgroup(const QByteArray& content);

} // namespace zenlot
