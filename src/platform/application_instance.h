// One running program for each user's session. Whoever starts it again reaches the one that runs:
// the second start hands over what it was asked to open and ends.
//
//     switch (instance.start(urisAmong(arguments), activationFromEnvironment())) {
//     case StartOutcome::handedOver:
//         return 0;
//     ...
//     instance.setHandlers(this, {.activate = ..., .open = ...});
//
// Everything here belongs to the main thread. start() waits for the other program, for a bounded
// time; handlers are called from the event loop.
#pragma once

#include "platform/activation.h"

#include <QStringList>

#include <functional>

QT_FORWARD_DECLARE_CLASS(QObject)

namespace zenlot {

enum class StartOutcome {
    first,       // this is the program that later starts will reach
    alone,       // nothing tells whether there are others: go on, unreachable for now
    handedOver,  // another one runs and has taken the request: end
    notAnswered, // another one runs but does not answer: tell the user and end
};

class ApplicationInstance {
  public:
    // What other programs want. Their URIs are not checked.
    struct Handlers {
        std::function<void(const Activation&)> activate; // show the window
        std::function<void(const QStringList& uris, const Activation&)> open;
        // Show what holds this port, which is not checked either.
        std::function<void(qint64 port, const Activation&)> checkPort;
    };

    ApplicationInstance() = default;
    ApplicationInstance(const ApplicationInstance&) = delete;
    ApplicationInstance& operator=(const ApplicationInstance&) = delete;
    virtual ~ApplicationInstance() = default;

    // To be called once. URIs that are not handed over reach the own handler, with an empty
    // activation: that of the own start belongs to the toolkit.
    [[nodiscard]] virtual StartOutcome start(const QStringList& uris,
                                             const Activation& activation) = 0;

    // The handlers hold until `context` ends. Requests that came earlier have been kept for them.
    virtual void setHandlers(QObject* context, Handlers handlers) = 0;
};

// Among the URIs that are handed over, "zenlot:settings" asks for the command of that name. No web
// page can: nothing registers the scheme.
inline constexpr QLatin1StringView kCommandScheme{"zenlot:"};

// With this option of the program nobody has asked to see anything.
inline constexpr QLatin1StringView kBackgroundOption{"--background"};

// Those of a program's arguments that have a scheme, such as "port://8080", and what its options
// ask for. What begins in the background asks for nothing that anybody would see.
QStringList urisAmong(const QStringList& arguments);

} // namespace zenlot
