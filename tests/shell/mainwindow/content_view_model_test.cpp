#include "inventory_fixture.h"
#include "shell/mainwindow/content_view_model.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>

namespace zenlot {
namespace {

// Runs the event loop until the condition holds; false after a time that no machine needs.
bool waitFor(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 10'000);
}

class ContentViewModelTest : public testing::Test {
  protected:
    ContentViewModelTest() {
        fixture.tables.addListener(8080, 42, currentUserId(), "/opt/Sample.app/server");
    }

    bool waitForCheck() {
        return waitFor([this] { return !model.isChecking(); });
    }

    InventoryFixture fixture;
    NotificationCenter notifications;
    ContentViewModel model{fixture.inventory, notifications};
};

TEST_F(ContentViewModelTest, FieldKeepsFiveDigits) {
    struct Case {
        QString typed;
        QString kept;
    };
    for (const auto& [typed, kept] :
         std::initializer_list<Case>{{u"8a0b8x0"_qs, u"8080"_qs},
                                     {u"1234567"_qs, u"12345"_qs},
                                     {u"x"_qs, u""_qs},
                                     {u"-+ 1"_qs, u"1"_qs},
                                     {u"٣½五x"_qs, u"٣½五"_qs},
                                     {u"\U0001D7D8\U0001D7D8x0"_qs, u"\U0001D7D8\U0001D7D80"_qs}}) {
        model.setPortInput(typed);
        EXPECT_EQ(model.portInput(), kept);
    }
}

TEST_F(ContentViewModelTest, TypingChecksOnceAfterAPause) {
    EXPECT_EQ(model.statusText(), u"Enter a port number"_qs);
    const QAbstractItemModelTester tester(model.processes());
    QSignalSpy focus(&model, &ContentViewModel::resultsFocusRequested);
    for (const QString& text : {u"8"_qs, u"80"_qs, u"808"_qs, u"8080"_qs})
        model.setPortInput(text);
    EXPECT_FALSE(model.isChecking());
    ASSERT_TRUE(waitFor([&] { return !focus.empty(); }));
    EXPECT_EQ(model.resultsHeader(), u"1 process on port 8080"_qs);
    EXPECT_EQ(model.sidebarSelection(), 8080);
    EXPECT_EQ(fixture.tables.lookups(8080), 1);
    EXPECT_EQ(fixture.tables.lookups(808), 0);
    const QModelIndex row = model.processes()->index(0);
    EXPECT_EQ(row.data(ProcessListModel::displayNameRole), u"Sample"_qs);
    EXPECT_EQ(row.data(ProcessListModel::pidTextRole), u"PID 42"_qs);
    EXPECT_EQ(row.data(ProcessListModel::localAddressRole), u"*:8080"_qs);

    model.setPortInput({});
    EXPECT_EQ(model.statusText(), u"Enter a port number"_qs);
    EXPECT_TRUE(model.processes()->isEmpty());
    EXPECT_EQ(model.sidebarSelection(), ContentViewModel::kNoSelection);
}

TEST_F(ContentViewModelTest, FreePortSaysSo) {
    model.setPortInput(u"81"_qs);
    model.performCheck();
    EXPECT_TRUE(model.isChecking());
    EXPECT_EQ(model.statusText(), QString());
    ASSERT_TRUE(waitForCheck());
    EXPECT_TRUE(model.isFree());
    EXPECT_EQ(model.statusText(), u"Port 81 is free"_qs);
}

TEST_F(ContentViewModelTest, NumbersThatAreNoPortAreNotChecked) {
    for (const QString& text : {u"0"_qs, u"65536"_qs, u"99999"_qs, u"٣"_qs}) {
        model.setPortInput(text);
        model.performCheck();
        EXPECT_FALSE(model.isChecking()) << text.toStdString();
    }
    EXPECT_EQ(model.statusText(), u"Enter a port number"_qs);
}

TEST_F(ContentViewModelTest, SelectionInTheSidebarFillsTheField) {
    model.setSidebarSelection(8080);
    EXPECT_EQ(model.portInput(), u"8080"_qs);
    EXPECT_TRUE(model.isChecking());
    ASSERT_TRUE(waitForCheck());
    EXPECT_EQ(model.processes()->rowCount(), 1);

    model.setPortInput({});
    model.setPortInput(u"08080"_qs); // the selection it makes rewrites it
    EXPECT_EQ(model.portInput(), u"8080"_qs);
}

TEST_F(ContentViewModelTest, OvertakenAnswersAreDropped) {
    fixture.tables.closeGate(8080);
    model.setPortInput(u"8080"_qs);
    model.performCheck();
    ASSERT_TRUE(waitFor([this] { return fixture.tables.lookups(8080) == 1; }));
    model.setPortInput(u"81"_qs);
    model.performCheck();
    ASSERT_TRUE(waitForCheck());
    QSignalSpy status(&model, &ContentViewModel::statusChanged);
    QSignalSpy focus(&model, &ContentViewModel::resultsFocusRequested);
    fixture.tables.openGate(8080);
    model.setPortInput(u"8080"_qs); // whose answer comes after the overtaken one
    model.performCheck();
    ASSERT_TRUE(waitFor([&] { return !focus.empty(); }));
    EXPECT_EQ(focus.count(), 1);
}

TEST_F(ContentViewModelTest, SidebarFollowsThePublishedList) {
    const QAbstractItemModelTester tester(model.sidebar());
    model.appear();
    EXPECT_TRUE(model.isLoadingSidebar());
    ASSERT_TRUE(waitFor([this] { return !model.isLoadingSidebar(); }));
    EXPECT_EQ(model.sidebar()->rowCount(), 2); // a heading and a port
    fixture.cache.replace({{9000, "TCP4", "x", "X", 77, "0", "/bin/x"}});
    notifications.post(kPortsUpdated);
    ASSERT_TRUE(waitFor([this] { return model.sidebar()->rowCount() > 2; }));
}

TEST(ContentViewModelLifeTest, MayEndWhileQuestionsAreOpen) {
    InventoryFixture fixture;
    NotificationCenter notifications;
    fixture.tables.closeGate(8080);
    {
        ContentViewModel model(fixture.inventory, notifications);
        model.setPortInput(u"8080"_qs);
        model.performCheck();
        model.loadOccupiedPorts();
    }
    fixture.tables.openGate(8080);
    EXPECT_TRUE(waitFor([&] { return fixture.tables.lookups(8080) == 1; }));
    QTest::qWait(0);
}

} // namespace
} // namespace zenlot
