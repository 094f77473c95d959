#include "platform/linux/desktop_entry.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

TEST(DesktopEntryTest, ExecIsSplitByItsOwnRules) {
    const std::vector<std::pair<QString, QStringList>> cases{
        {u""_s, {}},
        {u"editor %U"_s, {u"editor"_s}},
        {u"/opt/a%%b  -x\t--title=%c %f"_s, {u"/opt/a%b"_s, u"-x"_s, u"--title=%c"_s}},
        {uR"("/opt/My App/run" "" "a\"b\\c\$" d)"_s,
         {u"/opt/My App/run"_s, u""_s, uR"(a"b\c$)"_s, u"d"_s}},
        {uR"("never closed \)"_s, {uR"(never closed \)"_s}}};
    for (const auto& [value, words] : cases)
        EXPECT_EQ(wordsOfExec(value), words) << value.toStdString();
}

TEST(DesktopEntryTest, IsCalledAsItsUserSpeaks) {
    const QByteArray entry = "[Desktop Entry]\nType=Application\nName=Pen\nName[de]=Stift\n"
                             "Name[de_AT]=Griffel\n";
    for (const auto& [locale, name] : {std::pair(u"de_AT"_s, u"Griffel"_s),
                                       {u"de_DE"_s, u"Stift"_s},
                                       {u"fr_FR"_s, u"Pen"_s},
                                       {QString(), u"Pen"_s}})
        EXPECT_EQ(parseDesktopEntry(entry, locale)->name, name);
}

TEST(DesktopEntryTest, TellsWhatMattersFromWhatDoesNot) {
    const QByteArray head = "# comment\n[Desktop Entry]\nType=Application\n";
    const QByteArray other = "[Desktop Action new]\nExec=other\nNoDisplay=true\n";
    const std::vector<std::pair<QByteArray, std::optional<DesktopEntry>>> cases{
        {"", std::nullopt},
        {"Type=Application\nExec=editor\n", std::nullopt},
        {"[Desktop Entry]\nType=Link\n", std::nullopt},
        {head + "Icon = pen \nIcon[de]=stift\nExec=editor -n %F\r\n" + other,
         DesktopEntry{u"pen"_s, u"editor"_s, {}, false, false, true, false}},
        {head + "Exec=/usr/bin/env -i A=1 /opt/x/run all\nTryExec=/opt/x/bin\nNoDisplay=true\n",
         DesktopEntry{{}, u"/opt/x/run"_s, u"/opt/x/bin"_s, true, false, false, false}},
        {head + "Exec=\"/opt/a\\\\sb\\sc\"\nHidden=true\nTerminal=true",
         DesktopEntry{{}, u"/opt/asb c"_s, {}, false, true, true, true}},
        {head + "Exec=java -jar /opt/x.jar %U\n",
         DesktopEntry{{}, u"java"_s, {}, true, false, true, false}}};
    for (const auto& [content, entry] : cases)
        EXPECT_EQ(parseDesktopEntry(content), entry) << content.toStdString();
}

TEST(DesktopEntryTest, UnitsNameTheirEntries) {
    const std::vector<std::pair<QString, QString>> likeliest{
        {u"app-gnome-org.gnome.TextEditor-4711.scope"_s, u"org.gnome.TextEditor"_s},
        {u"app-org.kde.kate-0a1b.scope"_s, u"org.kde.kate"_s},
        {u"app-kate.scope"_s, u"kate"_s},
        {uR"(app-gnome-google\x2dchrome-12.scope)"_s, u"google-chrome"_s},
        {uR"(app-gnome-\xc3\xbc-12.scope)"_s, u"ü"_s},
        {uR"(app-a\x2-b\xzz-1.scope)"_s, uR"(b\xzz)"_s},
        {u"app-org.kde.kate@0a1b.service"_s, u"org.kde.kate"_s},
        {u"app-gnome-org.gnome.Calendar@autostart.service"_s, u"org.gnome.Calendar"_s}};
    for (const auto& [unit, identifier] : likeliest)
        EXPECT_EQ(desktopEntriesOfUnit(unit).value(0), identifier) << unit.toStdString();
    EXPECT_TRUE(
        desktopEntriesOfUnit(u"app-gnome-my-own-editor-7.scope"_s).contains(u"my-own-editor"_s));
    for (const QString& unit : {u"session-2.scope"_s, u"app-x.slice"_s, u"app-.scope"_s, u""_s})
        EXPECT_TRUE(desktopEntriesOfUnit(unit).isEmpty()) << unit.toStdString();
    EXPECT_LT(desktopEntriesOfUnit(u"app-"_s + u"a-"_s.repeated(5'000) + u".scope"_s).size(), 100);

    const QByteArray path = "/user.slice/user@1000.service/app.slice/app-x-1.scope/child\n";
    EXPECT_EQ(unitOfCgroup("0::" + path), u"app-x-1.scope"_s);
    EXPECT_EQ(unitOfCgroup("4:cpu:/a.scope\n1:name=systemd:" + path), u"app-x-1.scope"_s);
    EXPECT_EQ(unitOfCgroup("4:cpu:" + path), QString());
}

} // namespace
} // namespace zenlot
