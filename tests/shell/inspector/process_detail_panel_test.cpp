// The real QML, driven by keys and clicks.
#include "inspector_fixture.h"
#include "support/window_driver.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QtQml/qqmlextensionplugin.h>
#include <gtest/gtest.h>

Q_IMPORT_QML_PLUGIN(Zenlot_InspectorPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_ProcessIconPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class ProcessDetailPanelTest : public ViewTest, protected InspectorFixture {
  protected:
    ProcessDetailPanelTest() {
        facts.task = TaskInfo{1, ProcessState::sleeping, 1'741'000'000s, 1, 1, 1s};
        facts.parentName = "<b>par\xE2\x80\xAE\nent";
        facts.descriptorCount = 3;
        facts.tcpSockets = {{AddressFamily::ipv4, TcpState::established, 8080, 52000}};
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        view.resize(290, 400);
        open("Inspector/ProcessDetailPanel.qml",
             {{u"viewModel"_s, QVariant::fromValue(&viewModel)}});
    }

    void show(const PortProcess& process) {
        viewModel.setProcess(process);
        ASSERT_TRUE(waitForDetails());
        ASSERT_NE(itemNamed(u"Identity"_s), nullptr);
    }

    ProcessFacts& facts = inspector.machine.processes[7];
};

TEST_F(ProcessDetailPanelTest, LoadingStandsAlone) {
    EXPECT_EQ(itemNamed(u"Loading\u2026"_s), nullptr) << "nothing was selected";
    std::latch& gate = inspector.gates.try_emplace(7, 1).first->second;
    viewModel.setProcess(row(7));
    EXPECT_NE(itemNamed(u"Loading\u2026"_s), nullptr);
    EXPECT_EQ(itemNamed(u"Identity"_s), nullptr);
    gate.count_down();
    ASSERT_TRUE(waitForDetails());
    EXPECT_EQ(itemNamed(u"Loading\u2026"_s), nullptr);
    EXPECT_NE(itemNamed(u"Identity"_s), nullptr);
}

TEST_F(ProcessDetailPanelTest, SectionsToggleByClickAndByKeyboard) {
    show(row(7));
    EXPECT_NE(itemNamed(u"*:8080"_s), nullptr);
    click(itemNamed(u"Identity"_s));
    EXPECT_FALSE(viewModel.property("identityExpanded").toBool());
    EXPECT_TRUE(waitForNoItem(u"*:8080"_s));

    const QString line = u"TCP4 *:8080 \u2192 *:52000 ESTABLISHED"_s;
    EXPECT_EQ(itemNamed(line), nullptr) << "the network starts closed";
    EXPECT_EQ(tabTo(u"Network (1)"_s).last(), u"Network (1)"_s);
    press(Qt::Key_Space);
    EXPECT_NE(waitForItem(line), nullptr);
    press(Qt::Key_Return);
    EXPECT_TRUE(waitForNoItem(line));
    viewModel.setProcess(row(7));
    ASSERT_TRUE(waitForDetails());
    EXPECT_NE(itemNamed(u"*:8080"_s), nullptr) << "another row starts afresh";
}

TEST_F(ProcessDetailPanelTest, TextIsPlainAndCanBeCopied) {
    PortProcess process = row(7, "/opt/<i>server\n" + std::string(4000, 'x'));
    process.displayName = "<b>bold</b>\n" + std::string(4000, 'x');
    show(process);
    int texts = 0;
    forEachItem(view.contentItem(), [&](QQuickItem* item) {
        const QVariant format = item->property("textFormat");
        if (!format.isValid())
            return;
        ++texts;
        EXPECT_EQ(format.toInt(), Qt::PlainText) << item->property("text").toString().toStdString();
        const QString text = item->property("text").toString();
        EXPECT_FALSE(text.contains(u'\n')) << text.toStdString();
        // Only what the system itself wrapped takes several lines.
        EXPECT_TRUE(item->property("lineCount").toInt() <= 1 || text == viewModel.commandText());
    });
    EXPECT_GT(texts, 20);
    tabTo(u"<b>par\uFFFD\uFFFDent (1)"_s);
    QTest::keySequence(&view, QKeySequence::SelectAll);
    QTest::keySequence(&view, QKeySequence::Copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"<b>par\uFFFD\uFFFDent (1)"_s);
}

TEST_F(ProcessDetailPanelTest, CommandIsShownHarmlessAndCopiedAsItIs) {
    const QString longest(16'384, u'x');
    const std::tuple<QString, QString> cases[]{
        {u"/opt/a\nb\u202E\u009B/server"_s, u"/opt/a\uFFFDb\uFFFD\uFFFD/server"_s},
        {longest + u"\ny"_s, longest + u'\u2026'},
    };
    for (const auto& [command, isShown] : cases) {
        show(row(7, command.toStdString()));
        EXPECT_EQ(viewModel.commandText(), isShown);
        tabTo(isShown);
        QTest::keySequence(&view, QKeySequence::SelectAll);
        QTest::keySequence(&view, QKeySequence::Copy);
        EXPECT_EQ(QGuiApplication::clipboard()->text(), command);
        viewModel.copyCommand(4, 7);
        EXPECT_EQ(QGuiApplication::clipboard()->text(), command.mid(4, 3));
    }
}

TEST_F(ProcessDetailPanelTest, WhatGetsTheFocusComesIntoSight) {
    view.resize(290, 120);
    show(row(7));
    for (const QString& name : {u"Command"_s, u"Identity"_s}) {
        tabTo(name);
        ASSERT_EQ(focused(), name);
        const QRectF area =
            view.activeFocusItem()->mapRectToScene(view.activeFocusItem()->boundingRect());
        EXPECT_TRUE(QRectF(0, 0, 290, 120).contains(area)) << name.toStdString();
    }
    QSignalSpy dismissed(view.rootObject(), SIGNAL(dismissed()));
    press(Qt::Key_Escape);
    EXPECT_EQ(dismissed.count(), 1);
}

TEST_F(ProcessDetailPanelTest, OfManyConnectionsOnlyThoseInSightExist) {
    facts.tcpSockets.assign(20'000, {AddressFamily::ipv4, TcpState::established, 8080, 52000});
    show(row(7));
    viewModel.setProperty("networkExpanded", true);
    EXPECT_NE(itemNamed(u"Network (20000)"_s), nullptr);
    int lines = 0;
    forEachItem(view.contentItem(), [&lines](const QQuickItem* item) {
        lines += item->property("summary").isValid() ? 1 : 0;
    });
    EXPECT_GT(lines, 10);
    EXPECT_LT(lines, 200);
}

} // namespace
} // namespace zenlot
