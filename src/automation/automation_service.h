// What zenlot-automation offers on the session bus, all at /dev/quorvane/zenlot/Automation:
//
//     dev.quorvane.zenlot.Automation   CheckPort(x port) -> s sentence
//     org.gnome.Shell.SearchProvider2  the search of GNOME
//     org.kde.krunner1                 the search of KDE
//
// Each search has one line for a text that asks for a port. Choosing it opens the main window on
// that port. Nothing here changes anything, and no process is ever ended from here.
//
// The program is started by the bus when somebody asks and ends itself when nobody has for a while.
#pragma once

#include "automation/port_answers.h"
#include "shell/intents/port_query.h"

#include <QDBusConnection>
#include <QObject>
#include <QTimer>
#include <QVariantMap>

#include <chrono>
#include <optional>

namespace zenlot {

inline constexpr QLatin1StringView kAutomationBusName{"dev.quorvane.zenlot.Automation"};
inline constexpr QLatin1StringView kAutomationPath{"/dev/quorvane/zenlot/Automation"};

class AutomationService final : public QObject {
    Q_OBJECT

  public:
    static constexpr std::chrono::seconds kIdleTime{30};

    // `answers` must outlive the object.
    AutomationService(QDBusConnection bus, PortAnswers& answers,
                      std::chrono::milliseconds idleTime = kIdleTime);

    // Takes the name on the bus. False when it can't be had.
    bool start();

    // What the text asks for, none when it is about something else.
    std::optional<PortQuery> queryFrom(const QString& text) const;

    // Answers the call with what `resultFrom` makes of the sentence for this query, when that is
    // known. A query without a port is answered by the question for one.
    void reply(const QDBusMessage& call, const PortQuery& query,
               std::function<QVariant(const QString& dialog)> resultFrom);

    // Opens the main window: on that port, or with an empty field when there is none. The token is
    // what the desktop gave for the new window to take the keyboard; it may be empty.
    void openMainWindow(const PortQuery& query, const QString& activationToken);

    // Somebody asked: the program stays for another while.
    void noteUse() { idle_.start(); }

  Q_SIGNALS:
    void becameIdle();

  private:
    QDBusConnection bus_;
    PortAnswers& answers_;
    QTimer idle_;
};

} // namespace zenlot
