// What a screen reader sees of the running applications, asked over the accessibility bus.
#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QRect>
#include <QTest>

#include <optional>

namespace zenlot {

class AccessibleTree {
  public:
    // Bits of the protocol.
    enum class State : int { active = 1, focused = 12, visible = 30 };

    struct Node {
        QString service;
        QString path;
        QString name; // of those that are found
    };

    // Starts the accessibility bus.
    explicit AccessibleTree(const QString& sessionBus)
        : session_(QDBusConnection::connectToBus(sessionBus, QStringLiteral("e2e session"))),
          bus_(session_) {
        const QVariant address =
            ask({QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"), {}},
                "org.a11y.Bus", "GetAddress");
        bus_ = QDBusConnection::connectToBus(address.toString(), QStringLiteral("e2e a11y"));
    }
    AccessibleTree(const AccessibleTree&) = delete;
    AccessibleTree& operator=(const AccessibleTree&) = delete;
    ~AccessibleTree() {
        QDBusConnection::disconnectFromBus(bus_.name());
        QDBusConnection::disconnectFromBus(session_.name());
    }

    // The first visible node of that role whose name begins so and that is in that state; waited
    // for, and none when it does not come.
    std::optional<Node> find(const char* role, const QString& name,
                             State state = State::visible) const {
        std::optional<Node> found;
        wait([&] { return (found = findBelow(kRoot, role, name, state)).has_value(); });
        return found;
    }

    // The node with that role and name which stands nearest to another one.
    std::optional<Node> findNear(Node node, const char* role, const QString& name) const {
        std::optional<Node> found;
        while (!node.path.isEmpty() && !(found = findBelow(node, role, name, State::visible))) {
            const auto parent = property(node, "Parent").value<QDBusArgument>();
            node = parent.currentType() == QDBusArgument::StructureType ? nodeFrom(parent) : Node{};
        }
        return found;
    }

    // On the screen.
    QPoint centre(const Node& node) const {
        QRect extents;
        const auto reply =
            ask(node, "org.a11y.atspi.Component", "GetExtents", {0U}).value<QDBusArgument>();
        if (reply.currentType() == QDBusArgument::StructureType)
            reply >> extents;
        return extents.center();
    }

    // Waits until the window is seen without such a node.
    bool isGone(const char* role, const QString& name) const {
        return wait([&] {
            return !findBelow(kRoot, role, name, State::visible) &&
                   findBelow(kRoot, "frame", QString(), State::visible);
        });
    }

    // Presses a node the way a screen reader does for its user, until what it should bring is
    // there: a check that is still on its way may undo the first press.
    bool press(const char* role, const QString& name, const char* broughtRole,
               const QString& broughtName) const {
        return wait([&] {
            if (findBelow(kRoot, broughtRole, broughtName, State::visible))
                return true;
            const auto node = findBelow(kRoot, role, name, State::visible);
            if (node && ask(*node, kAction, "GetName", {0}) == QLatin1String("Press"))
                ask(*node, kAction, "DoAction", {0});
            return false;
        });
    }

  private:
    static constexpr const char* kAccessible = "org.a11y.atspi.Accessible";
    static constexpr const char* kAction = "org.a11y.atspi.Action";
    inline static const Node kRoot{QStringLiteral("org.a11y.atspi.Registry"),
                                   QStringLiteral("/org/a11y/atspi/accessible/root"),
                                   {}};

    template <typename Condition>
    static bool wait(Condition condition) {
        return QTest::qWaitFor(condition, 20000);
    }

    // Invalid when the node has vanished meanwhile.
    QVariant ask(const Node& node, const char* interface, const char* method,
                 const QVariantList& arguments = {}) const {
        QDBusMessage message = QDBusMessage::createMethodCall(
            node.service, node.path, QString::fromLatin1(interface), QString::fromLatin1(method));
        message.setArguments(arguments);
        const QDBusMessage reply = bus_.call(message);
        return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
    }

    QVariant property(const Node& node, const char* name) const {
        return ask(node, "org.freedesktop.DBus.Properties", "Get",
                   {QString::fromLatin1(kAccessible), QString::fromLatin1(name)})
            .value<QDBusVariant>()
            .variant();
    }

    static Node nodeFrom(const QDBusArgument& reference) {
        Node node;
        QDBusObjectPath path;
        reference.beginStructure();
        reference >> node.service >> path;
        reference.endStructure();
        node.path = path.path();
        return node;
    }

    bool fits(Node& node, const char* role, const QString& name, State state) const {
        if (ask(node, kAccessible, "GetRoleName") != QLatin1String(role))
            return false;
        node.name = property(node, "Name").toString();
        const auto bits = qdbus_cast<QList<uint>>(ask(node, kAccessible, "GetState"));
        const auto has = [&](State bit) {
            return ((bits.value(0) >> static_cast<int>(bit)) & 1U) != 0;
        };
        return has(State::visible) && has(state) && node.name.startsWith(name);
    }

    std::optional<Node> findBelow(const Node& parent, const char* role, const QString& name,
                                  State state) const {
        const QVariant children = ask(parent, kAccessible, "GetChildren");
        if (!children.canConvert<QDBusArgument>())
            return std::nullopt;
        const auto list = children.value<QDBusArgument>();
        for (list.beginArray(); !list.atEnd();) {
            Node node = nodeFrom(list);
            if (fits(node, role, name, state))
                return node;
            if (std::optional<Node> found = findBelow(node, role, name, state))
                return found;
        }
        return std::nullopt;
    }

    QDBusConnection session_;
    QDBusConnection bus_;
};

} // namespace zenlot
