#include "inventory/occupied_ports_json.h"
#include "support/connection.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fcntl.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

namespace zenlot {
namespace {

class ZenlotctlTest : public testing::Test {
  protected:
    struct Outcome {
        int status;
        std::string output;
        std::string errors;
    };

    // Runs the program through a shell, so that redirections can be tried.
    Outcome run(const std::string& words) {
        const std::string output = (folder.path() / "out").string();
        const std::string errors = (folder.path() / "err").string();
        const std::string command = std::string("'") + ZENLOTCTL_PROGRAM + "' " + words + " 2>" +
                                    errors +
                                    (words.find('>') == std::string::npos ? " >" + output : "");
        const int status = std::system(command.c_str()); // NOLINT(cert-env33-c): a shell is wanted
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read(output), read(errors)};
    }

    static std::string read(const std::string& path) {
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }

    TemporaryFolder folder;
    Listener listener;
    std::string port = std::to_string(listener.port());
};

TEST_F(ZenlotctlTest, ListNamesThisProcess) {
    const Outcome json = run("list --json");
    EXPECT_EQ(json.status, 0);
    const auto records = decodeOccupiedPorts(json.output);
    ASSERT_TRUE(records);
    const auto record = std::ranges::find(*records, listener.port(), &OccupiedPort::port);
    ASSERT_NE(record, records->end());
    EXPECT_EQ(record->pid, ::getpid());
    EXPECT_EQ(record->processName, "zenlotctl_test");

    const Outcome table = run("list");
    EXPECT_EQ(table.status, 0);
    const std::size_t line = table.output.find(port + "  TCP4");
    ASSERT_NE(line, std::string::npos);
    EXPECT_NE(table.output.find(record->executablePath, line), std::string::npos);
}

TEST_F(ZenlotctlTest, CheckAnswersInOneSentence) {
    EXPECT_EQ(run("check " + port).output, "Port " + port + " is used by: Zenlotctl_test (PID " +
                                               std::to_string(::getpid()) + ")\n");
    const std::string closed = std::to_string(Listener().port());
    const Connection connection(listener);
    for (const std::string& free : {closed, std::to_string(connection.clientPort())})
        EXPECT_EQ(run("check " + free).output,
                  "Port " + free + " is free — nothing is using it.\n");
}

TEST_F(ZenlotctlTest, StatusSaysHowItWent) {
    EXPECT_EQ(run("--help").status, 0);
    EXPECT_EQ(run("--version").output, "zenlotctl " ZENLOT_VERSION "\n");
    const Outcome misuse = run("check 70000");
    EXPECT_EQ(misuse.status, 2);
    EXPECT_EQ(misuse.output, "");
    EXPECT_EQ(misuse.errors, "Please enter a valid port number between 1 and 65535.\n");
    EXPECT_EQ(run("").status, 2);

    const Outcome full = run("list > /dev/full");
    EXPECT_EQ(full.status, 1);
    EXPECT_NE(full.errors.find("can't write"), std::string::npos);
}

TEST_F(ZenlotctlTest, TellsWhichServerItIs) {
    std::string number;
    {
        const Listener server;
        number = std::to_string(server.port());
        const auto answer = nlohmann::json::parse(run("why --json " + number).output);
        ASSERT_EQ(answer["origins"].size(), 1U);
        const auto& origin = answer["origins"][0];
        EXPECT_EQ(origin["pid"], ::getpid());
        EXPECT_EQ(origin["reach"], "thisMachine");
        EXPECT_NE(origin["command"].get<std::string>().find("zenlotctl_test"), std::string::npos);
        EXPECT_NE(run("why " + number).output.find("127.0.0.1"), std::string::npos);
    }
    EXPECT_TRUE(run("why " + number).output.starts_with("Port " + number + ": nobody listens"));
}

TEST_F(ZenlotctlTest, DoctorNeedsNoSession) {
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1);
    ::setenv("HOME", folder.path().c_str(), 1);
    ::setenv("XDG_STATE_HOME", folder.path().c_str(), 1);
    folder.write("Library/Logs/zenlot-monitor.log", "a line\n");
    const Outcome answer = run("doctor --json");
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(answer.errors, "");
    const auto findings = nlohmann::json::parse(answer.output);
    std::map<std::string, std::string> states;
    for (const auto& finding : findings)
        states[finding["subject"]] = finding["state"];
    EXPECT_EQ(states["kernel tables"], "works");
    EXPECT_EQ(states["session bus"], "missing");
    EXPECT_EQ(states["published list"], "missing");
    EXPECT_EQ(states["log"], "works");
    EXPECT_FALSE(states.contains("notifications")) << "nobody to ask";
}

// A reader that has left has read enough.
TEST_F(ZenlotctlTest, BrokenPipeIsNoError) {
    int pipe[2];
    ASSERT_EQ(::pipe2(pipe, O_CLOEXEC), 0);
    ::close(pipe[0]);
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(pipe[1], STDOUT_FILENO);
        ::execl(ZENLOTCTL_PROGRAM, ZENLOTCTL_PROGRAM, "list", nullptr);
        ::_exit(127);
    }
    ::close(pipe[1]);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

} // namespace
} // namespace zenlot
