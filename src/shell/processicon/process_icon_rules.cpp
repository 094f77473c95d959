#include "shell/processicon/process_icon_rules.h"

#include <QDir>
#include <QStringList>

namespace zenlot {

using namespace Qt::StringLiterals;

bool isDevRuntime(const QString& path) {
    const QStringList components = path.split(u'/', Qt::SkipEmptyParts);
    const QString name = components.isEmpty() ? QString() : components.last().toLower();
    const QStringList others{u"npm"_s, u"npx"_s, u"bun"_s, u"deno"_s};
    return name.startsWith(QLatin1String("node")) || others.contains(name);
}

std::optional<QString> outermostAppBundle(const QString& path) {
    const QString clean = QDir::cleanPath(path);
    // The first component, be it the root or a lone name, is no bundle: it lies in no folder.
    qsizetype end = clean.indexOf(u'/');
    while (end >= 0) {
        const qsizetype start = end + 1;
        end = clean.indexOf(u'/', start);
        const QString component = clean.mid(start, end < 0 ? -1 : end - start);
        if (component.endsWith(QLatin1String(".app")))
            return clean.left(start + component.size());
    }
    return std::nullopt;
}

std::optional<QString> outermostAppIcon(const QString& path, const Workspace& workspace) {
    const std::optional<QString> bundle = outermostAppBundle(path);
    return bundle ? std::optional(workspace.iconForFile(*bundle)) : std::nullopt;
}

} // namespace zenlot
