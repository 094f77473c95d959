// The programs speak the user's language.
#include "e2e/accessible_tree.h"
#include "e2e/private_desktop.h"

#include <QDBusReply>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

TEST(LanguageTest, WindowsAndAnswersAreInTheUsersLanguage) {
    PrivateDesktop desktop;
    const AccessibleTree tree{desktop.sessionBus()};
    const auto startIn = [&](const char* language, const char* program) {
        desktop.start(QStringLiteral("env"), {QLatin1String("LANGUAGE=") + QLatin1String(language),
                                              QString::fromLocal8Bit(program)});
    };
    startIn("de_AT", ZENLOT_PROGRAM);
    EXPECT_TRUE(tree.find("label", QStringLiteral("Portnummer eingeben")));

    startIn("ja_JP", ZENLOT_AUTOMATION_PROGRAM);
    const QDBusConnection session(QStringLiteral("e2e session"));
    QDBusReply<QString> answer;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            QDBusMessage question = QDBusMessage::createMethodCall(
                QStringLiteral("dev.quorvane.zenlot.Automation"),
                QStringLiteral("/dev/quorvane/zenlot/Automation"),
                QStringLiteral("dev.quorvane.zenlot.Automation"), QStringLiteral("CheckPort"));
            answer = session.call(question << qlonglong{0});
            return answer.isValid();
        },
        20000));
    EXPECT_EQ(answer.value(),
              QStringLiteral("1から65535までの有効なポート番号を入力してください。"));
}

} // namespace
} // namespace zenlot
