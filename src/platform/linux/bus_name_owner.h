// Who owns a name on the session bus: the unique name by which its messages are told from those of
// anybody else, since every program on the bus may send signals of any kind.
//
//     BusNameOwner monitor(u"dev.quorvane.zenlot.Monitor"_s);
//     monitor.follow(bus.connection());
//     if (message.service() == monitor.owner()) ...
//
// Nothing waits: the owner is none until the bus has told. Belongs to one thread.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

namespace zenlot {

class BusNameOwner final : public QObject {
    Q_OBJECT

  public:
    explicit BusNameOwner(QString name, QObject* parent = nullptr);

    // From now on on this connection alone.
    void follow(const QDBusConnection& bus);

    const QString& name() const { return name_; }

    // Empty while nobody owns the name.
    const QString& owner() const { return owner_; }

  Q_SIGNALS:
    void changed();

  private Q_SLOTS:
    void noteChange(const QString& name, const QString& before, const QString& owner);

  private:
    void assign(const QString& owner);

    QString name_;
    QString owner_;
    int connections_{0};
};

} // namespace zenlot
