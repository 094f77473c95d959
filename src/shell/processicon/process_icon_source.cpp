#include "shell/processicon/process_icon_source.h"

namespace zenlot {

void ProcessIconSource::setPid(int pid) {
    if (pid == pid_)
        return;
    pid_ = pid;
    Q_EMIT pidChanged();
    restart();
}

IconSource::Search ProcessIconSource::search() const {
    return [pid = pid_, path = executablePath_](const ProcessIconProvider& provider,
                                                const IconFrame& frame) {
        return provider.iconOfProcess(pid, path, frame);
    };
}

} // namespace zenlot
