// Lines on standard error and in the journal, or in the syslog of a machine without one.
//
// Where standard error is the journal already, as in a service, a line is written once. Nothing
// here waits: a reader that does not keep up, a terminal that stands still or a logging service
// that hangs cost the line. What several programs or threads write does not mix.
#pragma once

#include "platform/system_log.h"

#include <QByteArray>

namespace zenlot {

// Where the lines go. `journalStream` is the device and inode, as "8:1234", of a stream that ends
// in the journal; systemd names it to the services that it starts.
struct JournalSystemLogTargets {
    int standardError{2};
    QByteArray journal{"/run/systemd/journal/socket"};
    QByteArray syslog{"/dev/log"};
    QByteArray journalStream{qgetenv("JOURNAL_STREAM")};
};

class JournalSystemLog final : public SystemLog {
  public:
    // `identifier` is the name of the program in the log.
    explicit JournalSystemLog(QByteArray identifier, JournalSystemLogTargets targets = {});

    void write(const QString& message) override;

  private:
    QByteArray identifier_;
    JournalSystemLogTargets targets_;
    bool isStandardErrorJournal_;
};

} // namespace zenlot
