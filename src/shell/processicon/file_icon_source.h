// The icon that the desktop has for a file, a folder or an application bundle, or the one that is
// named in its place and that it has.
#pragma once

#include "shell/processicon/icon_source.h"

#include <QString>

namespace zenlot {

class FileIconSource : public zenlot::IconSource { // qualified for qmltyperegistrar
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QString iconName READ iconName WRITE setIconName NOTIFY iconNameChanged)
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)

  public:
    using IconSource::IconSource;

    QString iconName() const { return iconName_; }
    void setIconName(const QString& iconName);

    QString path() const { return path_; }
    void setPath(const QString& path);

  Q_SIGNALS:
    void iconNameChanged();
    void pathChanged();

  protected:
    Search search() const override;

  private:
    QString iconName_;
    QString path_;
};

} // namespace zenlot
