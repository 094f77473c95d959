// The icon that the desktop has for a file, a folder or an application bundle.
#pragma once

#include "shell/processicon/icon_source.h"

#include <QString>

namespace zenlot {

class FileIconSource : public zenlot::IconSource { // qualified for qmltyperegistrar
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)

  public:
    using IconSource::IconSource;

    QString path() const { return path_; }
    void setPath(const QString& path);

  Q_SIGNALS:
    void pathChanged();

  protected:
    Search search() const override;

  private:
    QString path_;
};

} // namespace zenlot
