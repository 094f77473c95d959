// The preferences as one JSON object in a file, which the user and other programs may edit too.
//
// Every reading reads the file, so an edit from outside counts at once and survives, as do keys
// that are unknown here. A change is visible at once and written by a worker: all changes of one
// turn of the event loop together, atomically, and only where the file does not say so already.
// What could not be written, be it that the disk is full or that something other than a readable
// regular file stands at the path, is tried again until it is.
//
// Of a file that is damaged (cut short, not UTF-8, nested deeper than 128 levels) counts what can
// be read before the damage, of one above 8 MiB nothing. It is moved to the same name with
// ".damaged" behind it, and what could be read is written anew: at once when the damage is there at
// the start, else with the next change.
//
// Belongs to one thread, with an event loop.
//
//     JsonUserDefaults defaults(home.configHome + "/dev.quorvane.zenlot/defaults.json");
#pragma once

#include "platform/user_defaults.h"
#include "workers/worker_threads.h"

#include <QFutureWatcher>
#include <QMap>
#include <QObject>
#include <QTimer>

#include <chrono>

namespace zenlot {

class JsonUserDefaults final : public QObject, public UserDefaults {
    Q_OBJECT

  public:
    static constexpr std::chrono::milliseconds kBetweenTries{5000};

    explicit JsonUserDefaults(QString path, std::chrono::milliseconds betweenTries = kBetweenTries);
    // Writes what is not written yet.
    ~JsonUserDefaults() override;

    std::optional<QVariant> object(const QString& key) const override;
    void remove(const QString& key) override;

    // What the user should know of the file.
    bool isUnwritten() const { return isUnwritten_; } // some change could not be kept so far
    bool wasDamaged() const { return wasDamaged_; }

    // Waits until everything that can be written is.
    void write();

  Q_SIGNALS:
    void troubleChanged();

  private:
    using Changes = QMap<QString, std::optional<QVariant>>; // by key; none takes it out

    void store(const QString& key, const QVariant& value) override;
    void change(const QString& key, const std::optional<QVariant>& value);
    void beginWriting();
    void finishWriting();

    QString path_;
    Changes unwritten_;
    Changes beingWritten_;
    QFutureWatcher<bool> writing_;
    QTimer next_;
    std::chrono::milliseconds betweenTries_;
    bool isWriting_{false};
    bool isUnwritten_{false};
    bool wasDamaged_{false};
    WorkerThreads writer_{1}; // the last member
};

} // namespace zenlot
