#include "background_monitor/container_writer.h"

#include "monitoring/shared_container.h"
#include "platform/linux/user_file.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace zenlot {
namespace {

// In the names of files that are being written: what stands before it is the name of the file that
// they will be.
constexpr std::string_view kTemporaryMark = ".json.";

bool writeWhole(int descriptor, std::string_view content) {
    while (!content.empty()) {
        const ssize_t count = ::write(descriptor, content.data(), content.size());
        if (count < 0 && errno != EINTR)
            return false;
        content.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return true;
}

} // namespace

ContainerWriter::ContainerWriter(const QString& stateHome)
    : folder_(QFile::encodeName(stateHome).toStdString() + "/" + std::string(kContainerFolder)) {
    make();
}

void ContainerWriter::make() const {
    makePrivateDirectories(QFile::decodeName(folder_.c_str()));
    ::chmod(folder_.c_str(), S_IRWXU);
}

void ContainerWriter::sweep() const {
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder_, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.starts_with('.') && name.find(kTemporaryMark) != std::string::npos)
            remove(name);
    }
}

bool ContainerWriter::replace(const std::string& name, std::string_view content) const {
    // The name begins with a dot, so that nobody takes a half-written file for one of the others.
    std::string temporary = path("." + name + ".XXXXXX");
    const int descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool isWritten = writeWhole(descriptor, content);
    const bool isClosed = ::close(descriptor) == 0;
    if (isWritten && isClosed && ::rename(temporary.c_str(), path(name).c_str()) == 0)
        return true;
    ::unlink(temporary.c_str());
    return false;
}

void ContainerWriter::remove(const std::string& name) const {
    ::unlink(path(name).c_str());
}

} // namespace zenlot
