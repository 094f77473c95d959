// zenlotctl: the port inventory for scripts and for machines without a desktop.
#include "ctl/command_line.h"
#include "ctl/linux/doctor.h"
#include "ctl/port_table.h"
#include "ctl/why_page.h"
#include "inventory/linux/linux_origin_sources.h"
#include "inventory/linux/linux_process_tables.h"
#include "inventory/linux/processors.h"
#include "inventory/occupied_ports_json.h"
#include "inventory/origin/origin_collector.h"
#include "inventory/port_lookup.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <string>
#include <vector>

namespace zenlot {
namespace {

enum ExitStatus : int { answered = 0, notWritten = 1, badUsage = 2 };

// Somebody who closes the pipe, as `head` does, has read enough: no error.
ExitStatus print(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(STDOUT_FILENO, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EPIPE) {
            return answered;
        } else if (errno != EINTR) {
            const std::string message =
                std::string("zenlotctl: can't write the answer: ") + std::strerror(errno) + "\n";
            [[maybe_unused]] const ssize_t ignored =
                ::write(STDERR_FILENO, message.data(), message.size());
            return notWritten;
        }
    }
    return answered;
}

class Runner {
  public:
    ExitStatus operator()(const ListCommand& command) const {
        const std::vector<OccupiedPort> ports = scanner_.listOccupiedPorts();
        switch (command.listing) {
        case Listing::json:
            return print(encodeOccupiedPorts(ports) + "\n");
        case Listing::offers:
            return print(portOffers(ports));
        case Listing::text:
            break;
        }
        return print(portTable(ports));
    }

    ExitStatus operator()(const CheckCommand& command) const {
        return print(
            terminalText(checkPortAnswer(command.port, processesOnPort(scanner_, command.port))) +
            "\n");
    }

    ExitStatus operator()(const WhyCommand& command) const {
        const auto port = static_cast<std::uint16_t>(command.port);
        const LinuxOriginSources sources;
        WhyAnswer answer{port, OriginCollector(sources).originsOnPort(port), {}, {}};
        if (answer.origins.empty())
            answer.obstacles = bindObstacles(sources, port);
        else
            answer.addresses = sources.networkAddresses();
        return print(command.format == Format::json ? whyJson(answer) + "\n" : whyPage(answer));
    }

    ExitStatus operator()(const DoctorCommand& command) const {
        const std::vector<Finding> findings = examineMachine();
        return print(command.format == Format::json ? diagnosisJson(findings) + "\n"
                                                    : diagnosisText(findings));
    }

    ExitStatus operator()(const HelpCommand&) const { return print(helpText()); }

    ExitStatus operator()(const VersionCommand&) const {
        return print("zenlotctl " ZENLOT_VERSION "\n");
    }

    ExitStatus operator()(const UsageError& error) const {
        const std::string line = error.message + "\n";
        [[maybe_unused]] const ssize_t ignored = ::write(STDERR_FILENO, line.data(), line.size());
        return badUsage;
    }

  private:
    LinuxProcessTables tables_;
    PortScanner scanner_{tables_, isPortInUse, availableProcessors()};
};

} // namespace
} // namespace zenlot

int main(int argc, char** argv) {
    ::signal(SIGPIPE, SIG_IGN);
    const std::vector<std::string_view> words(argv + (argc > 0 ? 1 : 0), argv + argc);
    return std::visit(zenlot::Runner(), zenlot::parseCommandLine(words));
}
