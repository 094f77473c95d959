// The icon that the desktop has for a file, a folder or an application bundle, or the one that is
// named in its place and that it has.
#pragma once

#include "shell/processicon/icon_source.h"

#include <QString>

namespace zenlot {

class FileIconSource : public zenlot::IconSource { // qualified for qmltyperegistrar
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QString icon READ icon WRITE setIcon NOTIFY iconChanged)
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)

  public:
    using IconSource::IconSource;

    QString icon() const { return icon_; }
    void setIcon(const QString& icon);

    QString path() const { return path_; }
    void setPath(const QString& path);

  Q_SIGNALS:
    void iconChanged();
    void pathChanged();

  protected:
    Search search() const override;

  private:
    QString icon_;
    QString path_;
};

} // namespace zenlot
