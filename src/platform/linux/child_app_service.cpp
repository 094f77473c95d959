#include "platform/linux/child_app_service.h"

#include <QFileInfo>

#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

// As the unit of the monitor has it.
constexpr auto kSpan = 60s;
constexpr std::size_t kMostCrashes = 5;

AppServiceError errorOf(ChildError code, const QString& message) {
    return {u"dev.quorvane.zenlot.child"_s, static_cast<qint64>(code), message};
}

} // namespace

ChildAppService::ChildAppService(QString program, QStringList arguments, ChildPatience patience)
    : program_(std::move(program)), arguments_(std::move(arguments)), patience_(patience) {
    child_.setProcessChannelMode(QProcess::ForwardedChannels);
    child_.setStandardInputFile(QProcess::nullDevice());
    child_.setChildProcessModifier([parent = ::getpid()] {
        // Who can't end it any more is killed or has crashed.
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (::getppid() != parent)
            ::_exit(0);
    });
    restart_.setSingleShot(true);
    restart_.setInterval(patience_.beforeRestart);
    kill_.setSingleShot(true);
    kill_.setInterval(patience_.forEnd);
    QObject::connect(&restart_, &QTimer::timeout, &child_, [this] { start(); });
    QObject::connect(&kill_, &QTimer::timeout, &child_, &QProcess::kill);
    QObject::connect(&child_, &QProcess::errorOccurred, &child_, [this](QProcess::ProcessError e) {
        if (e == QProcess::FailedToStart)
            handleEnd(true);
    });
    QObject::connect(&child_, &QProcess::finished, &child_,
                     [this](int code, QProcess::ExitStatus status) {
                         handleEnd(code != 0 || status == QProcess::CrashExit);
                     });
}

ChildAppService::~ChildAppService() {
    isRegistered_ = false;
    if (child_.state() == QProcess::NotRunning)
        return;
    child_.terminate();
    if (!child_.waitForFinished(static_cast<int>(patience_.forEnd.count())))
        child_.kill();
    child_.waitForFinished();
}

AppServiceStatus ChildAppService::status() const {
    return isRegistered_ ? AppServiceStatus::enabled : AppServiceStatus::notRegistered;
}

std::optional<AppServiceError> ChildAppService::registerService() {
    if (const QFileInfo file(program_); !file.isFile() || !file.isExecutable())
        return errorOf(ChildError::cannotRun, tr("%1 cannot be run").arg(program_));
    isRegistered_ = true;
    isGivenUp_ = false;
    QMetaObject::invokeMethod(&child_, [this] { follow(); });
    return std::nullopt;
}

std::optional<AppServiceError> ChildAppService::unregisterService() {
    isRegistered_ = false;
    isGivenUp_ = false;
    QMetaObject::invokeMethod(&child_, [this] { follow(); });
    return std::nullopt;
}

std::optional<AppServiceError> ChildAppService::failure() const {
    if (!isGivenUp_)
        return std::nullopt;
    return errorOf(
        ChildError::hasFailed,
        tr("%1 has ended with a failure again and again").arg(QFileInfo(program_).fileName()));
}

// What was asked for may have changed several times meanwhile.
void ChildAppService::follow() {
    crashes_.clear();
    if (isRegistered_) {
        start();
    } else if (restart_.stop(); child_.state() != QProcess::NotRunning && !kill_.isActive()) {
        child_.terminate();
        kill_.start();
    }
}

void ChildAppService::start() {
    if (isRegistered_ && child_.state() == QProcess::NotRunning)
        child_.start(program_, arguments_, QIODevice::ReadOnly);
}

void ChildAppService::handleEnd(bool isFailure) {
    // Who was told to end, and is wanted again by now, has not failed.
    const bool wasTold = kill_.isActive();
    kill_.stop();
    if (!isRegistered_)
        return;
    if (wasTold) {
        start();
        return;
    }
    if (!isFailure)
        return;
    const auto now = std::chrono::steady_clock::now();
    crashes_.push_back(now);
    while (now - crashes_.front() > kSpan)
        crashes_.pop_front();
    if (crashes_.size() < kMostCrashes)
        restart_.start();
    else
        isGivenUp_ = true;
}

} // namespace zenlot
