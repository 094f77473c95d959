// A real notification server on a private desktop: its alerts, and clicks on their buttons.
#pragma once

#include "e2e/accessible_tree.h"
#include "e2e/private_desktop.h"

#include <QDBusConnectionInterface>
#include <QSettings>

#include <optional>
#include <stdexcept>

namespace zenlot {

class AlertScreen {
  public:
    // Starts the server, and waits until alerts go to that one: the bus would start any of those
    // that are installed.
    explicit AlertScreen(PrivateDesktop& desktop)
        : desktop_(desktop),
          bus_(QDBusConnection::connectToBus(desktop.sessionBus(), QStringLiteral("e2e alerts"))) {
        // Alerts stay until they are answered, however slow the machine is.
        desktop.files().write("XDG_CONFIG_HOME/xfce4/xfconf/xfce-perchannel-xml/xfce4-notifyd.xml",
                              R"(<channel name="xfce4-notifyd" version="1.0">)"
                              R"(<property name="expire-timeout" type="int" value="-1"/>)"
                              R"(</channel>)");
        const QSettings service(QStringLiteral("/usr/share/dbus-1/services/"
                                               "org.xfce.xfce4-notifyd.Notifications.service"),
                                QSettings::IniFormat);
        const QProcess& server =
            desktop.start(service.value("D-BUS Service/Exec").toString(), QStringList());
        const auto isThere = [&] {
            return bus_.interface()->servicePid(QStringLiteral("org.freedesktop.Notifications")) ==
                   server.processId();
        };
        if (!waitUntil(isThere))
            throw std::runtime_error("no notification server");
    }
    AlertScreen(const AlertScreen&) = delete;
    AlertScreen& operator=(const AlertScreen&) = delete;
    ~AlertScreen() { QDBusConnection::disconnectFromBus(bus_.name()); }

    pid_t serverPid() const {
        return static_cast<pid_t>(
            bus_.interface()->servicePid(QStringLiteral("org.freedesktop.Notifications")));
    }

    pid_t busPid() const {
        return static_cast<pid_t>(
            bus_.interface()->servicePid(QStringLiteral("org.freedesktop.DBus")));
    }

    // Whether an alert with that title comes, or goes.
    bool shows(const QString& title) const { return tree_.find("label", title).has_value(); }
    bool hides(const QString& title) const {
        return waitUntil([&] { return !tree_.isThere("label", title); });
    }

    // Whether it has such a button, without waiting.
    bool offers(const QString& title, const QString& button) const {
        const auto label = tree_.find("label", title);
        return label && tree_.findNear(*label, "push button", button).has_value();
    }

    // What is wrong with the alert that has the title; empty when it was found as it should be,
    // and its button was clicked.
    std::string answer(const QString& title, const QString& body, const QString& button) {
        const auto label = tree_.find("label", title);
        if (!label || label->name != title)
            return "no alert " + title.toStdString();
        const auto text = tree_.findNear(*label, "label", body);
        if (!text || text->name != body)
            return "not said: " + body.toStdString();
        const auto pressed = tree_.findNear(*label, "push button", button);
        if (!pressed)
            return "no button " + button.toStdString();
        const QPoint centre = tree_.centre(*pressed);
        const QStringList click{QStringLiteral("mousemove"), QString::number(centre.x()),
                                QString::number(centre.y()), QStringLiteral("click"),
                                QStringLiteral("1")};
        return desktop_.input(click) == 0 ? "" : "no click";
    }

  private:
    PrivateDesktop& desktop_;
    AccessibleTree tree_{desktop_.sessionBus()};
    QDBusConnection bus_;
};

} // namespace zenlot
