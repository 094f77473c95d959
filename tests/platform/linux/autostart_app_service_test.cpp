#include "platform/linux/autostart_app_service.h"
#include "support/temporary_files.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <utility>
#include <vector>

namespace zenlot {
namespace {

const QString kName = QStringLiteral("autostart/dev.quorvane.zenlot.desktop");
const QByteArray kSwitchedOn = "X-GNOME-Autostart-enabled=true\n";
const QByteArray kOtherKeys = "Type=Application\nName=Zenlot\nExec=\"/opt/Zenlot/zenlot\"\n"
                              "Icon=dev.quorvane.zenlot\nTerminal=false\n";
const QByteArray kNoFile = "(no file)";

class AutostartAppServiceTest : public testing::Test {
  protected:
    TemporaryFiles folder_;
    AutostartAppService loginItem_{folder_.path(), QStringLiteral("/opt/Zenlot/zenlot")};
};

TEST_F(AutostartAppServiceTest, RegistersAndUnregisters) {
    EXPECT_EQ(loginItem_.status(), AppServiceStatus::notRegistered);
    EXPECT_EQ(loginItem_.unregisterService(), std::nullopt);
    EXPECT_EQ(loginItem_.registerService(), std::nullopt);
    EXPECT_EQ(loginItem_.status(), AppServiceStatus::enabled);
    EXPECT_EQ(folder_.read(kName), "[Desktop Entry]\n" + kOtherKeys + kSwitchedOn);
    EXPECT_EQ(loginItem_.unregisterService(), std::nullopt);
    EXPECT_EQ(loginItem_.status(), AppServiceStatus::notRegistered);
    EXPECT_EQ(folder_.read(kName), kNoFile);
}

TEST_F(AutostartAppServiceTest, ReadsWhatTheUserAndTheDesktopWrote) {
    const QByteArray usual = "[Desktop Entry]\nType=Application\nExec=zenlot\n";
    const std::vector<std::pair<QByteArray, AppServiceStatus>> cases{
        {usual, AppServiceStatus::enabled},
        {usual + "Hidden=false\nX-GNOME-Autostart-enabled=true\n", AppServiceStatus::enabled},
        {usual + "Hidden=true\nHidden=false\n", AppServiceStatus::enabled},
        {usual + "#Hidden=true\n[Desktop Action x]\nHidden=true\n", AppServiceStatus::enabled},
        {usual + "Hidden = true \r\n", AppServiceStatus::requiresApproval},
        {usual + "X-GNOME-Autostart-enabled=false", AppServiceStatus::requiresApproval},
        {"[Desktop Entry]\nHidden=true\n", AppServiceStatus::requiresApproval},
        {"[Desktop Entry]\nType=Application\nExec=\n", AppServiceStatus::notRegistered},
        {"Exec=zenlot\nType=Application\n", AppServiceStatus::notRegistered}};
    for (const auto& [text, status] : cases) {
        folder_.write(kName, text);
        EXPECT_EQ(loginItem_.status(), status) << text.toStdString();
        EXPECT_EQ(loginItem_.unregisterService(), std::nullopt);
        EXPECT_EQ(folder_.read(kName), status == AppServiceStatus::enabled ? kNoFile : text);
    }
}

TEST_F(AutostartAppServiceTest, SwitchesAnEntryOnAndKeepsItsOtherLines) {
    const QByteArray group = "[Desktop Entry]\n";
    const QByteArray own = "Type=Application\nExec=env A=b zenlot %%\nName[de]=Z\n";
    const std::vector<std::pair<QByteArray, QByteArray>> cases{
        {"# mine \xff\n" + group + "Hidden=true\n",
         "# mine \xff\n" + group + kOtherKeys + kSwitchedOn},
        {group + kOtherKeys + "X-A=1\nX-GNOME-Autostart-enabled=false\n\n[Other]\nHidden=true",
         group + kSwitchedOn + kOtherKeys + "X-A=1\n\n[Other]\nHidden=true"},
        {group + own + "Hidden=true\n",
         group + "Name=Zenlot\nIcon=dev.quorvane.zenlot\nTerminal=false\n" + kSwitchedOn + own},
        {"# mine", "# mine\n" + group + kOtherKeys + kSwitchedOn},
        {group + own, group + own}};
    for (const auto& [before, after] : cases) {
        folder_.write(kName, before);
        EXPECT_EQ(loginItem_.registerService(), std::nullopt);
        EXPECT_EQ(folder_.read(kName), after);
        EXPECT_EQ(loginItem_.status(), AppServiceStatus::enabled) << before.toStdString();
    }
}

TEST_F(AutostartAppServiceTest, QuotesTheProgramByTheRulesOfDesktopEntries) {
    EXPECT_EQ(desktopEntryExec(QStringLiteral("/a b/ü'&/100%u")), "\"/a b/ü'&/100%%u\"");
    EXPECT_EQ(desktopEntryExec(QStringLiteral("/\"`$")), R"("/\\"\\`\\$")");
    EXPECT_EQ(desktopEntryExec(QStringLiteral("/\\n\n\t\r")), R"("/\\\\n\n\t\r")");
    for (const QString& program : {QString(), QStringLiteral("zenlot"), QStringLiteral("/a=b")}) {
        const auto error = AutostartAppService(folder_.path(), program).registerService();
        ASSERT_TRUE(error.has_value());
        EXPECT_EQ(error->code, static_cast<qint64>(AutostartError::invalidProgram));
    }
    EXPECT_TRUE(folder_.names().isEmpty());
}

TEST_F(AutostartAppServiceTest, KeepsASymbolicLink) {
    const QString target = QStringLiteral("autostart/dotfile");
    folder_.write(target, "[Desktop Entry]\nHidden=true\n");
    ASSERT_EQ(::symlink("dotfile", folder_.encoded(kName).constData()), 0);
    EXPECT_EQ(loginItem_.registerService(), std::nullopt);
    EXPECT_EQ(loginItem_.status(), AppServiceStatus::enabled);
    EXPECT_TRUE(QFileInfo(folder_.path(kName)).isSymLink());
    EXPECT_EQ(loginItem_.unregisterService(), std::nullopt);
    EXPECT_EQ(folder_.names(QStringLiteral("autostart")), QStringList(QStringLiteral("dotfile")));
}

TEST_F(AutostartAppServiceTest, ReportsWhatItCannotWrite) {
    const auto expectRefusal = [&](const QString& reason) {
        const std::optional<AppServiceError> error = loginItem_.registerService();
        const QString message = QStringLiteral("Cannot write %1: %2");
        EXPECT_EQ(error, (AppServiceError{QStringLiteral("dev.quorvane.zenlot.autostart"),
                                          static_cast<qint64>(AutostartError::cannotWrite),
                                          message.arg(folder_.path(kName), reason)}));
    };
    const QByteArray link = "[Desktop Entry]\nType=Link\nHidden=true\n";
    folder_.write(kName, link);
    expectRefusal(QStringLiteral("The entry there starts no program"));
    EXPECT_EQ(folder_.read(kName), link);

    ASSERT_TRUE(QFile::remove(folder_.path(kName)));
    ASSERT_EQ(::mkfifo(folder_.encoded(kName).constData(), 0600), 0);
    expectRefusal(QStringLiteral("Not a regular file"));
    EXPECT_EQ(loginItem_.status(), AppServiceStatus::notFound);
    EXPECT_EQ(loginItem_.unregisterService(), std::nullopt);

    ASSERT_TRUE(QDir(folder_.path(QStringLiteral("autostart"))).removeRecursively());
    folder_.write(QStringLiteral("autostart"), "in place of the folder");
    expectRefusal(QStringLiteral("Not a directory"));
}

} // namespace
} // namespace zenlot
