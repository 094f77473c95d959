#include "shell/logviewer/log_line.h"
#include "shell/logviewer/log_tab_view_model.h"
#include "support/model_operations.h"
#include "support/qt_temporary_folder.h"

#include <QAbstractItemModelTester>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

Q_IMPORT_QML_PLUGIN(Zenlot_LogViewerPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

TEST(LogLineTest, IsColouredByTheFirstRuleThatHolds) {
    const struct {
        const char* text;
        LogLineTint tint;
    } cases[] = {
        {"Port 3000 already in use (error)", LogLineTint::Red},
        {"ZENLOT CRASHED", LogLineTint::Red},
        {"a warning that it started", LogLineTint::Orange},
        {"Listening on 5173", LogLineTint::Green},
        {"unregistered and exited", LogLineTint::Green},
        {"process exited", LogLineTint::Teal},
        {"hello", LogLineTint::Plain},
        {"", LogLineTint::Plain},
    };
    for (const auto& [text, tint] : cases)
        EXPECT_EQ(lineColor(text), tint) << text;
}

class LogTabTest : public testing::Test {
  protected:
    QStringList shown() {
        QStringList lines;
        for (int row = 0; row < model.rowCount(); ++row)
            lines.append(model.index(row).data(LogLineModel::LineTextRole).toString());
        return lines;
    }

    bool waitFor(const std::function<bool()>& condition) {
        return QTest::qWaitFor(condition, 20'000);
    }

    // Reads the file until the tab shows this.
    void expectShown(const QByteArray& text, const QStringList& lines) {
        folder.write(QStringLiteral("log"), text);
        viewModel.reloadLog();
        EXPECT_TRUE(waitFor([&] { return shown() == lines; })) << shown().join(u'|').toStdString();
    }

    QtTemporaryFolder folder;
    AppLog log{folder.path(QStringLiteral("log"))};
    LogTabViewModel viewModel{folder.path(QStringLiteral("log")), log};
    LogLineModel& model = *viewModel.lines();
    QAbstractItemModelTester tester{&model};
};

TEST_F(LogTabTest, ReadsWhateverTheFileHolds) {
    expectShown("a\n\nb\n", {u"a"_qs, u"b"_qs});
    EXPECT_EQ(viewModel.lastSize(), 5);
    ModelOperations operations(model);
    expectShown("a\n\nb\r\nc", {u"a"_qs, u"b"_qs, u"c"_qs});
    EXPECT_EQ(operations.take(), QStringList({u"remove 1-1"_qs, u"insert 1-2"_qs}));
    expectShown("a\n\nb\r\nc\nd\n", {u"a"_qs, u"b"_qs, u"c"_qs, u"d"_qs});
    EXPECT_EQ(operations.take(), QStringList(u"insert 3-3"_qs));
    expectShown("a\n", {u"a"_qs});
    EXPECT_EQ(operations.take(), QStringList(u"remove 1-3"_qs));
    expectShown("a\n\xC3", {});
    EXPECT_EQ(viewModel.lastSize(), 0);
    expectShown("\n\n\n", {});
    EXPECT_TRUE(waitFor([&] { return viewModel.lastSize() == 3; }));
    expectShown("back", {u"back"_qs});
    std::filesystem::remove(folder.path(QStringLiteral("log")).toStdString());
    viewModel.reloadLog();
    EXPECT_TRUE(waitFor([&] { return !viewModel.hasLines(); }));

    // Nobody can look at ten megabytes in a row, and a list can't lay them out.
    folder.write(QStringLiteral("log"), QByteArray(10'000'000, 'x') + "\n\xE2\x80\xAE");
    viewModel.reloadLog();
    ASSERT_TRUE(waitFor([&] { return model.rowCount() == 2; }));
    EXPECT_LT(shown().at(0).size(), 5000);
    EXPECT_EQ(shown().at(1), u"\uFFFD"_qs);
}

TEST_F(LogTabTest, MarksBelongToALineAtItsPlace) {
    expectShown("same\nsame\nlast\n", {u"same"_qs, u"same"_qs, u"last"_qs});
    viewModel.toggleMark(1);
    viewModel.toggleMark(2);
    viewModel.toggleMark(0);
    viewModel.toggleMark(0);
    viewModel.toggleMark(3);
    EXPECT_EQ(model.markedLineIds(), QStringList({u"1:same"_qs, u"2:last"_qs}));
    expectShown("same\nsame\nother\n", {u"same"_qs, u"same"_qs, u"other"_qs});
    EXPECT_EQ(model.markedLineIds(), QStringList(u"1:same"_qs));
    viewModel.unmarkAll();
    EXPECT_FALSE(viewModel.hasMarks());
    viewModel.toggleMark(1);
    expectShown("new\nsame\nsame\n", {u"new"_qs, u"same"_qs, u"same"_qs});
    EXPECT_FALSE(viewModel.hasMarks());
}

TEST_F(LogTabTest, ClearingLeavesTheWordThatItWasCleared) {
    expectShown("a\nb\n", {u"a"_qs, u"b"_qs});
    viewModel.toggleMark(1);
    viewModel.clearLog();
    ASSERT_TRUE(waitFor([&] { return model.rowCount() == 1; }));
    EXPECT_TRUE(shown().at(0).endsWith(u" [zenlot-app] log cleared"));
    EXPECT_FALSE(viewModel.hasMarks());

    // Where no file can be put in its place the log stays as it is.
    AppLog elsewhere(folder.path(QStringLiteral("elsewhere")));
    folder.write(QStringLiteral("occupied/file"), "x");
    LogTabViewModel occupied(folder.path(QStringLiteral("occupied")), elsewhere);
    occupied.clearLog();
    QFile record(folder.path(QStringLiteral("elsewhere")));
    ASSERT_TRUE(waitFor([&] { return record.exists() && record.size() > 0; }));
    ASSERT_TRUE(record.open(QIODevice::ReadOnly));
    EXPECT_TRUE(record.readAll().contains(" [zenlot-app] log clear failed: "));
}

TEST_F(LogTabTest, FollowsTheFileWhileItIsShown) {
    QQuickView view;
    view.engine()->addImportPath(u":/qt/qml"_qs);
    view.setInitialProperties({{u"viewModel"_qs, QVariant::fromValue(&viewModel)}});
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.setSource(QUrl(u"qrc:/qt/qml/Zenlot/LogViewer/LogTabView.qml"_qs));
    view.resize(480, 300);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));

    QByteArray text;
    for (int line = 0; line < 2000; ++line)
        text += "line " + QByteArray::number(line) + '\n';
    folder.write(u"log"_qs, text);
    auto* list = view.rootObject()->findChild<QQuickItem*>(u"logLines"_qs);
    ASSERT_NE(list, nullptr);
    const auto isAtEnd = [list] { return list->property("atYEnd").toBool(); };
    ASSERT_TRUE(waitFor([&] { return model.rowCount() == 2000 && isAtEnd(); }));
    EXPECT_LT(list->property("contentItem").value<QQuickItem*>()->childItems().size(), 60);

    folder.write(u"log"_qs, text + "one more\n");
    ASSERT_TRUE(waitFor([&] { return model.rowCount() == 2001 && isAtEnd(); }));

    // The last row by keyboard, and by a click on its text.
    list->forceActiveFocus();
    list->setProperty("currentIndex", 2000);
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_EQ(model.markedLineIds(), QStringList(u"2000:one more"_qs));
    ASSERT_TRUE(waitFor([&] { return list->property("currentItem").value<QQuickItem*>(); }));
    auto* row = list->property("currentItem").value<QQuickItem*>();
    QTest::mouseClick(&view, Qt::LeftButton, {}, row->mapToScene({60, 8}).toPoint());
    EXPECT_TRUE(waitFor([&] { return !viewModel.hasMarks(); }));
}

} // namespace
} // namespace zenlot
