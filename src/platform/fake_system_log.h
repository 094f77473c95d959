// A SystemLog for tests, which keeps what is written.
#pragma once

#include "platform/system_log.h"

#include <QStringList>

namespace zenlot {

class FakeSystemLog final : public SystemLog {
  public:
    QStringList messages;

    void write(const QString& message) override { messages.append(message); }
};

} // namespace zenlot
