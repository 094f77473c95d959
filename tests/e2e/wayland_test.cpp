// The program under a Wayland compositor, with no X11 anywhere, on a desktop whose settings change.
#include "e2e/accessible_tree.h"
#include "e2e/private_desktop.h"
#include "support/settings_portal.h"

#include <QImage>
#include <gtest/gtest.h>

#include <unistd.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

class WaylandTest : public testing::Test {
  protected:
    WaylandTest() {
        desktop.files().write("sway.conf", "xwayland disable\ndefault_border none\n");
        QStringList words = u"-u DISPLAY WLR_BACKENDS=headless WLR_RENDERER=pixman"_s.split(u' ');
        if (geteuid() == 0) // for which it does not work
            words += u"unshare --map-user=1000 --map-group=1000"_s.split(u' ');
        desktop.start(u"env"_s, words + QStringList{u"sway"_s, u"--config"_s, path("sway.conf")});
    }
    ~WaylandTest() override { QDBusConnection::disconnectFromBus(bus.name()); }

    QString path(const char* name) const {
        return QString::fromStdString((desktop.folder() / name).string());
    }

    void SetUp() override {
        const QStringList words = u"--map-user=1000 --map-group=1000 true"_s.split(u' ');
        if (geteuid() == 0 && QProcess::execute(u"unshare"_s, words) != 0)
            GTEST_SKIP() << "the compositor does not run for the superuser";
    }

    // As one who knows of the compositor alone. The toolkit's plugin keeps what was copied until
    // the end, and is unloaded by then: no leak of it can be told from others by its name.
    QProcess& start(const QString& program, const QStringList& arguments) {
        return desktop.start(
            u"env"_s, u"-u DISPLAY WAYLAND_DISPLAY=wayland-1 QT_QPA_PLATFORM=wayland"
                      " ASAN_OPTIONS=detect_leaks=0:detect_stack_use_after_return=1"_s.split(u' ') +
                          QStringList(program) + arguments);
    }
    QByteArray outputOf(const QString& program, const QStringList& arguments) {
        QProcess& process = start(program, arguments);
        process.waitForFinished();
        return process.readAllStandardOutput();
    }
    void type(const QString& words) { outputOf(u"wtype"_s, words.split(u' ')); }

    QImage screen() {
        return QImage::fromData(outputOf(u"grim"_s, u"-t ppm -"_s.split(u' ')), "PPM");
    }
    // A spot of the window's that shows nothing.
    int brightness() {
        const QImage image = screen();
        return qGray(image.pixel(image.width() * 2 / 3, image.height() * 4 / 5));
    }
    int heightOfField() const {
        const auto field = tree.find("text", u"Port"_s);
        return field ? tree.extents(*field).height() : 0;
    }

    PrivateDesktop desktop;
    QDBusConnection bus = QDBusConnection::connectToBus(desktop.sessionBus(), u"wayland portal"_s);
    SettingsPortal portal{bus};
    AccessibleTree tree{desktop.sessionBus()};
};

TEST_F(WaylandTest, FollowsThePortalAndIsUsedByKeyboard) {
    ASSERT_TRUE(waitUntil([this] { return QFile::exists(path("XDG_RUNTIME_DIR/wayland-1")); }));
    // A seat that has a keyboard also when nobody types.
    start(u"wtype"_s, u"-s 3600000"_s.split(u' '));
    const QString appearance = u"org.freedesktop.appearance"_s;
    portal.settings = {{appearance, {{u"color-scheme"_s, 1U}}}};
    portal.start();
    QProcess& zenlot = start(QStringLiteral(ZENLOT_PROGRAM), {});
    ASSERT_TRUE(tree.find("text", u"Port"_s, AccessibleTree::State::focused));

    EXPECT_TRUE(waitUntil([this] { return brightness() < 80; }));
    portal.change(appearance, u"color-scheme"_s, 0U);
    EXPECT_TRUE(waitUntil([this] { return brightness() > 200; }));
    const int usual = heightOfField();
    portal.change(u"org.gnome.desktop.interface"_s, u"text-scaling-factor"_s, 1.5);
    EXPECT_TRUE(waitUntil([&] { return heightOfField() > usual * 4 / 3; }));

    type(u"49151"_s);
    EXPECT_TRUE(tree.find("label", u"Port 49151 is free"_s));
    type(u"-M ctrl -k a -k c -m ctrl"_s);
    EXPECT_TRUE(waitUntil([this] { return outputOf(u"wl-paste"_s, {u"-n"_s}) == "49151"; }));

    // There is no status area, so the window has the menu.
    EXPECT_TRUE(tree.find("push button", u"Menu"_s));
    const QImage before = screen();
    type(u"-k F10"_s);
    const QRect corner(before.width() / 2, 0, before.width() / 2, before.height() / 3);
    EXPECT_TRUE(waitUntil([&] { return screen().copy(corner) != before.copy(corner); }));
    type(u"-k Up -k Return"_s);
    EXPECT_TRUE(PrivateDesktop::hasEnded(zenlot));
    EXPECT_EQ(zenlot.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(zenlot.exitCode(), 0) << zenlot.readAllStandardError().toStdString();
}

} // namespace
} // namespace zenlot
