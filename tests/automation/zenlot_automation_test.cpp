// The program itself, started by a bus of the test's own, and called by the names that the
// installed files give to the searches.
#include "automation/krunner_runner.h"
#include "support/listener.h"
#include "support/private_bus.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QRegularExpression>
#include <QSettings>
#include <QTest>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr int kPatience = 60000;
const QString kQuestion = u"Which port would you like to check?"_s;

// In place of the application: notes the method, the port and the token of what it is asked for.
class Application final : public QDBusVirtualObject {
  public:
    QList<QVariantList> calls;

    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
        const QVariantList arguments = call.arguments();
        const auto platformData = qdbus_cast<QVariantMap>(arguments.last());
        calls.append({call.member(), qdbus_cast<QVariantList>(arguments.value(1)).value(0),
                      platformData.value(u"activation-token"_s)});
        return bus.send(call.createReply());
    }
};

class ZenlotAutomationTest : public testing::Test {
  protected:
    explicit ZenlotAutomationTest(const QByteArray& options = {})
        : bus_("dev.quorvane.zenlot.Automation", ZENLOT_AUTOMATION + options),
          desktop(bus_.connect(u"desktop"_s)) {
        desktop.registerVirtualObject(u"/dev/quorvane/zenlot"_s, &application);
        EXPECT_TRUE(desktop.registerService(u"dev.quorvane.zenlot"_s));
    }

    static QString entry(const QString& file, const QString& key) {
        // In a key file of a desktop a comma is a comma.
        return QSettings(QStringLiteral(ZENLOT_PACKAGING) + u'/' + file, QSettings::IniFormat)
            .value(key)
            .toStringList()
            .join(u',');
    }

    QVariant call(const QString& interface, const QString& method, const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall(name, path, interface, method);
        message.setArguments(arguments);
        const QDBusMessage reply = desktop.call(message);
        EXPECT_NE(reply.type(), QDBusMessage::ErrorMessage) << reply.errorMessage().toStdString();
        return reply.arguments().value(0);
    }
    QString checkPort(qint64 number) {
        return call(u"dev.quorvane.zenlot.Automation"_s, u"CheckPort"_s, {number}).toString();
    }
    bool waitForCalls(qsizetype count) const {
        return QTest::qWaitFor([&] { return application.calls.size() == count; }, kPatience);
    }

  private:
    PrivateBus bus_;

  protected:
    QDBusConnection desktop;
    QString name = kAutomationBusName;
    QString path = kAutomationPath;
    Application application;
    Listener listener;
    const QString port = QString::number(listener.port());
    const QString answer =
        u"Port %1 is used by: Automation_test (PID %2)"_s.arg(port).arg(getpid());
};

TEST_F(ZenlotAutomationTest, AnswersInOneSentence) {
    EXPECT_EQ(checkPort(listener.port()), answer);
    // Nobody listens on the port of a multiplexer from 1988.
    EXPECT_EQ(checkPort(1), u"Port 1 is free — nothing is using it.");
    for (const qint64 number : {qint64{0}, qint64{-3000}, qint64{70000}, qint64{1} << 40})
        EXPECT_EQ(checkPort(number), u"Please enter a valid port number between 1 and 65535.");
}

