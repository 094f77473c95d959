#include "picture_tour/sample_machine.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
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
      content_({machine_.inventory, notifications_, applications_, bundleKeys_, appModel_,
                user_.settings, user_.defaults},
               {}) {
    user_.settings.setHasCompletedOnboarding(true);
    processes_.memoryBytes = 16'000'000'000;
    QObject::connect(&content_, &ContentViewModel::detailProcessChanged, &inspector_,
                     [this] { inspector_.setProcess(content_.detailProcess()); });

    addApplication(u"/Applications/Harbor.app"_s, u"org.harbor.desktop"_s,
                   QColor(0x2f, 0x7f, 0xe8));
    addApplication(u"/Applications/Quill Notes.app"_s, u"org.quill.notes"_s,
                   QColor(0xd9, 0x5b, 0x2b));
    addProcess(4312, true, "/usr/bin/node", {3000, 5173});
    addProcess(4377, true, "/usr/bin/python3.11", {8080});
    addProcess(5120, true, "/Applications/Harbor.app/Contents/MacOS/Harbor", {7070, 7071});
    addProcess(5121, true, "/Applications/Harbor.app/Contents/Helpers/harbor-proxy", {7443});
    addProcess(5300, true, "/Applications/Quill Notes.app/Contents/MacOS/Quill", {49'210});
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
    }
    ProcessGlimpse& python =
        sources.addServer(4377, {"python3", "-m", "http.server", "8080"}, 8080, "0.0.0.0");
    python.parent = 1;
    python.workingDirectory = "/home/ada/shop-old";
    python.isDirectoryDeleted = true;
    sources.addServer(812, {"sshd: /usr/sbin/sshd -D"}, 22, "0.0.0.0").controlGroup =
        "/system.slice/ssh.service";
    sources.addresses.push_back({*IpAddress::parse("192.168.1.7"), "wlan0", true});
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

void SampleMachine::addApplication(const QString& bundle, const QString& identifier,
                                   const QColor& color) {
    const QString name = QFileInfo(bundle).completeBaseName();
    const QString picture = pictures_.filePath(name + u".png"_s);
    drawIcon(picture, name, color);
    workspace_.icons.insert(bundle, picture);
    workspace_.pictures.insert(picture, picture);
    propertyLists_.files.insert(bundle + u"/Contents/Info.plist"_s,
                                {{u"CFBundleIdentifier"_s, identifier},
                                 {u"CFBundleShortVersionString"_s, u"2.4"_s},
                                 {u"CFBundleVersion"_s, u"1187"_s}});
}

} // namespace zenlot
