#include "platform/linux/desktop_running_applications.h"

#include "platform/linux/folder_stamps.h"
#include "platform/linux/user_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QList>

#include <unistd.h>

#include <algorithm>
#include <climits>
#include <tuple>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr qint64 kMaximumMenuEntryBytes = qint64{1} * 1024 * 1024;
constexpr qint64 kMaximumCgroupBytes = qint64{64} * 1024;
constexpr int kDeepestFolder = 4;

// As the kernel gives it; empty when the process is gone or belongs to somebody else.
QString executableOf(const QString& processFolder) {
    QByteArray target(PATH_MAX, '\0');
    const ssize_t length = ::readlink(QFile::encodeName(processFolder + u"/exe"_s).constData(),
                                      target.data(), static_cast<std::size_t>(target.size()));
    if (length <= 0)
        return {};
    QString path = QFile::decodeName(target.left(length));
    const QLatin1String mark(" (deleted)");
    if (path.endsWith(mark) && !QFile::exists(path))
        path.chop(mark.size());
    return path;
}

// Files of /proc have no size, so they are read up to a bound.
QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(kMaximumCgroupBytes) : QByteArray();
}

struct Application {
    QString identifier;
    DesktopEntry entry;
    QString program;      // where the entry's program really is; empty when nowhere
    QString triedProgram; // the same for TryExec

    bool runs(const QString& executable) const {
        return executable == program || executable == triedProgram;
    }
};

} // namespace

struct DesktopRunningApplications::Index {
    FolderStamps folders;
    QHash<QString, Application> byIdentifier;
    QHash<QString, QString> identifierByProgram; // of the entry that suits best

    void addFolder(const QString& folder, const QString& prefix,
                   const QStringList& programDirectories, int depth);
    void add(const QString& file, const QString& identifier, const QStringList& programDirectories);
    void addPrograms();
};

namespace {

// Without links on the way; empty when there is no such file.
QString placeOfProgram(const QString& program, const QStringList& directories) {
    if (program.isEmpty())
        return {};
    if (program.contains(u'/'))
        return QDir::isAbsolutePath(program) ? QFileInfo(program).canonicalFilePath() : QString();
    for (const QString& directory : directories) {
        const QFileInfo info(directory + u'/' + program);
        if (info.isFile() && info.isExecutable())
            return info.canonicalFilePath();
    }
    return {};
}

} // namespace

void DesktopRunningApplications::Index::addFolder(const QString& folder, const QString& prefix,
                                                  const QStringList& programDirectories,
                                                  int depth) {
    folders.add(folder);
    const QFileInfoList infos = QDir(folder).entryInfoList(
        QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot, QDir::Name | QDir::DirsLast);
    for (const QFileInfo& info : infos) {
        if (info.isDir() && depth < kDeepestFolder) {
            addFolder(info.filePath(), prefix + info.fileName() + u'-', programDirectories,
                      depth + 1);
        } else if (info.suffix() == QLatin1String("desktop")) {
            add(info.filePath(), prefix + info.completeBaseName(), programDirectories);
        }
    }
}

void DesktopRunningApplications::Index::add(const QString& file, const QString& identifier,
                                            const QStringList& programDirectories) {
    // The first entry of a name hides the others, even when it can't be used.
    if (byIdentifier.contains(identifier))
        return;
    Application& application = byIdentifier[identifier];
    application.identifier = identifier;
    const UserFile content = readUserFile(file, kMaximumMenuEntryBytes);
    const std::optional<DesktopEntry> entry = parseDesktopEntry(content.content);
    if (!entry || entry->isHidden || entry->isInTerminal)
        return;
    application.entry = *entry;
    application.program = placeOfProgram(entry->program, programDirectories);
    application.triedProgram = placeOfProgram(entry->triedProgram, programDirectories);
}

void DesktopRunningApplications::Index::addPrograms() {
    const auto rank = [](const Application& application) {
        return std::tuple(!application.entry.isDisplayed, application.identifier);
    };
    const auto offer = [&](const QString& program, const Application& application) {
        if (program.isEmpty())
            return;
        QString& best = identifierByProgram[program];
        if (best.isEmpty() || rank(application) < rank(*byIdentifier.constFind(best)))
            best = application.identifier;
    };
    for (const Application& application : std::as_const(byIdentifier)) {
        if (!application.entry.isInterpreted)
            offer(application.program, application);
        if (application.triedProgram != application.program)
            offer(application.triedProgram, application);
    }
}

DesktopRunningApplications::DesktopRunningApplications(QStringList dataDirectories,
                                                       QStringList programDirectories,
                                                       QString procRoot)
    : dataDirectories_(std::move(dataDirectories)),
      programDirectories_(std::move(programDirectories)), procRoot_(std::move(procRoot)) {}

DesktopRunningApplications::~DesktopRunningApplications() = default;

std::shared_ptr<const DesktopRunningApplications::Index>
DesktopRunningApplications::currentIndex() const {
    const std::scoped_lock lock(mutex_);
    if (!index_ || !index_->folders.areCurrent()) {
        auto index = std::make_shared<Index>();
        for (const QString& directory : dataDirectories_) {
            index->addFolder(directory + u"/applications"_s, QString(), programDirectories_, 0);
        }
        index->addPrograms();
        index_ = std::move(index);
    }
    return index_;
}

std::optional<RunningApplication> DesktopRunningApplications::applicationWithPid(qint64 pid) const {
    const QString folder = u"%1/%2"_s.arg(procRoot_).arg(pid);
    const QString executable = executableOf(folder);
    if (pid <= 0 || executable.isEmpty())
        return std::nullopt;
    const std::shared_ptr<const Index> index = currentIndex();
    const auto runs = [&](const QString& identifier) {
        const auto found = index->byIdentifier.constFind(identifier);
        return found != index->byIdentifier.constEnd() && found->runs(executable);
    };

    QString identifier = index->identifierByProgram.value(executable);
    const QStringList named = desktopEntriesOfUnit(unitOfCgroup(contentOf(folder + u"/cgroup"_s)));
    if (const auto found = std::ranges::find_if(named, runs); found != named.end())
        identifier = *found;
    if (identifier.isEmpty())
        return std::nullopt;

    const DesktopEntry& entry = index->byIdentifier.constFind(identifier)->entry;
    return RunningApplication{identifier, std::nullopt, executable, entry.icon, !entry.isDisplayed};
}

} // namespace zenlot