TEST_F(ZenlotAutomationTest, IsOneLineInTheSearchOfGnome) {
    const QString file = u"dev.quorvane.zenlot.search-provider.ini"_s;
    name = entry(file, u"Shell Search Provider/BusName"_s);
    path = entry(file, u"Shell Search Provider/ObjectPath"_s);
    const QString interface = u"org.gnome.Shell.SearchProvider2"_s;
    const QStringList found{u':' + port};
    const std::pair<QStringList, QStringList> searches[] = {
        {{port}, found},
        {{u"Port"_s, port}, found},
        {u"what is using a port in zenlot"_s.split(u' '), {u"request"_s}},
        {{u"report"_s, u"3000"_s}, {}},
        {{QString(100000, u'3')}, {}},
        {QStringList(200000, u"port"_s), {}},
        {{}, {}},
    };
    for (const auto& [words, results] : searches) {
        EXPECT_EQ(call(interface, u"GetInitialResultSet"_s, {words}), results);
        EXPECT_EQ(call(interface, u"GetSubsearchResultSet"_s, {found, words}), results);
    }

    QStringList identifiers{found.first(), u"nonsense"_s, u"request"_s};
    identifiers += QStringList(100000, QString(64, u'9'));
    const QVariant icon = u"dev.quorvane.zenlot"_s;
    EXPECT_EQ(qdbus_cast<QList<QVariantMap>>(call(interface, u"GetResultMetas"_s, {identifiers})),
              (QList<QVariantMap>{
                  {{u"id"_s, found.first()}, {u"name"_s, answer}, {u"gicon"_s, icon}},
                  {{u"id"_s, u"request"_s}, {u"name"_s, kQuestion}, {u"gicon"_s, icon}}}));

    call(interface, u"ActivateResult"_s, {u"nonsense"_s, QStringList(), 0U});
    call(interface, u"ActivateResult"_s, {found.first(), QStringList{port}, 0U});
    call(interface, u"LaunchSearch"_s, {QStringList{u"hello"_s}, 0U});
    ASSERT_TRUE(waitForCalls(2));
    EXPECT_EQ(application.calls,
              (QList<QVariantList>{{u"ActivateAction"_s, qint64{listener.port()}, {}},
                                   {u"Activate"_s, {}, {}}}));
}

TEST_F(ZenlotAutomationTest, IsOneLineInTheSearchOfKde) {
    const QString file = u"dev.quorvane.zenlot.runner.desktop"_s;
    name = entry(file, u"Desktop Entry/X-Plasma-DBusRunner-Service"_s);
    path = entry(file, u"Desktop Entry/X-Plasma-DBusRunner-Path"_s);
    const QString interface = u"org.kde.krunner1"_s;
    const QRegularExpression asked(entry(file, u"Desktop Entry/X-Plasma-Runner-Match-Regex"_s));
    const std::pair<QString, QStringList> searches[] = {
        {port, {u':' + port, answer}},
        {u"port "_s + port, {u':' + port, answer}},
        {u"check a port in ZENLOT"_s, {u"request"_s, kQuestion}},
        {u"port "_s, {}},
        {u"report 3000"_s, {}},
        {QString(100000, u'3'), {}},
    };
    for (const auto& [query, expected] : searches) {
        EXPECT_EQ(asked.match(query).hasMatch(), !expected.isEmpty())
            << query.toStdString() << ": the program is started for what it can answer";
        const QVariant result = call(interface, u"Match"_s, {query});
        EXPECT_EQ(result.value<QDBusArgument>().currentSignature(), u"a(sssida{sv})");
        QStringList lines;
        for (const RunnerMatch& match : qdbus_cast<QList<RunnerMatch>>(result))
            lines << match.identifier << match.text;
        EXPECT_EQ(lines, expected);
    }
    EXPECT_FALSE(asked.match(u"zenlot"_s).hasMatch());
    call(interface, u"Actions"_s, {});

    call(interface, u"Run"_s, {QString(100000, u':'), QString()});
    call(interface, u"SetActivationToken"_s, {u"token"_s});
    call(interface, u"Run"_s, {u":3000"_s, QString()});
    call(interface, u"Run"_s, {u"request"_s, QString()});
    call(interface, u"Teardown"_s, {});
    ASSERT_TRUE(waitForCalls(2));
    EXPECT_EQ(application.calls, (QList<QVariantList>{{u"ActivateAction"_s, 3000, u"token"_s},
                                                      {u"Activate"_s, {}, {}}}));
}

class HastyZenlotAutomationTest : public ZenlotAutomationTest {
  protected:
    HastyZenlotAutomationTest() : ZenlotAutomationTest(" --idle-seconds=0") {}
};

TEST_F(HastyZenlotAutomationTest, LeavesButNobodyGoesUnanswered) {
    const auto programs = [this] {
        return desktop.interface()->registeredServiceNames().value().filter(u":"_s).size();
    };
    const qsizetype others = programs();
    for (int question = 0; question < 40; ++question)
        ASSERT_EQ(checkPort(listener.port()), answer) << question;
    EXPECT_TRUE(QTest::qWaitFor([&] { return programs() == others; }, kPatience));
}

} // namespace
} // namespace zenlot
