// A session bus of the test's own. It starts no services, whatever is installed, but those that the
// test names.
#pragma once

#include "support/qt_temporary_folder.h"

#include <QDBusConnection>
#include <QProcess>

#include <stdexcept>

namespace zenlot {

class PrivateBus {
  public:
    // The service is a program that the bus starts for who calls that name.
    explicit PrivateBus(const QByteArray& serviceName = {}, const QByteArray& program = {}) {
        folder_.write(QStringLiteral("services/one.service"),
                      "[D-BUS Service]\nName=" + serviceName + "\nExec=" + program + '\n');
        const QByteArray services =
            program.isEmpty()
                ? QByteArray()
                : "<servicedir>" + folder_.encoded(QStringLiteral("services")) + "</servicedir>";
        folder_.write(QStringLiteral("bus.conf"),
                      "<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen>" +
                          services +
                          "<limit name='max_replies_per_connection'>50000</limit>"
                          "<policy context='default'><allow send_destination='*' eavesdrop='true'/>"
                          "<allow eavesdrop='true'/><allow own='*'/></policy></busconfig>");
        daemon_.start(
            QStringLiteral("dbus-daemon"),
            {QStringLiteral("--nofork"), QStringLiteral("--print-address"),
             QStringLiteral("--config-file=") + folder_.path(QStringLiteral("bus.conf"))});
        while (!daemon_.canReadLine()) {
            if (!daemon_.waitForReadyRead(20000))
                throw std::runtime_error("can't start a bus");
        }
        address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus() {
        for (const QString& name : std::as_const(names_))
            QDBusConnection::disconnectFromBus(name);
        daemon_.terminate();
        daemon_.waitForFinished();
    }

    // One more connection, under a name of its own in this process.
    QDBusConnection connect(const QString& name) {
        names_.append(name);
        return QDBusConnection::connectToBus(address_, name);
    }

    const QString& address() const { return address_; }
    pid_t processId() const { return static_cast<pid_t>(daemon_.processId()); }

  private:
    QtTemporaryFolder folder_;
    QProcess daemon_;
    QString address_;
    QStringList names_;
};

} // namespace zenlot
