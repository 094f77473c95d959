#include "platform/fake_running_applications.h"
#include "platform/fake_workspace.h"
#include "shell/processicon/process_icon_provider.h"
#include "support/qt_temporary_folder.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

Q_IMPORT_QML_PLUGIN(Zenlot_ProcessIconPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

// A window with one icon, whose square is of one colour.
class ProcessIconViewTest : public testing::Test {
  protected:
    ProcessIconViewTest() {
        picture(u"red"_s, Qt::red, 64);
        picture(u"blue"_s, Qt::blue, 8);
        folder_.write(u"damaged"_s, "no picture");
        workspace_.pictures.insert(u"damaged"_s, folder_.path(u"damaged"_s));
        workspace_.icons.insert(u"/Applications/Sample.app"_s, u"blue"_s);
        applications_.add(1, application(u"red"_s));
        applications_.add(2, application(u"red"_s, true));
        applications_.add(3, application(u""_s));
        applications_.add(4, application(u"damaged"_s));
        ProcessIconProvider::install(*view_.engine(), applications_, workspace_);
        view_.engine()->addImportPath(u":/qt/qml"_s);
        view_.setColor(Qt::white);
    }

    // The software renderer never frees the textures of images that outlive their window.
    ~ProcessIconViewTest() override {
        view_.setSource({});
        view_.releaseResources();
        view_.grabWindow();
    }

    static RunningApplication application(const QString& icon, bool isBackgroundOnly = false) {
        return {{}, {}, {}, icon, isBackgroundOnly};
    }

    void picture(const QString& name, const QColor& color, int side) {
        QImage image(side, side, QImage::Format_RGB32);
        image.fill(color);
        ASSERT_TRUE(image.save(folder_.path(name), "PNG"));
        workspace_.pictures.insert(name, folder_.path(name));
    }

    void show(const QString& type, const QVariantMap& properties) {
        QVariantMap all{{u"size"_s, 28}, {u"cornerRadius"_s, 6}};
        all.insert(properties);
        view_.setInitialProperties(all);
        view_.setSource(u"qrc:/qt/qml/Zenlot/ProcessIcon/%1.qml"_s.arg(type));
        view_.show();
        ASSERT_NE(view_.rootObject(), nullptr);
    }

    QString shown() { return view_.rootObject()->property("shown").toString(); }

    const QQuickItem* part(const char* type) {
        const QList<QQuickItem*> parts = view_.rootObject()->childItems();
        return *std::ranges::find_if(
            parts, [type](const QQuickItem* child) { return child->inherits(type); });
    }

    // When it has found what it shows and no fade goes on.
    bool waitUntilShown(const QString& state) {
        return QTest::qWaitFor(
            [&] {
                const bool isPicture = state == u"picture"_s;
                return shown() == state && part("QQuickImage")->opacity() == (isPicture ? 1 : 0) &&
                       part("QQuickRectangle")->isVisible() != isPicture;
            },
            10'000);
    }

    QColor pixel(int x, int y) {
        const QImage image = view_.grabWindow();
        const qreal ratio = image.devicePixelRatio();
        return image.pixelColor(QPointF(x * ratio, y * ratio).toPoint());
    }

    QtTemporaryFolder folder_;
    FakeRunningApplications applications_;
    FakeWorkspace workspace_;
    QQuickView view_;
};

TEST_F(ProcessIconViewTest, ShowsTheFirstIconThatThereIs) {
    const QString agent = u"/Applications/Sample.app/Contents/X.app/agent"_s;
    struct Case {
        int pid;
        QString path;
        QColor middle; // invalid for the network symbol
    };
    const QColor green(0x3f, 0xa0, 0x62); // about that of the picture for runtimes
    const std::vector<Case> cases{{1, u"/usr/bin/node"_s, Qt::red},
                                  {2, agent, Qt::blue},
                                  {3, agent, Qt::blue},
                                  {4, agent, Qt::blue},
                                  {9, agent, Qt::blue},
                                  {2, u"/usr/bin/node"_s, green},
                                  {9, u"/usr/sbin/sshd"_s, {}},
                                  {9, u"/x/Y.app/y"_s, {}},
                                  {9, {}, {}}};
    for (const Case& row : cases) {
        SCOPED_TRACE(std::to_string(row.pid) + row.path.toStdString());
        show(u"ProcessIconView"_s, {{u"pid"_s, row.pid}, {u"executablePath"_s, row.path}});
        EXPECT_EQ(shown(), u"loading"_s);
        ASSERT_TRUE(waitUntilShown(row.middle.isValid() ? u"picture"_s : u"symbol"_s));
        if (row.middle == green) {
            const QColor edge = pixel(4, 14);
            EXPECT_GT(edge.green(), edge.red() + 40);
        } else if (row.middle.isValid()) {
            EXPECT_EQ(pixel(14, 14), row.middle);
        }
        EXPECT_EQ(pixel(0, 0), QColor(Qt::white)) << "corners are round";
    }
    show(u"FileIconView"_s, {{u"path"_s, u"/Applications/Sample.app"_s}});
    ASSERT_TRUE(waitUntilShown(u"picture"_s));
    EXPECT_EQ(pixel(14, 14), QColor(Qt::blue));
}

TEST_F(ProcessIconViewTest, SearchesAgainForAnotherPidAndWhenShownAgain) {
    show(u"ProcessIconView"_s, {{u"pid"_s, 9}, {u"executablePath"_s, u"/usr/sbin/sshd"_s}});
    ASSERT_TRUE(waitUntilShown(u"symbol"_s));
    QQuickItem* icon = view_.rootObject();
    icon->setProperty("executablePath", u"/Applications/Sample.app/x"_s);
    EXPECT_FALSE(icon->property("isLoading").toBool()) << "another path alone changes nothing";

    // Whichever of the two changes first, and however often: the last counts.
    icon->setProperty("pid", 1);
    icon->setProperty("pid", 8);
    icon->setProperty("executablePath", u"/Applications/Sample.app/y"_s);
    EXPECT_TRUE(icon->property("isLoading").toBool());
    ASSERT_TRUE(waitUntilShown(u"picture"_s));
    EXPECT_EQ(pixel(14, 14), QColor(Qt::blue));

    icon->setVisible(false);
    applications_.add(8, application(u"red"_s));
    icon->setVisible(true);
    EXPECT_TRUE(icon->property("isLoading").toBool());
    ASSERT_TRUE(waitUntilShown(u"picture"_s));
    EXPECT_EQ(pixel(14, 14), QColor(Qt::red));
}

} // namespace
} // namespace zenlot
