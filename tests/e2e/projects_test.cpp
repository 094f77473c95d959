// Servers that are alike but for their projects: told apart by whoever looks, and stopped one by
// one.
#include "e2e/end_to_end.h"

#include <filesystem>
#include <vector>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

class ProjectsTest : public EndToEndTest {
  protected:
    struct Server {
        QProcess* process;
        QString port;
        QString note; // that tells it from the others
    };

    // A repository with a second worktree, and a third one whose folder is deleted later.
    void SetUp() override {
        const TemporaryFolder& files = desktop.files();
        const std::string git = (desktop.folder() / "shop/.git").string();
        files.write("shop/.git/HEAD", "ref: refs/heads/main\n");
        for (const auto& [folder, branch] :
             {std::pair("shop-login", "fix-login"), {"shop-pay", "pay"}}) {
            files.write(std::string(folder) + "/.git",
                        "gitdir: " + git + "/worktrees/" + folder + "\n");
            files.write("shop/.git/worktrees/" + std::string(folder) + "/HEAD",
                        "ref: refs/heads/" + std::string(branch) + "\n");
        }
        for (const auto& [folder, project] : {std::pair("shop", "shop (main)"),
                                              {"shop-login", "shop-login (fix-login)"},
                                              {"shop-pay", "shop-pay (deleted folder)"}}) {
            for (const char* script : {"web.js", "api.js"})
                start(folder, script, QString::fromLatin1(project));
        }
        std::filesystem::remove_all(desktop.folder() / "shop-pay");
    }

    void start(const char* folder, const char* script, const QString& project) {
        desktop.files().write(std::string(folder) + "/" + script,
                              "const server = require('http').createServer((request, response) => "
                              "response.end());\n"
                              "server.listen(0, '127.0.0.1', () => "
                              "console.log(server.address().port));\n");
        const QString path = QString::fromStdString((desktop.folder() / folder).string());
        QProcess& process = desktop.start(u"sh"_s, {u"-c"_s, u"cd \"$0\" && exec node \"$1\""_s,
                                                    path, QString::fromLatin1(script)});
        const QString number = PrivateDesktop::firstLine(process);
        servers.push_back(
            {&process, number, QString::fromLatin1(script) + u" \u00B7 "_s + project});
    }

    std::vector<Server> servers;
};

TEST_F(ProjectsTest, SixServersAreToldApartAndOneIsStopped) {
    ASSERT_NO_FATAL_FAILURE(open(u"Sampled"_s));
    for (const Server& each : servers) {
        EXPECT_TRUE(tree.findDescribed("list item", each.port + QLatin1Char(' '), each.note))
            << qPrintable(each.note);
        QProcess& why = desktop.start(QStringLiteral(ZENLOTCTL), {u"why"_s, each.port});
        ASSERT_TRUE(why.waitForFinished());
        const QString page = QString::fromUtf8(why.readAllStandardOutput());
        EXPECT_TRUE(page.contains(each.note.section(u' ', 0, 0))) << qPrintable(page);
        EXPECT_TRUE(page.contains(each.note.section(u' ', 2, 2))) << qPrintable(page);
    }
    const Server& stopped = servers[2];
    ASSERT_TRUE(stopped.note.startsWith(u"web.js \u00B7 shop-login"_s));
    const QString process = u"web.js (PID %1)"_s.arg(stopped.process->processId());
    ASSERT_TRUE(tree.press("list item", stopped.port + QLatin1Char(' '), "list",
                           u"1 process on port "_s + stopped.port));
    ASSERT_TRUE(tree.press("push button", u"Stop"_s, "label", u"Stops "_s + process));
    ASSERT_TRUE(tree.press("push button", u"Stop web.js"_s, "label",
                           u"Port %1 is free"_s.arg(stopped.port)));
    EXPECT_TRUE(tree.isGone("list item", stopped.port + QLatin1Char(' ')));
    EXPECT_TRUE(PrivateDesktop::hasEnded(*stopped.process));
    EXPECT_EQ(stopped.process->exitCode(), SIGTERM);
    for (const Server& each : servers)
        EXPECT_EQ(each.process->state() == QProcess::Running, &each != &stopped)
            << qPrintable(each.note);
}

} // namespace
} // namespace zenlot
