// What the icon views of one QML engine work with: the services of the desktop, the threads on
// which icons are found, and the pictures that were decoded.
//
// The program that makes an engine installs a provider in it, once, before it loads QML with icons:
//
//     QQmlApplicationEngine engine;
//     ProcessIconProvider::install(engine, runningApplications, workspace);
//
// From then on ProcessIconView and FileIconView work in that engine without being handed anything;
// they find the provider by the engine that made them. An engine without one shows the network
// symbol everywhere. The engine owns the provider; the services must outlive the engine.
//
// Finding an icon and decoding its picture happens on two threads of the provider's own, so that
// icons don't wait for scans. Pictures are kept, by file, size and corners, in at most 8 MiB.
#pragma once

#include "platform/running_applications.h"
#include "platform/workspace.h"
#include "workers/worker_threads.h"

#include <QCache>
#include <QImage>
#include <QMutex>
#include <QQuickImageProvider>
#include <QUrl>

QT_FORWARD_DECLARE_CLASS(QQmlEngine)

namespace zenlot {

// How an icon will be shown.
struct IconFrame {
    QString theme; // the icon theme
    int sizeInPixels{0};
    double cornerRadius{0}; // as a share of the size
};

class ProcessIconProvider : public QQuickImageProvider {
    Q_OBJECT

  public:
    static void install(QQmlEngine& engine, const RunningApplications& runningApplications,
                        const Workspace& workspace);

    // The provider of the engine that made the object; null when it has none.
    static const ProcessIconProvider* providerFor(const QObject* object);

    ~ProcessIconProvider() override;

    // The image to show, which is decoded by then; empty when there is none. They read the disk
    // and belong on workers().
    QUrl iconOfProcess(qint64 pid, const QString& executablePath, const IconFrame& frame) const;
    QUrl iconOfFile(const QString& path, const IconFrame& frame) const;
    QUrl iconNamed(const QString& icon, const IconFrame& frame) const;

    WorkerThreads& workers() const { return workers_; }

    // Called by the engine on a thread of its own.
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;

  private:
    ProcessIconProvider(const RunningApplications& runningApplications, const Workspace& workspace);

    QUrl imageOfPicture(const QString& file, const IconFrame& frame) const;
    QImage image(const QString& file, int sizeInPixels, double cornerRadius) const;

    const RunningApplications& runningApplications_;
    const Workspace& workspace_;
    mutable QMutex mutex_;
    mutable QCache<QString, QImage> images_; // guarded by the mutex; costs are bytes
    mutable WorkerThreads workers_{2}; // the last member, so that it ends before what its work uses
};

} // namespace zenlot
