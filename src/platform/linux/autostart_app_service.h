// The program as a login item: an entry of its own in the user's autostart folder.
//
// Statuses: enabled when the entry would start a program; requires approval when the user or the
// desktop has switched it off (Hidden=true or X-GNOME-Autostart-enabled=false); not found when
// something other than a readable file stands in the entry's place; not registered otherwise.
//
// Registering writes the entry, or switches an existing one on again and leaves its other lines as
// they are, except for a program that is no longer there: it is replaced by this one. Unregistering
// removes the entry when it is enabled; one that was switched off stays, since that is how the user
// told the desktop not to start the program.
//
// Errors have the domain "dev.quorvane.zenlot.autostart" and an AutostartError as code.
#pragma once

#include "platform/app_service.h"

#include <QByteArray>

namespace zenlot {

enum class AutostartError : int {
    invalidProgram = 1, // no absolute path, or one that an entry can't name
    cannotWrite = 2,
    cannotRemove = 3,
};

class AutostartAppService final : public AppService {
  public:
    // `program` is the absolute path of the program to start. The option tells it that nobody asked
    // to see it; it is one word of plain letters, or empty.
    AutostartAppService(const QString& configHome, QString program, QByteArray option = {});

    AppServiceStatus status() const override;
    std::optional<AppServiceError> registerService() override;
    std::optional<AppServiceError> unregisterService() override;

  private:
    QString entryPath_;
    QString program_;
    QByteArray option_;
};

// The value of an Exec key that starts the program without arguments.
QByteArray desktopEntryExec(const QString& program);

} // namespace zenlot
