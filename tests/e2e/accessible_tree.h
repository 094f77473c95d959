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
    enum class State : int { active = 1, checked = 4, focused = 12, visible = 30 };

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

    // The same, whose description begins so.
    bool findDescribed(const char* role, const QString& name, const QString& description) const {
        return wait([&] {
            const auto node = findBelow(kRoot, role, name, State::visible);
            return node && property(*node, "Description").toString().startsWith(description);
        });
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

    bool has(const Node& node, State state) const {
        const auto bits = qdbus_cast<QList<uint>>(ask(node, kAccessible, "GetState"));
        return ((bits.value(0) >> static_cast<int>(state)) & 1U) != 0;
    }

    // Waits until a check box is seen like that.
    bool isChecked(const QString& name, bool expected) const {
        return wait([&] {
            const auto box = findBelow(kRoot, "check box", name, State::visible);
            return box && has(*box, State::checked) == expected;
        });
    }

    // Without waiting.
    bool isActive(const QString& window) const {
        return findBelow(kRoot, "frame", window, State::active).has_value();
    }

    bool isThere(const char* role, const QString& name, State state = State::visible) const {
        return findBelow(kRoot, role, name, state).has_value();
    }

    // On the screen.
    QRect extents(const Node& node) const {
        QRect extents;
        const auto reply =
            ask(node, "org.a11y.atspi.Component", "GetExtents", {0U}).value<QDBusArgument>();
        if (reply.currentType() == QDBusArgument::StructureType)
            reply >> extents;
        return extents;
    }
    QPoint centre(const Node& node) const { return extents(node).center(); }

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
            if (const auto node = findBelow(kRoot, role, name, State::visible))
                press(*node);
            return false;
        });
    }

    // The same, once: for what is not the same when it is pressed again.
    bool pressOnce(const char* role, const QString& name) const {
        const auto node = find(role, name);
        return node && press(*node);
    }

  private:
    static constexpr const char* kAccessible = "org.a11y.atspi.Accessible";
    static constexpr const char* kAction = "org.a11y.atspi.Action";
    inline static const Node kRoot{QStringLiteral("org.a11y.atspi.Registry"),
                                   QStringLiteral("/org/a11y/atspi/accessible/root"),
                                   {}};

    template <typename Condition>
    static bool wait(Condition condition) {
        return QTest::qWaitFor(condition, 60000);
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

    bool press(const Node& node) const {
        for (int action = 0; action < 4; ++action) {
            if (ask(node, kAction, "GetName", {action}) == QLatin1String("Press"))
                return ask(node, kAction, "DoAction", {action}).toBool();
        }
        return false;
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

    bool fits(Node& node, const QString& name, State state) const {
        node.name = property(node, "Name").toString();
        return node.name.startsWith(name) && has(node, State::visible) && has(node, state);
    }

    // There are many rows with nothing but words in them, and each question takes its time.
    static bool mayHold(const QString& role, const char* wanted) {
        if (role == QLatin1String("frame"))
            return role != QLatin1String(wanted);
        return role != QLatin1String("list item") || qstrcmp(wanted, "label") == 0;
    }

    std::optional<Node> findBelow(const Node& parent, const char* role, const QString& name,
                                  State state) const {
        const QVariant children = ask(parent, kAccessible, "GetChildren");
        if (!children.canConvert<QDBusArgument>())
            return std::nullopt;
        const auto list = children.value<QDBusArgument>();
        for (list.beginArray(); !list.atEnd();) {
            Node node = nodeFrom(list);
            const QString nodeRole = ask(node, kAccessible, "GetRoleName").toString();
            if (nodeRole == QLatin1String(role) && fits(node, name, state))
                return node;
            if (!mayHold(nodeRole, role))
                continue;
            if (std::optional<Node> found = findBelow(node, role, name, state))
                return found;
        }
        return std::nullopt;
    }

    QDBusConnection session_;
    QDBusConnection bus_;
};

} // namespace zenlot
