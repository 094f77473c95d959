#include "shell/inspector/origin_rows.h"

#include "inventory/origin/reach.h"
#include "text/display_line.h"

#include <QCoreApplication>
#include <QStringList>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype kLongestCommandLine = 4096;
constexpr qsizetype kMostAddresses = 3;
constexpr qsizetype kMostOwners = 8;

QString translated(const char* text) {
    return QCoreApplication::translate("OriginRows", text);
}

class Rows {
  public:
    void add(const QString& label, const QString& value) {
        if (!value.isEmpty())
            rows_.append({label, value});
    }
    void add(const QString& label, const std::string& value) { add(label, displayLine(value)); }
    QList<DetailRow> take() { return std::move(rows_); }

  private:
    QList<DetailRow> rows_;
};

QString startersText(const std::vector<Starter>& starters) {
    QStringList names;
    for (const Starter& starter : starters)
        names.append(displayLine(starter.name));
    return names.join(u" \u2190 "_s);
}

QString containerText(const Container& container) {
    constexpr std::size_t kShownIdDigits = 12;
    const QString name = displayLine(container.name.empty() ? container.id.substr(0, kShownIdDigits)
                                                            : container.name);
    return container.engine.empty() ? name : u"%1 (%2)"_s.arg(name, displayLine(container.engine));
}

QString unitText(const Unit& unit) {
    const QString name = displayLine(unit.name);
    return unit.manager == Unit::Manager::user
               ? translated(QT_TRANSLATE_NOOP("OriginRows", "%1, of a user")).arg(name)
               : translated(QT_TRANSLATE_NOOP("OriginRows", "%1, of the system")).arg(name);
}

QString addressesText(const Origin& origin) {
    QStringList texts;
    for (const ListeningSocket& socket : origin.sockets) {
        QString text = QString::fromStdString(addressText(socket.address));
        if (socket.address.isWildcard() && socket.isV6Only)
            text = translated(QT_TRANSLATE_NOOP("OriginRows", "%1 (IPv6 only)")).arg(text);
        texts.append(text);
    }
    texts.removeDuplicates();
    return texts.join(u", "_s);
}

QString networkText(const NetworkAddress& address) {
    if (!address.network.empty())
        return u"Wi-Fi \u201C%1\u201D"_s.arg(displayLine(address.network));
    const QString interface = displayLine(address.interface);
    return address.isWireless ? u"Wi-Fi "_s + interface : interface;
}

QString reachText(const Origin& origin) {
    if (origin.reach == Reach::unknown)
        return {};
    if (origin.reach == Reach::thisMachine)
        return translated(QT_TRANSLATE_NOOP("OriginRows", "This machine only"));
    QStringList texts;
    for (const NetworkAddress& each : origin.reachableAt) {
        if (texts.size() == kMostAddresses)
            break;
        texts.append(
            u"%1 (%2)"_s.arg(QString::fromStdString(addressText(each.address)), networkText(each)));
    }
    return texts.isEmpty()
               ? translated(
                     QT_TRANSLATE_NOOP("OriginRows", "The network, unless a firewall stops it"))
               : translated(
                     QT_TRANSLATE_NOOP("OriginRows",
                                       "Everyone who can reach %1, unless a firewall stops them"))
                     .arg(texts.join(u", "_s));
}

QString ownersText(const Origin& origin) {
    if (origin.owners.size() < 2)
        return {};
    QStringList pids;
    for (const ProcessIdentity& owner : origin.owners) {
        if (pids.size() == kMostOwners) {
            pids.append(u"\u2026"_s);
            break;
        }
        pids.append(QString::number(owner.pid));
    }
    return translated(QT_TRANSLATE_NOOP("OriginRows", "%1 processes: %2"))
        .arg(QString::number(origin.owners.size()), pids.join(u", "_s));
}

