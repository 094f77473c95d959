// zenlotctl: the port inventory for scripts and for machines without a desktop.
#include "ctl/command_line.h"
#include "ctl/linux/doctor.h"
#include "ctl/port_table.h"
#include "ctl/why_page.h"
#include "inventory/linux/linux_origin_sources.h"
#include "inventory/linux/linux_process_signals.h"
#include "inventory/linux/linux_process_tables.h"
#include "inventory/linux/processors.h"
#include "inventory/occupied_ports_json.h"
#include "inventory/origin/origin_collector.h"
#include "inventory/origin/port_stopper.h"
#include "inventory/port_lookup.h"
#include "managers/linux/network_manager_networks.h"
#include "managers/linux/socket_container_engines.h"
#include "managers/linux/systemd_service_managers.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

namespace zenlot {
namespace {

enum ExitStatus : int { answered = 0, notWritten = 1, badUsage = 2, notStopped = 3 };

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

// Only somebody at a terminal can agree.
bool agrees(std::string_view question) {
    if (::isatty(STDIN_FILENO) == 0 || print(std::string(question) + " [y/N] ") != answered)
        return false;
    std::string answer;
    return std::getline(std::cin, answer) && (answer == "y" || answer == "Y" || answer == "yes");
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
        WhyAnswer answer{port, origins_.originsOnPort(port), {}};
        if (answer.origins.empty())
            answer.obstacles = origins_.obstaclesOnPort(port);
        return print(command.format == Format::json ? whyJson(answer) + "\n" : whyPage(answer));
    }

    ExitStatus operator()(const StopCommand& command) const {
        const auto port = static_cast<std::uint16_t>(command.port);
        const LinuxProcessSignals signals;
        const SystemdServiceManagers units;
        const PortStopper stopper({sources_, origins_, signals, units, engines_});
        const std::vector<Origin> holders = origins_.originsOnPort(port);
        if (holders.empty())
            return tell("Port " + std::to_string(port) + " is free.", answered);
        const StopPlan plan = stopper.plan(port);
        if (plan.kind == StopPlan::Kind::none)
            return tell(stopSentence(plan), notStopped);
        if (const ExitStatus status = tell(stopSentence(plan), answered); status != answered)
            return status;
        if (command.consent == Consent::asked && !agrees("Stop it?"))
            return tell("Nothing was stopped.", notStopped);
        StopResult result = stopper.stop(plan);
        if (result.outcome == StopResult::Outcome::stillHeld &&
            plan.kind == StopPlan::Kind::processes && command.consent == Consent::asked &&
            agrees(resultSentence(plan, result) + " End it by force?"))
            result = stopper.force(plan);
        return tell(resultSentence(plan, result),
                    result.outcome == StopResult::Outcome::free ? answered : notStopped);
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
    static ExitStatus tell(const std::string& sentence, ExitStatus status) {
        const ExitStatus written = print(terminalText(sentence) + "\n");
        return written == answered ? status : written;
    }

    LinuxOriginSources sources_;
    SocketContainerEngines engines_;
    NetworkManagerNetworks networks_;
    OriginCollector origins_{sources_, &engines_, &networks_};
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
