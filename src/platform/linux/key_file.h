// Reads the key files of the desktop: desktop entries and descriptions of icon themes.
//
//     [Desktop Entry]
//     Name=Sample
//
// Lines that say nothing are skipped. Of repeated keys the last one counts. Localised values are
// other keys ("Name[de]").
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

namespace zenlot {

class KeyFile {
  public:
    explicit KeyFile(const QByteArray& content);

    // With the escapes \s \n \t \r \\ replaced; empty when there is no such key.
    QString text(const QByteArray& group, const QByteArray& key) const;

    // Separated by commas or semicolons, as the one or the other kind of file has it.
    QStringList list(const QByteArray& group, const QByteArray& key, QChar separator) const;

    bool has(const QByteArray& group, const QByteArray& key) const;

    // As desktops read them: "true" and "1", "false" and "0". A key that is missing is neither.
    bool isTrue(const QByteArray& group, const QByteArray& key) const;
    bool isFalse(const QByteArray& group, const QByteArray& key) const;
    int number(const QByteArray& group, const QByteArray& key, int otherwise) const;

  private:
    QHash<QByteArray, QHash<QByteArray, QByteArray>> groups_;
};

} // namespace zenlot