QString leftBehindText(const Origin& origin) {
    QStringList reasons;
    for (const LeftBehindReason reason : origin.leftBehind) {
        switch (reason) {
        case LeftBehindReason::folderDeleted:
            reasons.append(translated(QT_TRANSLATE_NOOP("OriginRows", "its folder is deleted")));
            break;
        case LeftBehindReason::noTerminal:
            reasons.append(translated(QT_TRANSLATE_NOOP("OriginRows", "it has no terminal")));
            break;
        case LeftBehindReason::starterEnded:
            reasons.append(
                translated(QT_TRANSLATE_NOOP("OriginRows", "what started it has ended")));
            break;
        case LeftBehindReason::sessionOver:
            reasons.append(translated(QT_TRANSLATE_NOOP("OriginRows", "its session is over")));
            break;
        }
    }
    if (reasons.isEmpty())
        return {};
    reasons.append(translated(QT_TRANSLATE_NOOP("OriginRows", "nobody is connected")));
    return translated(QT_TRANSLATE_NOOP("OriginRows", "Perhaps: %1")).arg(reasons.join(u", "_s));
}

} // namespace

QList<DetailRow> projectRows(const Origin& origin) {
    Rows rows;
    if (const auto& project = origin.project) {
        rows.add(translated(QT_TRANSLATE_NOOP("OriginRows", "Name")), project->name);
        rows.add(project->head == Project::Head::detached
                     ? translated(QT_TRANSLATE_NOOP("OriginRows", "Commit"))
                     : translated(QT_TRANSLATE_NOOP("OriginRows", "Branch")),
                 project->branch);
    }
    const QString folder = displayLine(origin.workingDirectory);
    const bool isDeleted = origin.project && origin.project->isDeleted;
    rows.add(translated(QT_TRANSLATE_NOOP("OriginRows", "Folder")),
             isDeleted ? translated(QT_TRANSLATE_NOOP("OriginRows", "%1 (deleted)")).arg(folder)
                       : folder);
    rows.add(translated(QT_TRANSLATE_NOOP("OriginRows", "Runs")), origin.program);
    rows.add(translated(QT_TRANSLATE_NOOP("OriginRows", "Command line")),
             displayLine(origin.commandLine, kLongestCommandLine));
    return rows.take();
}

QList<DetailRow> originRows(const Origin& origin) {
    Rows rows;
    rows.add(translated(QT_TRANSLATE_NOOP("OriginRows", "Started by")),
             startersText(origin.startedBy));
    if (const auto& container = origin.container) {
        rows.add(translated(QT_TRANSLATE_NOOP("OriginRows", "Container")),
                 containerText(*container));
        rows.add(translated(QT_TRANSLATE_NOOP("OriginRows", "Image")), container->image);
        if (!container->composeService.empty())
            rows.add(translated(QT_TRANSLATE_NOOP("OriginRows", "Service")),
                     u"%1 (%2)"_s.arg(displayLine(container->composeService),
                                      displayLine(container->composeProject)));
        if (container->innerPort != 0)
            rows.add(translated(QT_TRANSLATE_NOOP("OriginRows", "Its port")),
                     QString::number(container->innerPort));
    }
    if (origin.unit)
        rows.add(translated(QT_TRANSLATE_NOOP("OriginRows", "Unit")), unitText(*origin.unit));
    if (origin.socketUnit && origin.socketUnit != origin.unit)
        rows.add(translated(QT_TRANSLATE_NOOP("OriginRows", "Socket")),
                 unitText(*origin.socketUnit));
    rows.add(translated(QT_TRANSLATE_NOOP("OriginRows", "Listens on")), addressesText(origin));
    rows.add(translated(QT_TRANSLATE_NOOP("OriginRows", "Open to")), reachText(origin));
    rows.add(translated(QT_TRANSLATE_NOOP("OriginRows", "Shared by")), ownersText(origin));
    if (origin.clients > 0)
        rows.add(translated(QT_TRANSLATE_NOOP("OriginRows", "Clients")),
                 QString::number(origin.clients));
    rows.add(translated(QT_TRANSLATE_NOOP("OriginRows", "Left behind")), leftBehindText(origin));
    return rows.take();
}

} // namespace zenlot
