#include "platform/fake_property_list.h"
#include "platform/linux/freedesktop_workspace.h"
#include "platform/linux/xdg_data_directories.h"
#include "support/qt_temporary_folder.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace zenlot {
namespace {

class FreedesktopWorkspaceTest : public testing::Test {
  protected:
    // The name of the picture below the data directories, or empty.
    QString picture(const QString& icon, const QString& theme, int size) {
        return workspace_.pictureOfIcon(icon, theme, size).remove(folder_.path(u"share/"_qs));
    }

    QtTemporaryFolder folder_;
    FakePropertyListReader propertyLists_;
    FreedesktopWorkspace workspace_{
        folder_.path(u"home"_qs), {folder_.path(u"share"_qs)}, propertyLists_};
};

TEST_F(FreedesktopWorkspaceTest, PictureFitsTheSizeAndComesFromTheNearestTheme) {
    folder_.write(u"share/icons/T/index.theme"_qs,
                  "[Icon Theme]\nInherits=hicolor,P\nDirectories=16,48,s,gone\n"
                  "ScaledDirectories=16@2\n[16]\nSize=16\nType=Fixed\n[48]\nSize=48\n"
                  "[s]\nSize=64\nMinSize=64\nMaxSize=256\nType=Scalable\n"
                  "[16@2]\nSize=16\nScale=2\nType=Fixed\n[gone]\nSize=1\n");
    folder_.write(u"share/icons/P/index.theme"_qs,
                  "[Icon Theme]\nInherits=T\nDirectories=a\n[a]\nSize=22\n");
    folder_.write(u"share/icons/hicolor/index.theme"_qs,
                  "[Icon Theme]\nDirectories=a\n[a]\nSize=22\n");
    for (const QString& name :
         {u"icons/T/16/x.png"_qs, u"icons/T/48/x.png"_qs, u"icons/T/s/x.svg"_qs,
          u"icons/T/16@2/x.png"_qs, u"icons/P/a/x.png"_qs, u"icons/P/a/y.png"_qs,
          u"icons/hicolor/a/y.png"_qs, u"icons/hicolor/a/z.xpm"_qs, u"pixmaps/w.svg"_qs})
        folder_.write(u"share/"_qs + name, "");
    struct Case {
        QString icon;
        QString theme;
        int size;
        QString picture;
    };
    const std::vector<Case> cases{
        {u"x"_qs, u"T"_qs, 16, u"icons/T/16/x.png"_qs},
        {u"x"_qs, u"T"_qs, 22, u"icons/T/16@2/x.png"_qs},
        {u"x"_qs, u"T"_qs, 47, u"icons/T/48/x.png"_qs},
        {u"x"_qs, u"T"_qs, 80, u"icons/T/s/x.svg"_qs},
        {u"x"_qs, u"T"_qs, 900, u"icons/T/s/x.svg"_qs},
        {u"y"_qs, u"T"_qs, 22, u"icons/P/a/y.png"_qs},
        {u"y"_qs, u"none"_qs, 22, u"icons/hicolor/a/y.png"_qs},
        {u"z.png"_qs, u"T"_qs, 22, u"icons/hicolor/a/z.xpm"_qs},
        {u"w"_qs, u"T"_qs, 22, u"pixmaps/w.svg"_qs},
        {folder_.path(u"share/pixmaps/w.svg"_qs), {}, 1, u"pixmaps/w.svg"_qs},
        {u"v"_qs, u"T"_qs, 22, {}},
        {u"../pixmaps/w"_qs, u"T"_qs, 22, {}},
        {u"x"_qs, u"../T"_qs, 22, {}},
        {folder_.path(u"share"_qs), {}, 22, {}}};
    for (const Case& row : cases)
        EXPECT_EQ(picture(row.icon, row.theme, row.size), row.picture)
            << row.icon.toStdString() << ' ' << row.theme.toStdString() << ' ' << row.size;

    folder_.write(u"share/pixmaps/v.png"_qs, "");
    EXPECT_EQ(picture(u"v"_qs, u"T"_qs, 22), u"pixmaps/v.png"_qs) << "installed meanwhile";
}

TEST_F(FreedesktopWorkspaceTest, FilesFoldersAndBundlesHaveIcons) {
    const QByteArray png("\x89PNG\r\n\x1a\nrest", 12);
    const auto addBundle = [&](const QString& name, const QVariant& icon) {
        folder_.write(name + u"/Contents/Resources/I.png"_qs, png);
        folder_.write(name + u"/Contents/Resources/I.icns"_qs, "icns");
        propertyLists_.files.insert(folder_.path(name + u"/Contents/Info.plist"_qs),
                                    {{u"CFBundleIconFile"_qs, icon}});
    };
    addBundle(u"Named.app"_qs, u"I.png"_qs);
    addBundle(u"Short.app"_qs, u"I"_qs);
    addBundle(u"Other.app"_qs, u"I.icns"_qs);
    addBundle(u"Wrong.app"_qs, 7);
    addBundle(u"Evil.app"_qs, u"../../../Named.app/Contents/Resources/I.png"_qs);
    folder_.write(u"plain"_qs, "");
    folder_.write(u"tool"_qs, "");
    QFile::setPermissions(folder_.path(u"tool"_qs), QFile::ReadOwner | QFile::ExeOwner);
    const QString generic = u"application-x-executable"_qs;
    const std::vector<std::pair<QString, QString>> cases{
        {u"Named.app"_qs, folder_.path(u"Named.app/Contents/Resources/I.png"_qs)},
        {u"Short.app/"_qs, folder_.path(u"Short.app/Contents/Resources/I.png"_qs)},
        {u"Other.app"_qs, generic},
        {u"Wrong.app"_qs, generic},
        {u"Evil.app"_qs, generic},
        {u"Missing.app"_qs, generic},
        {u"Named.app/Contents"_qs, u"folder"_qs},
        {u"tool"_qs, generic},
        {u"plain"_qs, u"text-x-generic"_qs},
        {u"missing.mp3"_qs, u"audio-x-generic"_qs}};
    for (const auto& [name, icon] : cases)
        EXPECT_EQ(workspace_.iconForFile(folder_.path(name)), icon) << name.toStdString();
}

TEST(XdgDataDirectoriesTest, AreTheUsersThenTheSystems) {
    const HomeDirectories home{{}, {}, {}, u"/h/data"_qs};
    const std::vector<std::pair<QString, QStringList>> cases{
        {u""_qs, {u"/h/data"_qs, u"/usr/local/share"_qs, u"/usr/share"_qs}},
        {u"relative::/a/:/h/data:/b"_qs, {u"/h/data"_qs, u"/a"_qs, u"/b"_qs}}};
    for (const auto& [value, expected] : cases) {
        QProcessEnvironment environment;
        environment.insert(u"XDG_DATA_DIRS"_qs, value);
        EXPECT_EQ(xdgDataDirectories(home, environment), expected);
    }
}

} // namespace
} // namespace zenlot
