// Takes a snapshot of one process and writes it down for the inspector. It never fails: what the
// kernel does not tell stays empty or 0. May be called from several threads at once.
//
//     const ProcessDetailsCollector collector(inspector);
//     const ProcessDetails details = collector.collectProcessDetails(4312);
#pragma once

#include "inventory/process_inspector.h"
#include "shell/inspector/process_details.h"

#include <QLocale>
#include <QTimeZone>

#include <chrono>
#include <functional>

namespace zenlot {

class ProcessDetailsCollector final {
  public:
    using Clock = std::function<std::chrono::system_clock::time_point()>;

    // The inspector must outlive the collector. An invalid time zone stands for that of the system.
    explicit ProcessDetailsCollector(const ProcessInspector& inspector,
                                     Clock clock = std::chrono::system_clock::now,
                                     const QLocale& locale = QLocale::system(),
                                     const QTimeZone& timeZone = QTimeZone());

    // Everything but the three texts about the bundle. A pid of more than 32 bits is nobody's.
    ProcessDetails collectProcessDetails(qint64 pid) const;

  private:
    QString dateText(std::chrono::seconds sinceEpoch) const;

    const ProcessInspector& inspector_;
    Clock clock_;
    QLocale locale_;
    QTimeZone timeZone_;
};

} // namespace zenlot
