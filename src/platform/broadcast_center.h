// Named signals between the programs of one user's session. A signal carries its name and nothing
// else: whoever hears it looks up for itself what has changed.
//
// Everything here belongs to the main thread, and nothing waits for the service that carries the
// signals. A signal reaches every program that observes its name, the one that posted it too;
// handlers are called from the event loop, never from within post(). An observation holds for
// every later post of this program; for those of others it begins a moment later, so an observer
// looks once by itself. Without a service nothing is delivered and nothing complains.
//
//     broadcasts.observe(name, this, [this](const QString&) { reload(); });
//     broadcasts.post(name);
//
// Names consist of ASCII letters, digits, dots, hyphens and underscores.
#pragma once

#include <QString>

#include <functional>

QT_FORWARD_DECLARE_CLASS(QObject)

namespace zenlot {

class BroadcastCenter {
  public:
    using Handler = std::function<void(const QString& name)>;

    BroadcastCenter() = default;
    BroadcastCenter(const BroadcastCenter&) = delete;
    BroadcastCenter& operator=(const BroadcastCenter&) = delete;
    virtual ~BroadcastCenter() = default;

    // Calls the handler for every post of exactly this name. The registration ends with `context`
    // or with the center, whichever goes first.
    virtual void observe(const QString& name, QObject* context, Handler handler) = 0;

    virtual void post(const QString& name) = 0;

    // Waits until what was posted has left the program, for half a second at the most. For its end.
    virtual void settle() = 0;
};

} // namespace zenlot
