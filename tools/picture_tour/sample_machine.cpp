#include "picture_tour/sample_machine.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr std::int64_t kNow = 1'741'162'051; // a Wednesday morning in March
constexpr UserId kSystemUser = 112;

// A letter on a rounded square.
void drawIcon(const QString& file, const QString& name, const QColor& color) {
    constexpr int kSize = 128;
    QImage icon(kSize, kSize, QImage::Format_ARGB32_Premultiplied);
    icon.fill(Qt::transparent);
    QPainter painter(&icon);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient gradient(0, 0, 0, kSize);
    gradient.setColorAt(0, color.lighter(125));
    gradient.setColorAt(1, color);
    painter.setBrush(gradient);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(0, 0, kSize, kSize, 28, 28);
    painter.setPen(Qt::white);
    QFont font;
    font.setPixelSize(84);
    font.setBold(true);
    painter.setFont(font);
    painter.drawText(icon.rect(), Qt::AlignCenter, name.left(1));
    painter.end();
    icon.save(file);
}

} // namespace

SampleMachine::SampleMachine()
    : collector_(
          processes_,
          [] { return std::chrono::system_clock::time_point(std::chrono::seconds(kNow)); },
          QLocale(QLocale::English), QTimeZone::utc()),
      content_({machine_.inventory, notifications_, applicationCache_, bundleKeys_, appModel_,
                user_.settings, user_.defaults, &stopper_},
               {}) {
    user_.settings.setHasCompletedOnboarding(true);
    processes_.memoryBytes = 16'000'000'000;
    QObject::connect(&content_, &ContentViewModel::detailProcessChanged, &inspector_,
                     [this] { inspector_.setProcess(content_.detailProcess()); });

    addProcess(4312, true, "/usr/bin/node", {3000, 5173});
    addProcess(4377, true, "/usr/bin/python3.11", {8080});
    addProcess(5120, true, "/usr/bin/ruby3.1", {9292});
    addProcess(5300, true, "/home/ada/go/bin/dlv", {40'000});
    addProcess(812, false, "/usr/sbin/sshd", {22});
    addProcess(640, false, "/usr/sbin/cupsd", {631});
    addProcess(901, false, "/usr/sbin/nginx", {80, 443});
    addProcess(955, false, "/usr/bin/redis-server", {6379});
    // Nobody who may be asked knows who holds this port, but two are remembered.
    const std::string user = std::to_string(currentUserId());
    const std::string postgres = "/usr/lib/postgresql/15/bin/postgres";
    machine_.cache.replace({{5432, "TCP4", "postgres", "Postgres", 4401, user, postgres},
                            {5432, "TCP6", "postgres", "Postgres", 4409, user, postgres}});
    addOrigins();
    machine_.pinner.processes[4401].ports = machine_.pinner.processes[4409].ports = {5432};
}

void SampleMachine::addProcess(ProcessId pid, bool isOwn, const std::string& path,
                               const std::vector<std::uint16_t>& ports) {
    const UserId user = isOwn ? currentUserId() : kSystemUser;
    FakePinnedState& pinned = machine_.pinner.processes[pid];
    pinned = {.effectiveUid = user, .ports = {ports.begin(), ports.end()}};
    FakeProcess process{pid, {}, user, path, pinned.startTime};
    for (const std::uint16_t port : ports) {
        process.sockets.push_back({AddressFamily::ipv4, TcpState::listen, port, 0});
        machine_.tables.table.push_back({port, 0, AddressFamily::ipv4, user});
    }
    ProcessFacts facts;
    facts.task = TaskInfo{1204,
                          ProcessState::sleeping,
                          std::chrono::seconds(kNow - 94'354),
                          1'254'300'000,
                          86'400'000,
                          std::chrono::milliseconds(734'000)};
    facts.parentName = "bash";
    facts.descriptorCount = 41;
    facts.tcpSockets = process.sockets;
    facts.tcpSockets.push_back({AddressFamily::ipv4, TcpState::established, ports.front(), 51'834});
    facts.tcpSockets.push_back({AddressFamily::ipv4, TcpState::closeWait, ports.front(), 51'840});
    processes_.processes.insert_or_assign(pid, facts);
    machine_.tables.processes.push_back(std::move(process));
}

void SampleMachine::addOrigins() {
    FakeOriginSources& sources = machine_.originSources;
    const QString shop = pictures_.filePath(u"shop"_s);
    QDir().mkpath(shop + u"/.git"_s);
    QFile head(shop + u"/.git/HEAD"_s);
    if (head.open(QFile::WriteOnly))
        head.write("ref: refs/heads/fix-login\n");
    head.close();
    const auto addStarter = [&sources](ProcessId pid, ProcessId parent, const char* name) {
        sources.addProcess(pid, {name}).parent = parent;
    };
    addStarter(1190, 1, "konsole");
    addStarter(1204, 1190, "zsh");
    addStarter(4300, 1204, "npm run dev");
    const std::vector<std::string> vite{"node", "node_modules/.bin/vite", "--port", "5173"};
    for (const std::uint16_t port : {std::uint16_t{3000}, std::uint16_t{5173}}) {
        ProcessGlimpse& node = sources.addServer(4312, vite, port);
        node.parent = 4300;
        node.workingDirectory = shop.toStdString();
        node.hasTerminal = true;
        node.user = currentUserId();
    }
    sources.clients[3000] = 2;
    ProcessGlimpse& python =
        sources.addServer(4377, {"python3", "-m", "http.server", "8080"}, 8080, "0.0.0.0");
    python.parent = 1;
    python.workingDirectory = "/home/ada/shop-old";
    python.isDirectoryDeleted = true;
    sources.addServer(812, {"sshd: /usr/sbin/sshd -D"}, 22, "0.0.0.0").controlGroup =
        "/system.slice/ssh.service";
    sources.addProcess(4420, {"firefox"});
    sources.held[4420] = {1000};
    sources.uses = {{.state = TcpState::established,
                     .address = {},
                     .port = 41'234,
                     .foreignPort = 443,
                     .inode = 1000},
                    {.state = TcpState::timeWait,
                     .address = {},
                     .port = 41'234,
                     .foreignPort = 443,
                     .remaining = std::chrono::seconds(42)}};
    sources.addresses.push_back({*IpAddress::parse("192.168.1.7"), "wlan0", true});
}

void SampleMachine::addApplications() {
    addApplication(u"Harbor"_s, u"org.harbor.Harbor"_s, QColor(0x2f, 0x7f, 0xe8), {6120, 6121});
    addApplication(u"Quill Notes"_s, u"org.quill.Notes"_s, QColor(0xd9, 0x5b, 0x2b), {6300});
    addProcess(6120, true, "/opt/harbor/harbor", {7070, 7071});
    addProcess(6121, true, "/opt/harbor/helpers/harbor-proxy", {7443});
    addProcess(6300, true, "/usr/lib/quill/quill-notes", {49'210});
}

void SampleMachine::becomeCrowded(int processes) {
    machine_.cache.replace({});
    machine_.tables.table.clear();
    machine_.tables.processes.clear();
    for (int each = 0; each < processes; ++each) {
        const auto port = static_cast<std::uint16_t>(20'000 + 2 * each);
        addProcess(10'000 + each, each % 3 != 0, "/opt/fleet/worker-" + std::to_string(each),
                   {port, static_cast<std::uint16_t>(port + 1)});
    }
}

void SampleMachine::addApplication(const QString& name, const QString& identifier,
                                   const QColor& color, const std::vector<ProcessId>& processes) {
    const QString picture = pictures_.filePath(identifier + u".png"_s);
    drawIcon(picture, name, color);
    workspace_.pictures.insert(picture, picture);
    for (const ProcessId pid : processes)
        applications_.addPart(pid, {identifier, name, picture});
    applications_.add(processes.front(), {identifier, std::nullopt, std::nullopt, picture, false});
}

} // namespace zenlot
