// What stands in the way of the background monitor, and what the user can do about it. Belongs to
// the main thread. The service is asked when look(), refresh() or recheck() is called, never by
// itself, and on another thread; `changed` tells of the answer.
//
//     BackgroundItemsViewModel items(monitor, [&] { return monitor.unmaskCommand(); }, unit);
#pragma once

#include "platform/app_service.h"
#include "workers/worker_threads.h"

#ifndef Q_MOC_RUN // which can't read the coroutine headers
#include <QCoroTask>
#endif
#include <QObject>
#include <QString>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace zenlot {

class BackgroundItemsViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application owns it")

    Q_PROPERTY(bool isBlocked READ isBlocked NOTIFY changed)
    Q_PROPERTY(bool isAllowed READ isAllowed NOTIFY changed)
    // Nothing is in the way, and still it does not run.
    Q_PROPERTY(bool canTurnOn READ canTurnOn NOTIFY changed)
    // What the service is called on this system.
    Q_PROPERTY(QString unit READ unit CONSTANT)
    Q_PROPERTY(QString headline READ headline NOTIFY changed)
    Q_PROPERTY(QString explanation READ explanation NOTIFY changed)
    Q_PROPERTY(QString statusText READ statusText NOTIFY changed)
    // What to run in a terminal; empty unless it is blocked.
    Q_PROPERTY(QString command READ command NOTIFY changed)
    // What the service said when it could not be turned on; otherwise empty.
    Q_PROPERTY(QString problem READ problem NOTIFY changed)
    // True for a moment after the command was copied.
    Q_PROPERTY(bool isCopied READ isCopied NOTIFY copiedChanged)

  public:
    using UnblockCommand = std::function<QString()>;

    // The service and what the command needs must outlive the object.
    BackgroundItemsViewModel(AppService& monitor, UnblockCommand unblockCommand, QString unit,
                             QObject* parent = nullptr);

    bool isBlocked() const { return status_ == AppServiceStatus::requiresApproval; }
    bool isAllowed() const { return status_ == AppServiceStatus::enabled; }
    bool canTurnOn() const { return status_ == AppServiceStatus::notRegistered; }
    QString unit() const { return unit_; }
    QString headline() const;
    QString explanation() const;
    QString statusText() const;
    QString command() const { return command_; }
    QString problem() const { return problem_; }
    bool isCopied() const { return copied_.isActive(); }

    // Ends when the answer is there.
    QCoro::Task<> look();

    // Asks the service again, on behalf of the window or of the user.
    Q_INVOKABLE void refresh() { look(); }
    Q_INVOKABLE void recheck() { lookAgain(); }
    Q_INVOKABLE void turnOn() { registerMonitor(); }
    // Puts the command on the clipboard.
    Q_INVOKABLE void copyCommand();

  Q_SIGNALS:
    void changed();
    void copiedChanged();

  private:
    struct Finding {
        AppServiceStatus status{AppServiceStatus::notRegistered};
        QString command{};
        QString problem{};
    };

    Finding find() const; // on the worker
    void note(const Finding& finding);
    QCoro::Task<> lookAgain();
    QCoro::Task<> registerMonitor();

    AppService& monitor_;
    UnblockCommand unblockCommand_;
    QString unit_;
    AppServiceStatus status_{AppServiceStatus::notFound};
    bool isStill_{false}; // the user asked again and the answer was the same
    QString command_;
    QString problem_;
    QTimer copied_;
    WorkerThreads worker_{1}; // the last member
};

} // namespace zenlot
