#include "shell/processicon/process_icon_provider.h"

#include "shell/processicon/picture_file.h"
#include "shell/processicon/process_icon_rules.h"

#include <QFile>
#include <QMutexLocker>
#include <QPainter>
#include <QPainterPath>
#include <QQmlEngine>

#include <algorithm>
#include <memory>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr QLatin1String kProviderName("processicon");
constexpr QLatin1String kNodePicture(":/qt/qml/Zenlot/Style/images/nodejs.svg");
constexpr int kMaximumCacheBytes = 8 * 1024 * 1024;
constexpr int kLargestSize = 1024; // of an icon

QImage withRoundCorners(const QImage& picture, double radius) {
    QImage image(picture.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(picture);
    painter.drawRoundedRect(image.rect(), radius, radius);
    return image;
}

} // namespace

void ProcessIconProvider::install(QQmlEngine& engine,
                                  const RunningApplications& runningApplications,
                                  const Workspace& workspace) {
    engine.addImageProvider(kProviderName, new ProcessIconProvider(runningApplications, workspace));
}

const ProcessIconProvider* ProcessIconProvider::providerFor(const QObject* object) {
    const QQmlEngine* engine = qmlEngine(object);
    return engine ? qobject_cast<ProcessIconProvider*>(engine->imageProvider(kProviderName))
                  : nullptr;
}

ProcessIconProvider::ProcessIconProvider(const RunningApplications& runningApplications,
                                         const Workspace& workspace)
    : QQuickImageProvider(Image, ForceAsynchronousImageLoading),
      runningApplications_(runningApplications), workspace_(workspace),
      images_(kMaximumCacheBytes) {}

ProcessIconProvider::~ProcessIconProvider() {
    // What still runs there uses this object.
    workers_.clear();
}

QUrl ProcessIconProvider::iconOfProcess(qint64 pid, const QString& executablePath,
                                        const IconFrame& frame) const {
    const auto application = runningApplications_.applicationWithPid(pid);
    if (application && !application->isBackgroundOnly) {
        QUrl image = iconNamed(application->iconName, frame);
        if (!image.isEmpty())
            return image;
    }
    if (isDevRuntime(executablePath))
        return imageOfPicture(kNodePicture, frame);
    return iconNamed(outermostAppIcon(executablePath, workspace_).value_or(QString()), frame);
}

QUrl ProcessIconProvider::iconOfFile(const QString& path, const IconFrame& frame) const {
    return iconNamed(workspace_.iconForFile(path), frame);
}

QUrl ProcessIconProvider::iconNamed(const QString& icon, const IconFrame& frame) const {
    if (icon.isEmpty())
        return {};
    return imageOfPicture(workspace_.pictureOfIcon(icon, frame.theme, frame.sizeInPixels), frame);
}

QUrl ProcessIconProvider::imageOfPicture(const QString& file, const IconFrame& frame) const {
    if (file.isEmpty() || image(file, frame.sizeInPixels, frame.cornerRadius).isNull())
        return {};
    // Paths hold characters that mean something in a URL.
    const QByteArray name =
        file.toUtf8().toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
    return u"image://%1/%2/%3"_s.arg(kProviderName, QString::number(frame.cornerRadius),
                                     QString::fromLatin1(name));
}

QImage ProcessIconProvider::requestImage(const QString& id, QSize* size,
                                         const QSize& requestedSize) {
    const qsizetype slash = id.indexOf(u'/');
    const QString file = QString::fromUtf8(
        QByteArray::fromBase64(id.mid(slash + 1).toLatin1(), QByteArray::Base64UrlEncoding));
    QImage found = image(file, requestedSize.width(), id.left(slash).toDouble());
    *size = found.size();
    return found;
}

QImage ProcessIconProvider::image(const QString& file, int sizeInPixels,
                                  double cornerRadius) const {
    const int pixels = std::clamp(sizeInPixels, 1, kLargestSize);
    const QString key = u"%1/%2/%3"_s.arg(pixels).arg(cornerRadius).arg(file);
    {
        const QMutexLocker lock(&mutex_);
        if (const QImage* known = images_.object(key))
            return *known;
    }
    QFile device(file);
    const QImage picture =
        device.open(QIODevice::ReadOnly) ? decodedPicture(device, pixels) : QImage();
    if (picture.isNull())
        return picture;
    QImage image = withRoundCorners(picture, cornerRadius * pixels);
    const QMutexLocker lock(&mutex_);
    images_.insert(key, new QImage(image), static_cast<int>(image.sizeInBytes()));
    return image;
}

} // namespace zenlot
