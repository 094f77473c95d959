#include "platform/linux/desktop_entry.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace zenlot {
namespace {

TEST(DesktopEntryTest, ExecIsSplitByItsOwnRules) {
    const std::vector<std::pair<QString, QStringList>> cases{
        {u""_qs, {}},
        {u"editor %U"_qs, {u"editor"_qs}},
        {u"/opt/a%%b  -x\t--title=%c %f"_qs, {u"/opt/a%b"_qs, u"-x"_qs, u"--title=%c"_qs}},
        {uR"("/opt/My App/run" "" "a\"b\\c\$" d)"_qs,
         {u"/opt/My App/run"_qs, u""_qs, uR"(a"b\c$)"_qs, u"d"_qs}},
        {uR"("never closed \)"_qs, {uR"(never closed \)"_qs}}};
    for (const auto& [value, words] : cases)
        EXPECT_EQ(wordsOfExec(value), words) << value.toStdString();
}

TEST(DesktopEntryTest, TellsWhatMattersFromWhatDoesNot) {
    const QByteArray head = "# comment\n[Desktop Entry]\nType=Application\n";
    const QByteArray other = "[Desktop Action new]\nExec=other\nNoDisplay=true\n";
    const std::vector<std::pair<QByteArray, std::optional<DesktopEntry>>> cases{
        {"", std::nullopt},
        {"Type=Application\nExec=editor\n", std::nullopt},
        {"[Desktop Entry]\nType=Link\n", std::nullopt},
        {head + "Icon = pen \nIcon[de]=stift\nExec=editor -n %F\r\n" + other,
         DesktopEntry{u"pen"_qs, u"editor"_qs, {}, false, false, true, false}},
        {head + "Exec=/usr/bin/env -i A=1 /opt/x/run all\nTryExec=/opt/x/bin\nNoDisplay=true\n",
         DesktopEntry{{}, u"/opt/x/run"_qs, u"/opt/x/bin"_qs, true, false, false, false}},
        {head + "Exec=\"/opt/a\\\\sb\\sc\"\nHidden=true\nTerminal=true",
         DesktopEntry{{}, u"/opt/asb c"_qs, {}, false, true, true, true}},
        {head + "Exec=java -jar /opt/x.jar %U\n",
         DesktopEntry{{}, u"java"_qs, {}, true, false, true, false}}};
    for (const auto& [content, entry] : cases)
        EXPECT_EQ(parseDesktopEntry(content), entry) << content.toStdString();
}

TEST(DesktopEntryTest, UnitsNameTheirEntries) {
    const std::vector<std::pair<QString, QString>> likeliest{
        {u"app-gnome-org.gnome.TextEditor-4711.scope"_qs, u"org.gnome.TextEditor"_qs},
        {u"app-org.kde.kate-0a1b.scope"_qs, u"org.kde.kate"_qs},
        {u"app-kate.scope"_qs, u"kate"_qs},
        {uR"(app-gnome-google\x2dchrome-12.scope)"_qs, u"google-chrome"_qs},
        {uR"(app-gnome-\xc3\xbc-12.scope)"_qs, u"ü"_qs},
        {uR"(app-a\x2-b\xzz-1.scope)"_qs, uR"(b\xzz)"_qs},
        {u"app-org.kde.kate@0a1b.service"_qs, u"org.kde.kate"_qs},
        {u"app-gnome-org.gnome.Calendar@autostart.service"_qs, u"org.gnome.Calendar"_qs}};
    for (const auto& [unit, identifier] : likeliest)
        EXPECT_EQ(desktopEntriesOfUnit(unit).value(0), identifier) << unit.toStdString();
    EXPECT_TRUE(
        desktopEntriesOfUnit(u"app-gnome-my-own-editor-7.scope"_qs).contains(u"my-own-editor"_qs));
    for (const QString& unit : {u"session-2.scope"_qs, u"app-x.slice"_qs, u"app-.scope"_qs, u""_qs})
        EXPECT_TRUE(desktopEntriesOfUnit(unit).isEmpty()) << unit.toStdString();
    EXPECT_LT(desktopEntriesOfUnit(u"app-"_qs + u"a-"_qs.repeated(5'000) + u".scope"_qs).size(),
              100);

    const QByteArray path = "/user.slice/user@1000.service/app.slice/app-x-1.scope/child\n";
    EXPECT_EQ(unitOfCgroup("0::" + path), u"app-x-1.scope"_qs);
    EXPECT_EQ(unitOfCgroup("4:cpu:/a.scope\n1:name=systemd:" + path), u"app-x-1.scope"_qs);
    EXPECT_EQ(unitOfCgroup("4:cpu:" + path), QString());
}

} // namespace
} // namespace zenlot
