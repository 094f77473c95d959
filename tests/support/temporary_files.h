// A folder that lives as long as a test, with the files in it named relative to it.
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace zenlot {

class TemporaryFiles {
  public:
    QString path(const QString& name = QString()) const { return folder_.filePath(name); }
    QByteArray encoded(const QString& name) const { return QFile::encodeName(path(name)); }

    // Makes the folders above the file too.
    void write(const QString& name, const QByteArray& text) const {
        QFile file(path(name));
        ASSERT_TRUE(QDir().mkpath(QFileInfo(file).path()));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(text), text.size());
    }

    QByteArray read(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

    // All that is in a folder, hidden or not.
    QStringList names(const QString& folder = QString()) const {
        return QDir(path(folder))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

  private:
    QTemporaryDir folder_;
};

} // namespace zenlot
