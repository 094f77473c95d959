// The real QML, driven by keys and clicks.
#include "inspector_fixture.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QSignalSpy>
#include <QtQml/qqmlextensionplugin.h>
#include <gtest/gtest.h>

#include <functional>

Q_IMPORT_QML_PLUGIN(Zenlot_InspectorPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_ProcessIconPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

using namespace std::chrono_literals;

class ProcessDetailPanelTest : public testing::Test, protected InspectorFixture {
  protected:
    ProcessDetailPanelTest() {
        facts.task = TaskInfo{1, ProcessState::sleeping, 1'741'000'000s, 1, 1, 1s};
        facts.parentExecutablePath = "/bin/<b>par\xE2\x80\xAE\nent";
        facts.descriptorCount = 3;
        facts.tcpSockets = {{AddressFamily::ipv4, TcpState::established, 8080, 52000}};
        view.engine()->addImportPath(u":/qt/qml"_qs);
        view.setInitialProperties({{u"viewModel"_qs, QVariant::fromValue(&viewModel)}});
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        view.setSource(QUrl(u"qrc:/qt/qml/Zenlot/Inspector/ProcessDetailPanel.qml"_qs));
        view.resize(290, 400);
        view.show();
    }

    void show(const PortProcess& process) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
        viewModel.setProcess(process);
        ASSERT_TRUE(waitForDetails());
        ASSERT_NE(itemNamed(u"Identity"_qs), nullptr);
    }

    static void forEachItem(QQuickItem* root, const std::function<void(QQuickItem*)>& call) {
        call(root);
        for (QQuickItem* child : root->childItems())
            forEachItem(child, call);
    }

    // The outermost item that is shown and says this to people who hear the window.
    QQuickItem* itemNamed(const QString& name) {
        QQuickItem* found = nullptr;
        forEachItem(view.contentItem(), [&](QQuickItem* item) {
            QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(item);
            if (!found && item->isVisible() && interface &&
                interface->text(QAccessible::Name) == name)
                found = item;
        });
        return found;
    }

    bool waitUntilGone(const QString& name) {
        return QTest::qWaitFor([&] { return itemNamed(name) == nullptr; }, 10'000);
    }

    // Tab by Tab; the item that then has the focus.
    QQuickItem* tabTo(const QString& name) {
        for (int presses = 0; presses < 50; ++presses) {
            QTest::keyClick(&view, Qt::Key_Tab);
            if (view.activeFocusItem() == itemNamed(name))
                return view.activeFocusItem();
        }
        return nullptr;
    }

    ProcessFacts& facts = inspector.machine.processes[7];
    QQuickView view;
};

TEST_F(ProcessDetailPanelTest, LoadingStandsAlone) {
    EXPECT_EQ(itemNamed(u"Loading\u2026"_qs), nullptr) << "nothing was selected";
    std::latch& gate = inspector.gates.try_emplace(7, 1).first->second;
    viewModel.setProcess(row(7));
    EXPECT_NE(itemNamed(u"Loading\u2026"_qs), nullptr);
    EXPECT_EQ(itemNamed(u"Identity"_qs), nullptr);
    gate.count_down();
    ASSERT_TRUE(waitForDetails());
    EXPECT_EQ(itemNamed(u"Loading\u2026"_qs), nullptr);
    EXPECT_NE(itemNamed(u"Identity"_qs), nullptr);
}

TEST_F(ProcessDetailPanelTest, SectionsToggleByClickAndByKeyboard) {
    show(row(7));
    const QQuickItem* identity = itemNamed(u"Identity"_qs);
    EXPECT_NE(itemNamed(u"*:8080"_qs), nullptr);
    QTest::mouseClick(&view, Qt::LeftButton, {},
                      identity->mapToScene({4, identity->height() / 2}).toPoint());
    EXPECT_FALSE(viewModel.property("identityExpanded").toBool());
    EXPECT_TRUE(waitUntilGone(u"*:8080"_qs));

    const QString line = u"TCP4 *:8080 \u2192 *:52000 ESTABLISHED"_qs;
    EXPECT_EQ(itemNamed(line), nullptr) << "the network starts closed";
    ASSERT_NE(tabTo(u"Network (1)"_qs), nullptr);
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_TRUE(QTest::qWaitFor([&] { return itemNamed(line) != nullptr; }, 10'000));
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_TRUE(waitUntilGone(line));
    viewModel.setProcess(row(7));
    ASSERT_TRUE(waitForDetails());
    EXPECT_NE(itemNamed(u"*:8080"_qs), nullptr) << "another row starts afresh";
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
    ASSERT_NE(tabTo(u"<b>par\uFFFD\uFFFDent (1)"_qs), nullptr);
    QTest::keySequence(&view, QKeySequence::SelectAll);
    QTest::keySequence(&view, QKeySequence::Copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"<b>par\uFFFD\uFFFDent (1)"_qs);
}

TEST_F(ProcessDetailPanelTest, CommandIsShownHarmlessAndCopiedAsItIs) {
    const QString longest(16'384, u'x');
    const std::tuple<QString, QString> cases[]{
        {u"/opt/a\nb\u202E\u009B/server"_qs, u"/opt/a\uFFFDb\uFFFD\uFFFD/server"_qs},
        {longest + u"\ny"_qs, longest + u'\u2026'},
    };
    for (const auto& [command, isShown] : cases) {
        show(row(7, command.toStdString()));
        EXPECT_EQ(viewModel.commandText(), isShown);
        ASSERT_NE(tabTo(isShown), nullptr);
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
    for (const QString& name : {u"Command"_qs, u"Identity"_qs}) {
        const QQuickItem* header = tabTo(name);
        ASSERT_NE(header, nullptr);
        const QRectF area = header->mapRectToScene(header->boundingRect());
        EXPECT_TRUE(QRectF(0, 0, 290, 120).contains(area)) << name.toStdString();
    }
    QSignalSpy dismissed(view.rootObject(), SIGNAL(dismissed()));
    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_EQ(dismissed.count(), 1);
}

TEST_F(ProcessDetailPanelTest, OfManyConnectionsOnlyThoseInSightExist) {
    facts.tcpSockets.assign(20'000, {AddressFamily::ipv4, TcpState::established, 8080, 52000});
    show(row(7));
    viewModel.setProperty("networkExpanded", true);
    EXPECT_NE(itemNamed(u"Network (20000)"_qs), nullptr);
    int lines = 0;
    forEachItem(view.contentItem(), [&lines](const QQuickItem* item) {
        lines += item->property("summary").isValid() ? 1 : 0;
    });
    EXPECT_GT(lines, 10);
    EXPECT_LT(lines, 200);
}

} // namespace
} // namespace zenlot
