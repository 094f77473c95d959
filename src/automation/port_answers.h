// Answers "which process uses this port?" off the main thread, for the desktop's search and for
// scripts. Each answer is that of the moment: a fresh lookup, merged with what the background
// monitor published last.
//
//     answers.answer(3000, this, [](const QString& dialog) { reply(dialog); });
//
// Main thread only. The destructor waits for the lookups that are still open.
#pragma once

#include "inventory/port_scanner.h"
#include "monitoring/shared_container.h"

#include <QString>
#include <QThreadPool>

#include <cstdint>
#include <functional>

QT_FORWARD_DECLARE_CLASS(QObject)

namespace zenlot {

class PortAnswers final {
  public:
    using Receiver = std::function<void(const QString& dialog)>;

    // `scanner` must outlive the object.
    PortAnswers(const PortScanner& scanner, SharedContainer container);

    // The receiver is called from the event loop, unless `context` is gone by then.
    void answer(std::int64_t portNumber, QObject* context, Receiver receiver);

  private:
    const PortScanner& scanner_;
    SharedContainer container_;
    QThreadPool workers_; // the last member, so that it ends before what its work uses
};

} // namespace zenlot
