// A TemporaryFolder for those who name their files with QStrings.
#pragma once

#include "support/temporary_folder.h"

#include <QByteArray>
#include <QFile>
#include <QString>

namespace zenlot {

class QtTemporaryFolder {
  public:
    QString path(const QString& name) const {
        return QString::fromStdString((folder_.path() / name.toStdString()).string());
    }
    QByteArray encoded(const QString& name) const { return QFile::encodeName(path(name)); }

    // Makes the folders above the file too.
    void write(const QString& name, const QByteArray& text) const {
        folder_.write(name.toStdString(), text.toStdString());
    }

  private:
    TemporaryFolder folder_;
};

} // namespace zenlot
