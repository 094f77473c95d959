// The log of the machine, where a program says what somebody who looks after the machine may need
// to know one day. Lines of the user's own log go to AppLog.
//
// Writing never waits and never fails towards the caller; a line that can't be written at once is
// dropped. A message becomes one line: control characters are escaped, and one that is too long
// is cut off. Any thread may write.
//
//     log.write(QStringLiteral("[Zenlot] Bundle path: ") + path);
#pragma once

#include <QString>

namespace zenlot {

class SystemLog {
  public:
    SystemLog() = default;
    SystemLog(const SystemLog&) = delete;
    SystemLog& operator=(const SystemLog&) = delete;
    virtual ~SystemLog() = default;

    virtual void write(const QString& message) = 0;
};

} // namespace zenlot
