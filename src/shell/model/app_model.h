// A request to the main window from those who live outside it: a port to look up. The main window
// resets it when it has taken it up, so that the same one can be made again; while the window is
// closed it waits here.
//
// Observers hear only of values that differ from the one before. Main thread only.
#pragma once

#include <QObject>

#include <optional>

namespace zenlot {

class AppModel final : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    std::optional<qint64> pendingPort() const { return pendingPort_; }
    void setPendingPort(std::optional<qint64> port);

  Q_SIGNALS:
    void pendingPortChanged();

  private:
    std::optional<qint64> pendingPort_;
};

} // namespace zenlot
