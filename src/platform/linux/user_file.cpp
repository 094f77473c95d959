#include "platform/linux/user_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <tuple>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

QString textOfError(int code) {
    return QString::fromStdString(std::system_category().message(code));
}

FileIdentity identityOf(const struct stat& status) {
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim, status.st_ctim};
}

// Of the file that `path` leads to now, whatever it is.
std::optional<FileIdentity> identityAt(const QString& path) {
    struct stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return std::nullopt;
    return identityOf(status);
}

// Zero or the error. Some file systems can't rename without replacing, but can link.
int renameWithoutReplacing(const QByteArray& from, const QByteArray& to) {
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    if (::link(from.constData(), to.constData()) != 0 || ::unlink(from.constData()) != 0)
        return errno;
    return 0;
}

} // namespace

bool operator==(const FileIdentity& left, const FileIdentity& right) {
    const auto fields = [](const FileIdentity& identity) {
        return std::tie(identity.device, identity.inode, identity.size, identity.modified.tv_sec,
                        identity.modified.tv_nsec, identity.changed.tv_sec,
                        identity.changed.tv_nsec);
    };
    return fields(left) == fields(right);
}

UserFile readUserFile(const QString& path, qint64 maximumBytes) {
    const auto unusable = [](const QString& reason) {
        UserFile file;
        file.state = UserFile::State::unusable;
        file.reason = reason;
        return file;
    };
    // Without O_NONBLOCK, opening a FIFO would wait for a writer.
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0)
        return errno == ENOENT ? UserFile() : unusable(textOfError(errno));
    QFile reader;
    if (!reader.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered,
                     QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return unusable(reader.errorString());
    }
    struct stat status {};
    if (::fstat(descriptor, &status) != 0)
        return unusable(textOfError(errno));
    if (!S_ISREG(status.st_mode))
        return unusable(u"Not a regular file"_s);

    UserFile file;
    file.identity = identityOf(status);
    // One byte more than it should have, since it may grow while it is read.
    if (status.st_size <= maximumBytes)
        file.content = reader.read(qint64{status.st_size} + 1);
    if (reader.error() != QFileDevice::NoError)
        return unusable(reader.errorString());
    if (status.st_size > maximumBytes || file.content.size() > maximumBytes) {
        file.content.clear();
        file.state = UserFile::State::tooLarge;
    } else {
        file.state = UserFile::State::read;
    }
    return file;
}

Replacement replaceUserFile(const QString& path, const UserFile& expected,
                            const QByteArray& content) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush())
        return {Replacement::Outcome::failed, file.errorString()};
    // The content goes to the disk before the comparison, so that only the renaming is left after
    // it and the moment in which another program's edit could be missed is as short as possible.
    if (::fsync(file.handle()) != 0 && errno != EINVAL)
        return {Replacement::Outcome::failed, textOfError(errno)};
    if (identityAt(path) != expected.identity)
        return {Replacement::Outcome::changedMeanwhile, QString()};
    if (!file.commit())
        return {Replacement::Outcome::failed, file.errorString()};
    return {Replacement::Outcome::done, QString()};
}

Replacement moveUserFileAside(const QString& path, const UserFile& expected,
                              const QString& suffix) {
    constexpr int kMostNames = 1000;
    const QString file = QFileInfo(path).canonicalFilePath();
    int error = EEXIST;
    for (int number = 1; number <= kMostNames && error == EEXIST; ++number) {
        if (file.isEmpty() || identityAt(file) != expected.identity)
            return {Replacement::Outcome::changedMeanwhile, QString()};
        const QString name =
            number == 1 ? file + suffix : u"%1%2-%3"_s.arg(file, suffix).arg(number);
        error = renameWithoutReplacing(QFile::encodeName(file), QFile::encodeName(name));
    }
    if (error != 0)
        return {Replacement::Outcome::failed, textOfError(error)};
    return {Replacement::Outcome::done, QString()};
}

std::error_code makePrivateDirectories(const QString& directory) {
    const QFileInfo info(directory);
    if (info.isDir())
        return {};
    const QString path = info.absoluteFilePath();
    if (const std::error_code error = makePrivateDirectories(info.absolutePath()))
        return error;
    if (::mkdir(QFile::encodeName(path).constData(), S_IRWXU) == 0)
        return {};
    if (errno != EEXIST)
        return {errno, std::system_category()};
    // Another program was quicker, unless it is not a folder that stands there.
    return QFileInfo(path).isDir() ? std::error_code()
                                   : std::make_error_code(std::errc::not_a_directory);
}

} // namespace zenlot
