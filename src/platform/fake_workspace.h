// A Workspace for tests: icons and pictures that the test names before it asks for them.
#pragma once

#include "platform/workspace.h"

#include <QHash>

namespace zenlot {

class FakeWorkspace final : public Workspace {
  public:
    QString genericIcon{QStringLiteral("application-x-executable")};
    QHash<QString, QString> icons;    // by the path of the file
    QHash<QString, QString> pictures; // by the icon, for every theme and size

    QString iconForFile(const QString& path) const override {
        return icons.value(path, genericIcon);
    }

    QString pictureOfIcon(const QString& icon, const QString& /*theme*/,
                          int /*sizeInPixels*/) const override {
        return pictures.value(icon);
    }
};

} // namespace zenlot
