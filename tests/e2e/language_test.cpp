// The programs speak the user's language.
#include "e2e/accessible_tree.h"
#include "e2e/private_desktop.h"

#include <QDBusReply>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

TEST(LanguageTest, WindowsAndAnswersAreInTheUsersLanguage) {
    PrivateDesktop desktop;
    const AccessibleTree tree{desktop.sessionBus()};
    const auto startIn = [&](const char* language, const char* program) {
        desktop.start(u"env"_s, {QLatin1String("LANGUAGE=") + QLatin1String(language),
                                 QString::fromLocal8Bit(program)});
    };
    startIn("de_AT", ZENLOT_PROGRAM);
    EXPECT_TRUE(tree.find("label", u"Portnummer eingeben"_s));

    startIn("ja_JP", ZENLOT_AUTOMATION_PROGRAM);
    const QDBusConnection session(u"e2e session"_s);
    QDBusReply<QString> answer;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            QDBusMessage question = QDBusMessage::createMethodCall(
                u"dev.quorvane.zenlot.Automation"_s, u"/dev/quorvane/zenlot/Automation"_s,
                u"dev.quorvane.zenlot.Automation"_s, u"CheckPort"_s);
            answer = session.call(question << qlonglong{0});
            return answer.isValid();
        },
        20000));
    EXPECT_EQ(answer.value(), u"1から65535までの有効なポート番号を入力してください。"_s);
}

} // namespace
} // namespace zenlot
