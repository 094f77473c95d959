#include "ctl/diagnosis.h"
#include "ctl/port_table.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace zenlot {
namespace {

std::string nameOf(const std::string& user) {
    return user == "0" ? "root" : user;
}

TEST(PortTableTest, AlignsColumnsByWhatIsSeen) {
    const std::vector<OccupiedPort> ports{
        {80, "TCP4", "", "", 0, "0", ""},
        {443, "TCP6", "网络", "网络", 9, "1000", "/opt/网络"},
        {65535, "TCP4", "node", "Node", 123456, "", "/usr/bin/node"}};
    EXPECT_EQ(portTable(ports, nameOf), " PORT  PROTO     PID  USER  NAME  PATH\n"
                                        "   80  TCP4        -  root  -     -\n"
                                        "  443  TCP6        9  1000  网络  /opt/网络\n"
                                        "65535  TCP4   123456  -     Node  /usr/bin/node\n");
    EXPECT_EQ(portTable({}, nameOf), "PORT  PROTO  PID  USER  NAME  PATH\n");
}

TEST(PortTableTest, OffersEachPortOnce) {
    const std::vector<OccupiedPort> ports{{8080, "TCP4", "", "", 0, "0", ""},
                                          {8080, "TCP6", "", "No\tde", 9, "0", ""},
                                          {80, "TCP4", "", "Apache", 5, "0", ""},
                                          {80, "TCP6", "", "Apache", 5, "0", ""}};
    EXPECT_EQ(portOffers(ports), "80\tApache (PID 5)\n"
                                 "8080\tTCP4, No\\u{9}de (PID 9)\n");
}

TEST(PortTableTest, TextOfOtherProcessesCantSteerTheTerminal) {
    EXPECT_EQ(terminalText("Sample Ünïcode 🙂"), "Sample Ünïcode 🙂");
    EXPECT_EQ(terminalText("a\nb\tc"), "a\\u{A}b\\u{9}c");
    EXPECT_EQ(terminalText("\x1b]0;gone\x07"), "\\u{1B}]0;gone\\u{7}");
    EXPECT_EQ(terminalText("x\u202Egpj.exe\u2028"), "x\\u{202E}gpj.exe\\u{2028}");
    EXPECT_EQ(terminalText("\xff\xc3"), "\\xFF\\xC3");
}

TEST(DiagnosisTest, IsOneLineForEachFinding) {
    const std::vector<Finding> findings{{"log", Finding::State::works, "a\x1b[2Jb\n"},
                                        {"session bus", Finding::State::missing, "no\xff"},
                                        {"x", Finding::State::limited, ""}};
    EXPECT_EQ(diagnosisText(findings), "log          works    a\\u{1B}[2Jb\\u{A}\n"
                                       "session bus  missing  no\\xFF\n"
                                       "x            limited  \n");
    EXPECT_EQ(diagnosisJson(std::span(findings).first(1)),
              "[\n  {\n    \"subject\": \"log\",\n    \"state\": \"works\",\n"
              "    \"detail\": \"a\\u001b[2Jb\\n\"\n  }\n]");
    EXPECT_EQ(diagnosisJson({}), "[]");
}

TEST(PortTableTest, UsersAreNamedByTheirLogin) {
    EXPECT_EQ(loginName("0"), "root");
    EXPECT_EQ(loginName("4294967294"), "4294967294");
    EXPECT_EQ(loginName("12x"), "12x");
}

} // namespace
} // namespace zenlot
