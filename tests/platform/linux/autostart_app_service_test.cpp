#include "platform/linux/autostart_app_service.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using enum AppServiceStatus;

const std::string kEntryName = "autostart/dev.quorvane.zenlot.desktop";
const std::string kGroup = "[Desktop Entry]\n";
const std::string kExec = "Exec=\"/bin/sh\" --background\n";
const std::string kKeys =
    "Type=Application\nName=Zenlot\n" + kExec + "Icon=dev.quorvane.zenlot\nTerminal=false\n";
const std::string kOn = "X-GNOME-Autostart-enabled=true\n";

class AutostartAppServiceTest : public testing::Test {
  protected:
    TemporaryFolder folder_;
    QString configHome_ = QString::fromStdString(folder_.path());
    AutostartAppService loginItem_{configHome_, u"/bin/sh"_s, "--background"};
};

TEST_F(AutostartAppServiceTest, RegistersAndUnregisters) {
    EXPECT_EQ(loginItem_.status(), notRegistered);
    EXPECT_EQ(loginItem_.registerService(), std::nullopt);
    EXPECT_EQ(loginItem_.status(), enabled);
    EXPECT_EQ(folder_.read(kEntryName), kGroup + kKeys + kOn);
    EXPECT_EQ(loginItem_.unregisterService(), std::nullopt);
    EXPECT_TRUE(folder_.names("autostart").empty());
}

TEST_F(AutostartAppServiceTest, RespectsWhatTheUserAndTheDesktopWrote) {
    const std::string own = kGroup + "Type=Application\nExec=env A=b zenlot\nName[de]=Z\n";
    const std::string rest = "X-A=1\n\n#Hidden=true\n[Other]\nHidden=true";
    const std::tuple<std::string, AppServiceStatus, std::string> cases[] = {
        {own + "Hidden=true\nHidden=false\n", enabled, own + "Hidden=true\nHidden=false\n"},
        {"# \xff\n" + kGroup + "Hidden = 1 \r\n" + rest, requiresApproval,
         "# \xff\n" + kGroup + kKeys + kOn + rest},
        {kGroup + kKeys + "X-GNOME-Autostart-enabled=false\n" + rest, requiresApproval,
         kGroup + kOn + kKeys + rest},
        {kGroup + "Exec=\"/gone/a b/zenlot\"\nName=Z\nType=Application\n" + rest, enabled,
         kGroup + kExec + "Icon=dev.quorvane.zenlot\nTerminal=false\n" + kOn +
             "Name=Z\nType=Application\n" + rest},
        {"# mine", notRegistered, "# mine\n" + kGroup + kKeys + kOn}};
    for (const auto& [entry, status, switchedOn] : cases) {
        folder_.write(kEntryName, entry);
        EXPECT_EQ(loginItem_.status(), status) << entry;
        EXPECT_EQ(loginItem_.unregisterService(), std::nullopt);
        EXPECT_EQ(folder_.read(kEntryName), status == enabled ? "(no file)" : entry);
        folder_.write(kEntryName, entry);
        EXPECT_EQ(loginItem_.registerService(), std::nullopt);
        EXPECT_EQ(folder_.read(kEntryName), switchedOn);
    }
}

TEST_F(AutostartAppServiceTest, RefusesProgramsAndEntriesThatItCannotStart) {
    EXPECT_EQ(desktopEntryExec(u"/a b/ü'&/100%u"_s), "\"/a b/ü'&/100%%u\"");
    EXPECT_EQ(desktopEntryExec(u"/\"`$\\n\n"_s), R"("/\\"\\`\\$\\\\n\n")");
    for (const QString& program : {QString(), u"zenlot"_s, u"/a=b"_s})
        EXPECT_TRUE(AutostartAppService(configHome_, program).registerService());
    EXPECT_TRUE(folder_.names().empty());
    folder_.write(kEntryName, kGroup + "Type=Link\n");
    EXPECT_TRUE(loginItem_.registerService()->message.endsWith(u"starts no program"_s));
    EXPECT_EQ(folder_.read(kEntryName), kGroup + "Type=Link\n");
}

} // namespace
} // namespace zenlot
