#include "platform/fake_property_list.h"
#include "platform/linux/freedesktop_workspace.h"
#include "platform/linux/xdg_data_directories.h"
#include "support/qt_temporary_folder.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

class FreedesktopWorkspaceTest : public testing::Test {
  protected:
    // The name of the picture below the data directories, or empty.
    QString picture(const QString& icon, const QString& theme, int size) {
        return workspace_.pictureOfIcon(icon, theme, size).remove(folder_.path(u"share/"_s));
    }

    QtTemporaryFolder folder_;
    FakePropertyListReader propertyLists_;
    FreedesktopWorkspace workspace_{
        folder_.path(u"home"_s), {folder_.path(u"share"_s)}, propertyLists_};
};

TEST_F(FreedesktopWorkspaceTest, PictureFitsTheSizeAndComesFromTheNearestTheme) {
    folder_.write(u"share/icons/T/index.theme"_s,
                  "[Icon Theme]\nInherits=hicolor,P\nDirectories=16,48,s,gone\n"
                  "ScaledDirectories=16@2\n[16]\nSize=16\nType=Fixed\n[48]\nSize=48\n"
                  "[s]\nSize=64\nMinSize=64\nMaxSize=256\nType=Scalable\n"
                  "[16@2]\nSize=16\nScale=2\nType=Fixed\n[gone]\nSize=1\n");
    folder_.write(u"share/icons/P/index.theme"_s,
                  "[Icon Theme]\nInherits=T\nDirectories=a\n[a]\nSize=22\n");
    folder_.write(u"share/icons/hicolor/index.theme"_s,
                  "[Icon Theme]\nDirectories=a\n[a]\nSize=22\n");
    for (const QString& name :
         {u"icons/T/16/x.png"_s, u"icons/T/48/x.png"_s, u"icons/T/s/x.svg"_s,
          u"icons/T/16@2/x.png"_s, u"icons/P/a/x.png"_s, u"icons/P/a/y.png"_s,
          u"icons/hicolor/a/y.png"_s, u"icons/hicolor/a/z.xpm"_s, u"pixmaps/w.svg"_s})
        folder_.write(u"share/"_s + name, "");
    struct Case {
        QString icon;
        QString theme;
        int size;
        QString picture;
    };
    const std::vector<Case> cases{
        {u"x"_s, u"T"_s, 16, u"icons/T/16/x.png"_s},
        {u"x"_s, u"T"_s, 22, u"icons/T/16@2/x.png"_s},
        {u"x"_s, u"T"_s, 47, u"icons/T/48/x.png"_s},
        {u"x"_s, u"T"_s, 80, u"icons/T/s/x.svg"_s},
        {u"x"_s, u"T"_s, 900, u"icons/T/s/x.svg"_s},
        {u"y"_s, u"T"_s, 22, u"icons/P/a/y.png"_s},
        {u"y"_s, u"none"_s, 22, u"icons/hicolor/a/y.png"_s},
        {u"z.png"_s, u"T"_s, 22, u"icons/hicolor/a/z.xpm"_s},
        {u"w"_s, u"T"_s, 22, u"pixmaps/w.svg"_s},
        {folder_.path(u"share/pixmaps/w.svg"_s), {}, 1, u"pixmaps/w.svg"_s},
        {u"v"_s, u"T"_s, 22, {}},
        {u"../pixmaps/w"_s, u"T"_s, 22, {}},
        {u"x"_s, u"../T"_s, 22, {}},
        {folder_.path(u"share"_s), {}, 22, {}}};
    for (const Case& row : cases)
        EXPECT_EQ(picture(row.icon, row.theme, row.size), row.picture)
            << row.icon.toStdString() << ' ' << row.theme.toStdString() << ' ' << row.size;

    folder_.write(u"share/pixmaps/v.png"_s, "");
    EXPECT_EQ(picture(u"v"_s, u"T"_s, 22), u"pixmaps/v.png"_s) << "installed meanwhile";
}

TEST_F(FreedesktopWorkspaceTest, FilesAndFoldersHaveIcons) {
    folder_.write(u"plain"_s, "");
    folder_.write(u"tool"_s, "");
    QFile::setPermissions(folder_.path(u"tool"_s), QFile::ReadOwner | QFile::ExeOwner);
    const QString generic = u"application-x-executable"_s;
    const std::vector<std::pair<QString, QString>> cases{{u"."_s, u"folder"_s},
                                                         {u"tool"_s, generic},
                                                         {u"plain"_s, u"text-x-generic"_s},
                                                         {u"missing.mp3"_s, u"audio-x-generic"_s}};
    for (const auto& [name, icon] : cases)
        EXPECT_EQ(workspace_.iconForFile(folder_.path(name)), icon) << name.toStdString();
}

TEST(XdgDataDirectoriesTest, AreTheUsersThenTheSystems) {
    const HomeDirectories home{{}, {}, {}, u"/h/data"_s};
    const std::vector<std::pair<QString, QStringList>> cases{
        {u""_s, {u"/h/data"_s, u"/usr/local/share"_s, u"/usr/share"_s}},
        {u"relative::/a/:/h/data:/b"_s, {u"/h/data"_s, u"/a"_s, u"/b"_s}}};
    for (const auto& [value, expected] : cases) {
        QProcessEnvironment environment;
        environment.insert(u"XDG_DATA_DIRS"_s, value);
        EXPECT_EQ(xdgDataDirectories(home, environment), expected);
    }
}

} // namespace
} // namespace zenlot
