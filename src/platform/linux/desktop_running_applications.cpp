#include "platform/linux/desktop_running_applications.h"

#include "platform/linux/folder_stamps.h"
#include "platform/linux/user_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QList>
#include <QLocale>

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
constexpr int kMostAncestors = 32;

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

// What the fourth and later fields of /proc/PID/stat say. The name before them may hold anything.
struct Kinship {
    qint64 parent{0};
    qint64 session{0};
    bool hasTerminal{false};
};

Kinship kinshipIn(const QByteArray& stat) {
    const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    return {fields.value(1).toLongLong(), fields.value(3).toLongLong(),
            fields.value(4).toLongLong() != 0};
}

// The text between two others; empty when it does not begin with the first.
QString between(const QString& text, const QString& prefix, QChar end) {
    return text.startsWith(prefix) ? text.mid(prefix.size()).section(end, 0, 0) : QString();
}

// "app-flatpak-org.example.Editor-123.scope"
QString flatpakOfUnit(const QString& unit) {
    return unit.endsWith(u".scope"_s) ? between(unit, u"app-flatpak-"_s, u'\0').section(u'-', 0, -2)
                                      : QString();
}

// "snap.editor.editor-6c3f….scope", and the same of services
QString snapOfUnit(const QString& unit) {
    return between(unit, u"snap."_s, u'.');
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

struct DesktopRunningApplications::Process {
    QString folder; // its own below /proc
    QString executable;
    QString unit;
    Kinship kinship;
};

struct DesktopRunningApplications::Index {
    FolderStamps folders;
    QHash<QString, Application> byIdentifier;
    QHash<QString, QString> identifierByProgram; // of the entry that suits best
    QHash<QString, QString> identifierByFolder;  // the same for /opt/NAME

    const Application* applicationOf(const QString& executable, const QString& unit) const;
    OwningApplication owner(const Application& application) const;
    OwningApplication ownerCalled(const QString& key, const QStringList& identifiers,
                                  const QString& name) const;

    void addFolder(const QString& folder, const QString& prefix,
                   const QStringList& programDirectories, int depth);
    void add(const QString& file, const QString& identifier, const QStringList& programDirectories);
    void addPrograms();
};

namespace {

// "/opt/editor" for what lies in it; empty elsewhere.
QString folderOfPackage(const QString& executable) {
    const QString name = between(executable, u"/opt/"_s, u'/');
    const QString folder = u"/opt/"_s + name;
    return name.isEmpty() || folder == executable ? QString() : folder;
}

// Where an AppImage is mounted while it runs; empty for what lies elsewhere.
QString mountOfImage(const QString& executable) {
    const qsizetype start = executable.indexOf(u"/.mount_"_s);
    return start < 0 ? QString() : executable.left(executable.indexOf(u'/', start + 1));
}

// The file of the image, as its runtime tells what it starts; empty when it does not.
QString fileOfImage(const QByteArray& environment) {
    for (const QByteArray& variable : environment.split('\0')) {
        if (variable.startsWith("APPIMAGE=/"))
            return QString::fromUtf8(variable.mid(9));
    }
    return {};
}

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
    const std::optional<DesktopEntry> entry = parseDesktopEntry(content.content, QLocale().name());
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
    const auto offerAs = [&](QHash<QString, QString>& identifiers, const QString& key,
                             const Application& application) {
        if (key.isEmpty())
            return;
        QString& best = identifiers[key];
        if (best.isEmpty() || rank(application) < rank(*byIdentifier.constFind(best)))
            best = application.identifier;
    };
    const auto offer = [&](const QString& program, const Application& application) {
        offerAs(identifierByProgram, program, application);
    };
    for (const Application& application : std::as_const(byIdentifier)) {
        for (const QString& program : {application.program, application.entry.program})
            offerAs(identifierByFolder, folderOfPackage(program), application);
        if (!application.entry.isInterpreted)
            offer(application.program, application);
        if (application.triedProgram != application.program)
            offer(application.triedProgram, application);
    }
}

const Application* DesktopRunningApplications::Index::applicationOf(const QString& executable,
                                                                    const QString& unit) const {
    const auto runs = [&](const QString& identifier) {
        const auto found = byIdentifier.constFind(identifier);
        return found != byIdentifier.constEnd() && found->runs(executable);
    };
    QString identifier = identifierByProgram.value(executable);
    const QStringList named = desktopEntriesOfUnit(unit);
    if (const auto found = std::ranges::find_if(named, runs); found != named.end())
        identifier = *found;
    const auto found = byIdentifier.constFind(identifier);
    return found == byIdentifier.constEnd() ? nullptr : &*found;
}

OwningApplication DesktopRunningApplications::Index::owner(const Application& application) const {
    const DesktopEntry& entry = application.entry;
    return {application.identifier, entry.name.isEmpty() ? application.identifier : entry.name,
            entry.icon};
}

// That of the first of these entries that there is, else one without a picture.
OwningApplication DesktopRunningApplications::Index::ownerCalled(const QString& key,
                                                                 const QStringList& identifiers,
                                                                 const QString& name) const {
    for (const QString& identifier : identifiers) {
        const auto found = byIdentifier.constFind(identifier);
        if (found != byIdentifier.constEnd() && !found->entry.name.isEmpty())
            return owner(*found);
    }
    return {key, name, {}};
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

// None when its program can't be told.
std::optional<DesktopRunningApplications::Process>
DesktopRunningApplications::process(qint64 pid) const {
    const QString folder = u"%1/%2"_s.arg(procRoot_).arg(pid);
    const QString executable = pid > 0 ? executableOf(folder) : QString();
    if (executable.isEmpty())
        return std::nullopt;
    return Process{folder, executable, unitOfCgroup(contentOf(folder + u"/cgroup"_s)),
                   kinshipIn(contentOf(folder + u"/stat"_s))};
}

std::optional<RunningApplication> DesktopRunningApplications::applicationWithPid(qint64 pid) const {
    const std::optional<Process> found = process(pid);
    if (!found)
        return std::nullopt;
    const std::shared_ptr<const Index> index = currentIndex();
    const Application* const application = index->applicationOf(found->executable, found->unit);
    if (!application)
        return std::nullopt;
    return RunningApplication{application->identifier, std::nullopt, found->executable,
                              application->entry.icon, !application->entry.isDisplayed};
}

std::optional<OwningApplication> DesktopRunningApplications::applicationOwning(qint64 pid) const {
    const std::optional<Process> found = process(pid);
    if (!found)
        return std::nullopt;
    const std::shared_ptr<const Index> index = currentIndex();
    const QString& executable = found->executable;
    const auto isPart = [&](const QString& package, const QString& ownFolder) {
        return !package.isEmpty() &&
               (!found->kinship.hasTerminal || executable.startsWith(ownFolder));
    };
    if (const QString package = flatpakOfUnit(found->unit); isPart(package, u"/app/"_s))
        return index->ownerCalled(package, {package}, package.section(u'.', -1));
    const QString unitsSnap = snapOfUnit(found->unit);
    const QString ownSnap = between(executable, u"/snap/"_s, u'/');
    if (const QString snap =
            ownSnap.isEmpty() && isPart(unitsSnap, u"/snap/"_s) ? unitsSnap : ownSnap;
        !snap.isEmpty())
        return index->ownerCalled(u"snap."_s + snap, {snap + u'_' + snap, snap}, snap);
    if (const QString mount = mountOfImage(executable); !mount.isEmpty()) {
        const QString file = fileOfImage(contentOf(found->folder + u"/environ"_s));
        return OwningApplication{
            file.isEmpty() ? mount : file,
            QFileInfo(file.isEmpty() ? mount.section(u".mount_"_s, 1) : file).completeBaseName(),
            {}};
    }
    if (const Application* application = index->applicationOf(executable, found->unit))
        return index->owner(*application);
    if (const QString folder = folderOfPackage(executable); !folder.isEmpty())
        return index->ownerCalled(folder, {index->identifierByFolder.value(folder)},
                                  folder.section(u'/', -1));
    if (desktopEntriesOfUnit(found->unit).isEmpty())
        return std::nullopt;
    qint64 next = found->kinship.parent;
    for (int step = 0; step < kMostAncestors; ++step) {
        const std::optional<Process> ancestor = process(next);
        if (!ancestor || ancestor->unit != found->unit ||
            ancestor->kinship.session != found->kinship.session)
            return std::nullopt;
        if (const Application* application =
                index->applicationOf(ancestor->executable, ancestor->unit))
            return index->owner(*application);
        next = ancestor->kinship.parent;
    }
    return std::nullopt;
}

} // namespace zenlot
