// The preferences as one JSON object in a file, which the user and other programs may edit too.
//
// The file is read and written by a worker, so nobody waits for the disk. What was read last
// counts; it is read at the start, by each change, and whenever somebody asks for that. A change is
// visible at once and soon written: all changes of one turn of the event loop together, atomically,
// and only where the file does not say so already. Keys that are unknown here survive. What could
// not be written, be it that the disk is full or that something other than a readable regular file
// stands at the path, is tried again until it is.
//
// Of a file that is damaged (cut short, not UTF-8, nested deeper than 128 levels) counts what can
// be read before the damage, of one above 8 MiB nothing. It is moved to the same name with
// ".damaged" behind it, and what could be read is written anew: at once when the damage is there at
// the start, else with the next change.
//
// Belongs to one thread, with an event loop.
//
//     JsonUserDefaults defaults(home.configHome + "/dev.quorvane.zenlot/defaults.json");
//     const QFuture<void> reading = defaults.read();
//     co_await reading;
#pragma once

#include "platform/user_defaults.h"
#include "workers/worker_threads.h"

#include <QFuture>
#include <QFutureWatcher>
#include <QMap>
#include <QObject>
#include <QTimer>
#include <QVariantMap>

#include <chrono>
#include <mutex>

namespace zenlot {

class JsonUserDefaults final : public QObject, public UserDefaults {
    Q_OBJECT

  public:
    static constexpr std::chrono::milliseconds kBetweenTries{5000};

    explicit JsonUserDefaults(QString path, std::chrono::milliseconds betweenTries = kBetweenTries);
    // Settles.
    ~JsonUserDefaults() override;

    // Reads the file anew.
    QFuture<void> read();

    std::optional<QVariant> object(const QString& key) const override;
    void remove(const QString& key) override;

    // What the user should know of the file.
    bool isUnwritten() const { return isUnwritten_; } // some change could not be kept so far
    bool wasDamaged() const { return wasDamaged_; }   // when it was first read

    // Waits until everything has been read and all that can be written is.
    void settle();

  Q_SIGNALS:
    void troubleChanged();

  private:
    using Changes = QMap<QString, std::optional<QVariant>>; // by key; none takes it out

    void store(const QString& key, const QVariant& value) override;
    bool readFile();
    bool writeFile(const Changes& changes);
    void know(QVariantMap values);
    void change(const QString& key, const std::optional<QVariant>& value);
    void finishFirstReading();
    void beginWriting();
    void finishWriting();
    void noteOutcome(bool isDone);

    QString path_;
    mutable std::mutex mutex_;
    QVariantMap known_; // of the file, without nulls; under the mutex
    QFutureWatcher<bool> firstReading_;
    Changes unwritten_;
    Changes beingWritten_;
    QFutureWatcher<bool> writing_;
    QTimer next_;
    std::chrono::milliseconds betweenTries_;
    bool isFirstRead_{false};
    bool isWriting_{false};
    bool isUnwritten_{false};
    bool wasDamaged_{false};
    WorkerThreads writer_{1}; // the last member
};

} // namespace zenlot
