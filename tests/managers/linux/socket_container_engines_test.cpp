#include "managers/linux/socket_container_engines.h"
#include "posix/file_descriptor.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <thread>

namespace zenlot {
namespace {

constexpr const char* kList =
    R"([{"Id":"12ab","Names":["/shop-db"],"Image":"postgres:15","Labels":{"com.docker.compose.project":
"shop","com.docker.compose.service":"db"},"Ports":[{"PrivatePort":5432,"PublicPort":5433,"Type":"tcp"},
{"PrivatePort":53,"PublicPort":53,"Type":"udp"},{"PrivatePort":80,"Type":"tcp"}]},
{"Id":"../x","Names":[]},{"Id":"cd","Names":[7],"Labels":null,"Ports":{}},7])";

// An engine that gives each caller the next answer, and keeps the questions.
class FakeEngine {
  public:
    explicit FakeEngine(std::vector<std::string> answers) : answers_(std::move(answers)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::ranges::copy(path(), address.sun_path);
        EXPECT_EQ(
            ::bind(listener_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address),
            0);
        EXPECT_EQ(::listen(listener_.get(), 8), 0);
        thread_ = std::thread([this] { serve(); });
    }
    FakeEngine(const FakeEngine&) = delete;
    FakeEngine& operator=(const FakeEngine&) = delete;
    ~FakeEngine() {
        ::shutdown(listener_.get(), SHUT_RDWR);
        thread_.join();
    }
    std::string path() const { return (folder_.path() / "engine.sock").string(); }
    const std::vector<std::string>& questions() const { return questions_; }

  private:
    void serve() {
        for (const std::string& answer : answers_) {
            const FileDescriptor caller(::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC));
            std::array<char, 1024> question{};
            const ssize_t length = ::read(caller.get(), question.data(), question.size());
            if (length <= 0)
                return;
            const std::string text(question.data(), static_cast<std::size_t>(length));
            questions_.push_back(text.substr(0, text.find(" HTTP")));
            [[maybe_unused]] const ssize_t ignored =
                ::send(caller.get(), answer.data(), answer.size(), MSG_NOSIGNAL);
        }
    }

    TemporaryFolder folder_;
    std::vector<std::string> answers_;
    std::vector<std::string> questions_;
    FileDescriptor listener_{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    std::thread thread_;
};

std::string answerOf(const std::string& status, const std::string& body) {
    return "HTTP/1.0 " + status + "\r\nContent-Type: application/json\r\n\r\n" + body;
}

TEST(SocketContainerEnginesTest, ReadsTheListOfAnEngine) {
    const std::vector<RunningContainer> containers = decodeContainers(kList);
    ASSERT_EQ(containers.size(), 2U);
    const Container expected{{}, "12ab", "shop-db", "postgres:15", "shop", "db"};
    EXPECT_EQ(containers[0].container, expected);
    EXPECT_EQ(containers[0].ports,
              (std::vector<std::pair<std::uint16_t, std::uint16_t>>{{5433, 5432}}));
    for (const char* broken : {"", "{}", "[", "[[]]", R"([{"Id":""}])"})
        EXPECT_TRUE(decodeContainers(broken).empty()) << broken;
}

TEST(SocketContainerEnginesTest, AsksTheEngineThatHasTheContainer) {
    Container container;
    container.id = "12ab";
    {
        FakeEngine engine({answerOf("200 OK", kList), answerOf("204 No Content", ""),
                           answerOf("200 OK", kList),
                           answerOf("500 Error", R"({"message":"no such thing"})")});
        const SocketContainerEngines engines({"/nonexistent", engine.path()});
        EXPECT_EQ(engines.stop(container), "");
        EXPECT_EQ(engines.stop(container), "no such thing");
        EXPECT_EQ(engine.questions()[0], "GET /containers/json");
        EXPECT_EQ(engine.questions()[1], "POST /containers/12ab/stop");
    }
    for (const std::string& nonsense : {answerOf("200 OK", "[]"), std::string("nonsense")}) {
        FakeEngine engine({nonsense});
        EXPECT_NE(SocketContainerEngines({engine.path()}).stop(container), "");
    }
    EXPECT_TRUE(SocketContainerEngines({"/nonexistent"}).runningContainers().empty());
}

} // namespace
} // namespace zenlot
