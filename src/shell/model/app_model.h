// Requests to the main window from those who live outside it: a port to look up, and the wish to
// see the settings. The main window resets a request when it has taken it up, so that the same
// one can be made again; while the window is closed a request waits here.
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

    bool openSettingsRequested() const { return openSettingsRequested_; }
    void setOpenSettingsRequested(bool requested);

  Q_SIGNALS:
    void pendingPortChanged();
    void openSettingsRequestedChanged();

  private:
    std::optional<qint64> pendingPort_;
    bool openSettingsRequested_{false};
};

} // namespace zenlot
