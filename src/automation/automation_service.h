// What zenlot-automation offers on the session bus, all at /dev/quorvane/zenlot/Automation:
//
//     dev.quorvane.zenlot.Automation   CheckPort(x port) -> s sentence
//     org.gnome.Shell.SearchProvider2  the search of GNOME
//     org.kde.krunner1                 the search of KDE
//
// Each search has one line for a text that asks for a port. Choosing it opens the main window on
// that port. Nothing here changes anything, and no process is ever ended from here.
//
// The program is started by the bus when somebody asks and ends itself when nobody has for a while,
// though never while a question is open. It gives its name back first: from then on the bus starts
// another one for who asks by name. Who still knows this one by its number is answered for a moment
// longer.
//
// Main thread only, which waits neither for a lookup nor for the bus.
#pragma once

#include "automation/port_answers.h"

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QVariant>

#include <chrono>
#include <functional>
#include <optional>

QT_FORWARD_DECLARE_CLASS(QDBusMessage)

namespace zenlot {

inline constexpr QLatin1StringView kAutomationBusName{"dev.quorvane.zenlot.Automation"};
inline constexpr QLatin1StringView kAutomationPath{"/dev/quorvane/zenlot/Automation"};

// What the searches show beside the answer.
inline constexpr QLatin1StringView kAutomationIconName{"dev.quorvane.zenlot"};

// More than a search has room for; a name has at most 256 characters, so one always fits.
inline constexpr qsizetype kLongestAnswerLine = 1024;

struct AutomationTimes {
    std::chrono::milliseconds idle{std::chrono::seconds{30}};    // without a question
    std::chrono::milliseconds farewell{std::chrono::seconds{1}}; // and without the name
};

class AutomationService final : public QObject {
    Q_OBJECT

  public:
    // `answers` must outlive the object.
    AutomationService(QDBusConnection bus, PortAnswers& answers, AutomationTimes times = {});

    // Takes the name on the bus. False when it can't be had.
    bool start();

    // What people say or type in their language.
    static QStringList phrases();

    // What the text asks for, or the words that a search has split it into; none when it is about
    // something else.
    static std::optional<PortQuery> queryFrom(const QString& text);
    static std::optional<PortQuery> queryFrom(const QStringList& words);

    // Answers the call with what `resultFrom` makes of the sentences, one for each query, when they
    // are known. A query without a port is answered by the question for one. Too many calls at once
    // are refused.
    void reply(const QDBusMessage& call, const QList<PortQuery>& queries,
               std::function<QVariant(const QStringList& dialogs)> resultFrom);

    // Opens the main window: on that port, or with an empty field when there is none. The token is
    // what the desktop gave for the new window to take the keyboard; it may be empty.
    void openMainWindow(const PortQuery& query, const QString& activationToken);

    // Somebody asked what could be answered at once: the program stays for another while.
    void noteUse();

  Q_SIGNALS:
    // Nobody needs the program any more, or the bus is gone.
    void finished();

  private:
    void beginCall();
    void endCall();
    void handleTimeout();

    QDBusConnection bus_;
    PortAnswers& answers_;
    AutomationTimes times_;
    QTimer timer_; // runs while no call is open
    int openCalls_{0};
    bool isLeaving_{false};
};

} // namespace zenlot
