#include "shell/intents/check_port_intent.h"

#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

PortProcess owner(const char* displayName, std::int64_t pid) {
    PortProcess process;
    process.displayName = displayName;
    process.pid = pid;
    return process;
}

TEST(CheckPortIntentTest, AnswersInOneSentence) {
    const QString invalid = u"Please enter a valid port number between 1 and 65535."_s;
    const struct {
        std::int64_t port;
        std::vector<PortProcess> owners;
        QString answer;
    } cases[] = {
        {0, {}, invalid},
        {8080, {}, u"Port 8080 is free — nothing is using it."_s},
        {5000,
         {owner("Sample", 812), owner("node", 930)},
         u"Port 5000 is used by: Sample (PID 812), node (PID 930)"_s},
        {65535,
         {owner("%1 %2\n\xE2\x80\xAE", 7)},
         u"Port 65535 is used by: %1 %2\uFFFD\uFFFD (PID 7)"_s},
        {22, {owner("", 0), owner("sshd", 0)}, u"Port 22 is used by: Unknown, sshd"_s},
    };
    for (const auto& [port, owners, answer] : cases)
        EXPECT_EQ(checkPortDialog(port, owners).toStdString(), answer.toStdString());
}

} // namespace
} // namespace zenlot
