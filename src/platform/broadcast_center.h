// Named signals between the programs of one user's session. A signal carries its name and nothing
// else: whoever hears it looks up for itself what has changed.
//
// Everything here belongs to the main thread, and nothing waits for the service that carries the
// signals. A signal reaches every program that observes its name, the one that posted it too;
// handlers are called from the event loop, never from within post(). An observation holds for
// every later post of this program; for those of others it begins a moment later, so an observer
// looks once by itself. Without a service nothing is delivered and nothing complains.
//
//     broadcasts.observe(name, Meaning::readAnew, this, [this](const QString&) { reload(); });
//     broadcasts.post(name);
//
// A name means one of two things. Most say that something is to be read anew: whoever posts one
// does no more than make others look, so anybody may. Some are events, which are all there is to
// know: those count only when they come from the program that they are the business of, as long as
// that runs at all, and one that was missed is past.
//
// Names consist of ASCII letters, digits, dots, hyphens and underscores.
#pragma once

#include <QString>

#include <cstdint>
#include <functional>

QT_FORWARD_DECLARE_CLASS(QObject)

namespace zenlot {

class BroadcastCenter {
  public:
    using Handler = std::function<void(const QString& name)>;

    enum class Meaning : std::uint8_t { readAnew, event };

    BroadcastCenter() = default;
    BroadcastCenter(const BroadcastCenter&) = delete;
    BroadcastCenter& operator=(const BroadcastCenter&) = delete;
    virtual ~BroadcastCenter() = default;

    // Calls the handler for every post of exactly this name; for one that means to read anew, also
    // when posts may have been missed. The registration ends with `context` or with the center,
    // whichever goes first.
    virtual void observe(const QString& name, Meaning meaning, QObject* context,
                         Handler handler) = 0;

    virtual void post(const QString& name) = 0;

    // Waits until what was posted has left the program, for half a second at the most. For its end.
    virtual void settle() = 0;
};

} // namespace zenlot
