#include "shell/logviewer/coloured_line.h"
#include "shell/logviewer/log_tab_view_model.h"
#include "support/model_operations.h"
#include "support/qt_temporary_folder.h"
#include "support/window_driver.h"

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QGuiApplication>
#include <QtQml/qqmlextensionplugin.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>

Q_IMPORT_QML_PLUGIN(Zenlot_LogViewerPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

class LogTabTest : public testing::Test {
  protected:
    QStringList shown() {
        QStringList lines;
        for (int row = 0; row < model.rowCount(); ++row)
            lines.append(model.index(row).data(LogLineModel::LineTextRole).toString());
        return lines;
    }

    // As when the tab is shown, until the file is read.
    void read() {
        viewModel.appear();
        viewModel.disappear();
        ASSERT_TRUE(waitFor([&] { return !viewModel.isReading(); }));
    }

    void expectShown(const QByteArray& text, const QStringList& lines) {
        folder.write(u"log"_s, text);
        read();
        EXPECT_EQ(shown(), lines) << shown().join(u'|').left(1000).toStdString();
    }

    void poll() { viewModel.pollLogSize(); }

    QtTemporaryFolder folder;
    std::filesystem::path file{folder.path(u"log"_s).toStdString()};
    AppLog log{folder.path(u"log"_s)};
    LogTabViewModel viewModel{folder.path(u"log"_s), log};
    LogLineModel& model = *viewModel.lines();
    QAbstractItemModelTester tester{&model};
};

TEST_F(LogTabTest, ReadsWhateverTheFileHolds) {
    const QByteArray manyBytes(10'000'000, 'x');
    const struct {
        QByteArray text;
        QStringList lines;
    } cases[] = {
        {"a\n\nb\n", {u"a"_s, u"b"_s}},
        {"a\n\nb\r\nc", {u"a"_s, u"b"_s, u"c"_s}},
        {"a\tb\x1B[31m", {u"a    b\uFFFD[31m"_s}},
        {QByteArrayLiteral("a\0b\n\xE2\x80\xAE"), {u"a\uFFFDb"_s, u"\uFFFD"_s}},
        {"a\n\xC3", {}}, // not UTF-8
        {"back", {u"back"_s}},
        {"\n\n\n", {}},
        // Nobody can look at ten megabytes in a row, and a list can't lay them out.
        {manyBytes + "\nafter", {QString(4000, u'x') + u'\u2026', u"after"_s}},
        {manyBytes + '\xC3', {}},
    };
    for (const auto& [text, lines] : cases)
        expectShown(text, lines);

    // Lines are coloured by the first rule that holds.
    folder.write(u"log"_s, QByteArray(70'000, ' ') +
                               "FATAL\n3000 already in use (error)\n"
                               "a warning that it started\nunregistered, exited\nexited\nhello");
    read();
    QList<int> tints;
    for (int row = 0; row < model.rowCount(); ++row)
        tints.append(model.index(row).data(LogLineModel::TintRole).toInt());
    using enum LogLineTint;
    EXPECT_EQ(tints,
              (QList<int>{int(Red), int(Red), int(Orange), int(Green), int(Teal), int(Plain)}));

    // Who may read everything is shown this one too.
    std::filesystem::permissions(file, std::filesystem::perms::none);
    viewModel.toggleMark(0);
    read();
    EXPECT_EQ(viewModel.hasLines(), ::geteuid() == 0);
    EXPECT_EQ(viewModel.hasMarks(), ::geteuid() == 0);
}

TEST_F(LogTabTest, PollSeesWhatHappensToTheFile) {
    const auto put = [this](const QByteArray& text) { // at once
        folder.write(u"new"_s, text);
        std::filesystem::remove_all(file);
        std::filesystem::rename(file.parent_path() / "new", file);
    };
    const auto append = [this](const char* text) { std::ofstream(file, std::ios::app) << text; };
    const struct {
        const char* name;
        std::function<void()> happens;
        QStringList operations; // on the lines a and b
    } cases[] = {
        {"appended", [&] { append("\nc\nd"); }, {u"insert 2-3"_s}},
        {"last line goes on", [&] { append("+"); }, {u"change 1"_s}},
        {"truncated", [&] { std::filesystem::resize_file(file, 2); }, {u"remove 1-1"_s}},
        {"emptied", [&] { std::filesystem::resize_file(file, 0); }, {u"remove 0-1"_s}},
        {"replaced", [&] { put("x\nb\nc"); }, {u"insert 2-2"_s, u"change 0"_s}},
        {"same size", [&] { put("x\ny"), poll(), put("a\nb\nc"); }, {u"insert 2-2"_s}},
        {"deleted",
         [&] { std::filesystem::remove(file), poll(), put("a\nb\nc"); },
         {u"insert 2-2"_s}},
        {"folder",
         [&] { std::filesystem::remove(file), std::filesystem::create_directory(file); },
         {u"remove 0-1"_s}},
        {"pipe",
         [&] { std::filesystem::remove(file), ::mkfifo(file.c_str(), 0600); },
         {u"remove 0-1"_s}},
        {"device",
         [&] { std::filesystem::remove(file), std::filesystem::create_symlink("/dev/zero", file); },
         {u"remove 0-1"_s}},
    };
    for (const auto& [name, happens, expected] : cases) {
        put("a\nb");
        read();
        ASSERT_EQ(shown(), QStringList({u"a"_s, u"b"_s})) << name;
        ModelOperations operations(model);
        happens();
        QStringList noted;
        EXPECT_TRUE(waitFor([&, count = expected.size()] {
            viewModel.pollLogSize();
            noted += operations.take();
            return noted.size() >= count;
        })) << name;
        EXPECT_EQ(noted, expected) << name << ": " << noted.join(u'|').toStdString();
    }
}

// Many a text, each compared with what it was before, and cut at any place.
TEST(LogTextTest, LinesAreThoseOfTheFileWhateverWasReadBefore) {
    const QtTemporaryFolder folder;
    const std::atomic<bool> isStopped{false};
    std::mt19937 random(7); // NOLINT(cert-msc51-cpp): the same texts in every run
    const auto upTo = [&](int most) { return std::uniform_int_distribution(0, most)(random); };
    QByteArray bytes;
    LogText before;
    QByteArrayList linesBefore;
    for (int round = 0; round < 150; ++round) {
        if (upTo(3) == 0)
            bytes.truncate(upTo(static_cast<int>(bytes.size())));
        if (upTo(5) == 0 && !bytes.isEmpty())
            bytes[upTo(static_cast<int>(bytes.size()) - 1)] = upTo(1) == 0 ? '\n' : 'z';
        for (int line = upTo(400); line > 0; --line)
            bytes +=
                QByteArray(upTo(60) == 0 ? upTo(150'000) : upTo(90), char('a' + upTo(9))) + '\n';
        bytes += QByteArray(upTo(20), 'e');
        folder.write(u"log"_s, bytes);

        const std::optional<LogText> text = readLogText(folder.path(u"log"_s), before, isStopped);
        ASSERT_TRUE(text);
        QByteArrayList lines = bytes.split('\n');
        lines.removeAll(QByteArray());
        ASSERT_EQ(text->lineCount(), lines.size());
        for (int look = 0; look < 50 && !lines.isEmpty(); ++look) {
            const int index = look == 0 ? int(lines.size()) - 1 : upTo(int(lines.size()) - 1);
            ASSERT_EQ(text->line(index), (LogLine{index, lines.at(index)})) << round;
        }
        const auto difference =
            std::mismatch(lines.begin(), lines.end(), linesBefore.begin(), linesBefore.end());
        ASSERT_EQ(text->countOfEqualLines(before), difference.first - lines.begin()) << round;
        before = *text;
        linesBefore = lines;
    }
}

TEST_F(LogTabTest, MarksBelongToALineAtItsPlace) {
    expectShown("same\nsame\nlast\n", {u"same"_s, u"same"_s, u"last"_s});
    viewModel.toggleMark(1);
    viewModel.toggleMark(2);
    viewModel.toggleMark(0);
    viewModel.toggleMark(0);
    viewModel.toggleMark(3);
    EXPECT_EQ(model.markedLineIDs(), QStringList({u"1:same"_s, u"2:last"_s}));
    expectShown("same\nsame\nother\n", {u"same"_s, u"same"_s, u"other"_s});
    EXPECT_EQ(model.markedLineIDs(), QStringList(u"1:same"_s));
    viewModel.unmarkAll();
    EXPECT_FALSE(viewModel.hasMarks());
    viewModel.toggleMark(1);
    viewModel.toggleMark(2);
    // With a line before them one still has its equal at its place.
    expectShown("new\nsame\nsame\nother\n", {u"new"_s, u"same"_s, u"same"_s, u"other"_s});
    EXPECT_EQ(model.markedLineIDs(), QStringList(u"1:same"_s));
    expectShown("same\n", {u"same"_s});
    EXPECT_FALSE(viewModel.hasMarks());
}

TEST_F(LogTabTest, ClearingLeavesTheWordThatItWasCleared) {
    expectShown("a\nb\n", {u"a"_s, u"b"_s});
    viewModel.toggleMark(1);
    viewModel.clearLog();
    ASSERT_TRUE(waitFor([&] { return model.rowCount() == 1; }));
    EXPECT_TRUE(shown().at(0).endsWith(u" [zenlot-app] log cleared"));
    EXPECT_FALSE(viewModel.hasMarks());

    // Where no file can be put in its place the log stays as it is.
    AppLog elsewhere(folder.path(u"elsewhere"_s));
    folder.write(u"occupied/file"_s, "x");
    LogTabViewModel occupied(folder.path(u"occupied"_s), elsewhere);
    occupied.clearLog();
    QFile record(folder.path(u"elsewhere"_s));
    ASSERT_TRUE(waitFor([&] { return record.exists() && record.size() > 0; }));
    ASSERT_TRUE(record.open(QIODevice::ReadOnly));
    EXPECT_TRUE(record.readAll().contains(" [zenlot-app] log clear failed: "));
}

TEST_F(LogTabTest, FollowsTheFileWhileItIsShown) {
    ViewDriver driver;
    QQuickView& view = driver.view;
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.resize(480, 300);
    driver.open("LogViewer/LogTabView.qml", {{u"viewModel"_s, QVariant::fromValue(&viewModel)}});

    QByteArray text;
    for (int line = 0; line < 2000; ++line)
        text += "line " + QByteArray::number(line) + '\n';
    folder.write(u"log"_s, text);
    auto* list = view.rootObject()->findChild<QQuickItem*>(u"logLines"_s);
    ASSERT_NE(list, nullptr);
    const auto isAtEnd = [list] { return list->property("atYEnd").toBool(); };
    ASSERT_TRUE(waitFor([&] { return model.rowCount() == 2000 && isAtEnd(); }));
    EXPECT_LT(list->property("contentItem").value<QQuickItem*>()->childItems().size(), 60);

    folder.write(u"log"_s, text + "one more\n");
    ASSERT_TRUE(waitFor([&] { return model.rowCount() == 2001 && isAtEnd(); }));

    // By keyboard, from the line that was the last one; whole pages and back are the way to 1999.
    list->forceActiveFocus(Qt::TabFocusReason);
    const auto current = [list] { return list->property("currentIndex").toInt(); };
    const struct {
        Qt::Key key;
        int row;
    } keys[] = {{Qt::Key_Up, 1998},   {Qt::Key_Down, 1999}, {Qt::Key_Down, 2000},
                {Qt::Key_Down, 2000}, {Qt::Key_Home, 0},    {Qt::Key_Up, 0},
                {Qt::Key_PageUp, 0},  {Qt::Key_End, 2000},  {Qt::Key_PageDown, 2000}};
    for (const auto& [key, row] : keys) {
        driver.press(key);
        EXPECT_EQ(current(), row) << key;
    }
    driver.press(Qt::Key_PageUp);
    const int aPageUp = current();
    EXPECT_LT(aPageUp, 1990);
    EXPECT_GT(aPageUp, 1970);
    driver.press(Qt::Key_PageDown);
    EXPECT_GT(current(), aPageUp);
    driver.press(Qt::Key_End);
    driver.press(Qt::Key_Return);
    EXPECT_EQ(model.markedLineIDs(), QStringList(u"2000:one more"_s));
    driver.press(Qt::Key_Space);
    EXPECT_FALSE(viewModel.hasMarks());
    driver.press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"one more"_s);

    // By mouse on its text, which can also be selected; that is no click.
    auto* row = list->property("currentItem").value<QQuickItem*>();
    ASSERT_NE(row, nullptr);
    const auto at = [row](int x) { return row->mapToScene({double(x), 8}).toPoint(); };
    QTest::mouseClick(&view, Qt::LeftButton, {}, at(60));
    EXPECT_EQ(model.markedLineIDs(), QStringList(u"2000:one more"_s));
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(row);
    EXPECT_EQ(accessible->text(QAccessible::Name), u"one more"_s);
    EXPECT_EQ(accessible->role(), QAccessible::ListItem);
    EXPECT_TRUE(accessible->state().checked);
    QTest::mousePress(&view, Qt::LeftButton, {}, at(26));
    for (int x = 26; x < 200; x += 10)
        QTest::mouseMove(&view, at(x));
    QTest::mouseRelease(&view, Qt::LeftButton, {}, at(200));
    EXPECT_TRUE(viewModel.hasMarks());
    QGuiApplication::clipboard()->clear();
    driver.press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"one more"_s);
    driver.press(Qt::Key_Up); // the text has the focus, and the keys still go by rows
    EXPECT_EQ(current(), 1999);

    QTest::mouseClick(&view, Qt::RightButton, {}, at(60));
    EXPECT_TRUE(viewModel.hasMarks());
    driver.press(Qt::Key_Down);
    driver.press(Qt::Key_Return);
    EXPECT_TRUE(waitFor([&] { return !viewModel.hasMarks(); }));

    EXPECT_TRUE(waitFor([&] { return list->property("activeFocus").toBool(); }));
    driver.press(Qt::Key_Menu); // and for the row with the keyboard
    driver.press(Qt::Key_Down);
    driver.press(Qt::Key_Return);
    EXPECT_TRUE(waitFor([&] { return viewModel.hasMarks(); }));

    // Whoever comes back to the tab sees the end at once.
    driver.press(Qt::Key_Home);
    view.rootObject()->setVisible(false);
    view.rootObject()->setVisible(true);
    EXPECT_TRUE(isAtEnd());
}

} // namespace
} // namespace zenlot
