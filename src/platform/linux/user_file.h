// A small text file of the user's that other programs read and write too.
//
// Reading never waits and never trusts what stands at the path. Replacing is atomic, follows
// symbolic links to the file that they stand for, keeps its mode, and takes back nothing that
// another program wrote since the file was read.
//
//     UserFile file = readUserFile(path, kMaximumBytes);
//     Replacement replacement = replaceUserFile(path, file, edited(file.content));
#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <sys/types.h>

#include <cstdint>
#include <ctime>
#include <optional>
#include <system_error>

namespace zenlot {

// What changes when a file is edited or replaced. Times are those of the file system.
struct FileIdentity {
    dev_t device{0};
    ino_t inode{0};
    off_t size{0};
    timespec modified{};
    timespec changed{};

    friend bool operator==(const FileIdentity& left, const FileIdentity& right);
};

struct UserFile {
    enum class State : std::uint8_t {
        missing,  // also a symbolic link to a file that is missing
        read,     // `content` is the whole file
        tooLarge, // a regular file above the given size, not read
        unusable, // no regular file, or one that can't be read; `reason` says why
    };

    State state{State::missing};
    QByteArray content;
    QString reason;
    std::optional<FileIdentity> identity; // of the regular file that was found
};

struct Replacement {
    enum class Outcome : std::uint8_t {
        done,
        changedMeanwhile, // another program wrote to the file; nothing was replaced
        failed,           // nothing was replaced; `reason` says why
    };

    Outcome outcome{Outcome::failed};
    QString reason;
};

UserFile readUserFile(const QString& path, qint64 maximumBytes);

// `expected` is the file as it was read. The folder must exist.
Replacement replaceUserFile(const QString& path, const UserFile& expected,
                            const QByteArray& content);

// Renames the file that `path` stands for to its own name followed by `suffix`, or by `suffix` and
// a number when that name is taken. Nothing is ever replaced. A symbolic link stays and then leads
// nowhere. Does not move a file that is not the `expected` one any more.
Replacement moveUserFileAside(const QString& path, const UserFile& expected, const QString& suffix);

// Makes a folder and the folders above it that are missing, for the user alone.
std::error_code makePrivateDirectories(const QString& directory);

} // namespace zenlot
