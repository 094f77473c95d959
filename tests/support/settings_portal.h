// A desktop's portal, as far as settings go.
#pragma once

#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QMap>
#include <QObject>
#include <QVariantMap>

#include <utility>

namespace zenlot {

class SettingsPortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

  public:
    using Settings = QMap<QString, QVariantMap>;

    explicit SettingsPortal(QDBusConnection bus) : bus_(std::move(bus)) {
        qDBusRegisterMetaType<Settings>();
        bus_.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                            QDBusConnection::ExportAllContents);
    }
    void start() { bus_.registerService(QStringLiteral("org.freedesktop.portal.Desktop")); }
    void stop() { bus_.unregisterService(QStringLiteral("org.freedesktop.portal.Desktop")); }

    void change(const QString& group, const QString& key, const QVariant& value) {
        settings[group][key] = value;
        Q_EMIT SettingChanged(group, key, QDBusVariant(value));
    }

    Settings settings;

  public Q_SLOTS:
    QMap<QString, QVariantMap> ReadAll(const QStringList& groups) const {
        Settings answer;
        for (const QString& group : groups) {
            if (settings.contains(group))
                answer.insert(group, settings[group]);
        }
        return answer;
    }

  Q_SIGNALS:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

  private:
    QDBusConnection bus_;
};

} // namespace zenlot
