#include "platform/linux/journal_system_log.h"

#include "text/log_line.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstring>
#include <utility>

namespace zenlot {
namespace {

// A pipe that can be written to takes this much at once.
constexpr qsizetype kLongestMessage = 680;
static_assert(6 * kLongestMessage + 4 <= PIPE_BUF, "with an ellipsis and the end of the line");

constexpr int kNotice = 5;
constexpr int kUserFacility = 1;

bool isSameFile(int descriptor, const QByteArray& deviceAndInode) {
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 &&
           deviceAndInode == QByteArray::number(qulonglong{status.st_dev}) + ':' +
                                 QByteArray::number(qulonglong{status.st_ino});
}

void writeToStream(int descriptor, const QByteArray& line) {
    const auto size = static_cast<std::size_t>(line.size());
    if (::send(descriptor, line.constData(), size, MSG_DONTWAIT | MSG_NOSIGNAL) >= 0 ||
        errno != ENOTSOCK)
        return;
    // A pipe without a reader would end the program: it is ready, but with an error.
    pollfd stream{descriptor, POLLOUT, 0};
    if (::poll(&stream, 1, 0) == 1 && stream.revents == POLLOUT &&
        ::write(descriptor, line.constData(), size) < 0)
        return; // dropped
}

// False when nobody reads there.
bool sendTo(const QByteArray& path, const QByteArray& datagram) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= static_cast<qsizetype>(sizeof address.sun_path))
        return false;
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    const int descriptor = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor < 0)
        return false;
    const bool isSent =
        ::sendto(descriptor, datagram.constData(), static_cast<std::size_t>(datagram.size()),
                 MSG_NOSIGNAL, reinterpret_cast<const sockaddr*>(&address), sizeof address) >= 0;
    const bool isFull = !isSent && errno == EAGAIN;
    ::close(descriptor);
    return isSent || isFull;
}

} // namespace

JournalSystemLog::JournalSystemLog(QByteArray identifier, JournalSystemLogTargets targets)
    : identifier_(std::move(identifier)), targets_(std::move(targets)),
      isStandardErrorJournal_(isSameFile(targets_.standardError, targets_.journalStream)) {}

void JournalSystemLog::write(const QString& message) {
    const QByteArray line = logLine(message, kLongestMessage).toUtf8();
    writeToStream(targets_.standardError, line + '\n');
    if (isStandardErrorJournal_ ||
        sendTo(targets_.journal, "MESSAGE=" + line + "\nPRIORITY=" + QByteArray::number(kNotice) +
                                     "\nSYSLOG_IDENTIFIER=" + identifier_ + '\n'))
        return;
    sendTo(targets_.syslog, '<' + QByteArray::number(8 * kUserFacility + kNotice) + '>' +
                                identifier_ + '[' + QByteArray::number(::getpid()) + "]: " + line);
}

} // namespace zenlot
