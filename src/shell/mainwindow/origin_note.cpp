#include "shell/mainwindow/origin_note.h"

#include "text/display_line.h"

#include <QCoreApplication>
#include <QStringList>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype kLongestPart = 80;

QString part(const std::string& text) {
    return displayLine(text, kLongestPart);
}

QString translated(const char* text) {
    return QCoreApplication::translate("OriginNote", text);
}

QString projectText(const Project& project) {
    const QString name = part(project.name);
    if (project.isDeleted)
        return translated(QT_TRANSLATE_NOOP("OriginNote", "%1 (deleted folder)")).arg(name);
    return project.head == Project::Head::none ? name
                                               : u"%1 (%2)"_s.arg(name, part(project.branch));
}

QString containerText(const Container& container) {
    constexpr std::size_t kShownIdDigits = 12;
    const QString name =
        part(container.name.empty() ? container.id.substr(0, kShownIdDigits) : container.name);
    return container.image.empty() ? name : u"%1 (%2)"_s.arg(name, part(container.image));
}

QStringList partsOf(const OriginNote& note) {
    QStringList parts{note.text};
    if (note.isOpenToNetwork)
        parts.append(translated(QT_TRANSLATE_NOOP("OriginNote", "Open to the network")));
    if (note.isLeftBehind)
        parts.append(translated(QT_TRANSLATE_NOOP("OriginNote", "Perhaps left behind")));
    parts.removeAll(QString());
    return parts;
}

} // namespace

QString OriginNote::toolTip() const {
    return partsOf(*this).join(u'\n');
}

QString OriginNote::description() const {
    return partsOf(*this).join(u", "_s);
}

OriginNote originNote(const Origin& origin, const QString& displayName) {
    QStringList parts;
    if (origin.container) {
        parts.append(containerText(*origin.container));
    } else {
        const QString program = part(origin.program);
        if (program.compare(displayName, Qt::CaseInsensitive) != 0)
            parts.append(program);
        if (origin.project)
            parts.append(projectText(*origin.project));
        else if (origin.unit)
            parts.append(part(origin.unit->name));
        else if (origin.socketUnit)
            parts.append(part(origin.socketUnit->name));
    }
    parts.removeAll(QString());
    return {parts.join(u" \u00B7 "_s), origin.reach == Reach::network, !origin.leftBehind.empty()};
}

} // namespace zenlot
