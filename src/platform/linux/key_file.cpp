#include "platform/linux/key_file.h"

namespace zenlot {

KeyFile::KeyFile(const QByteArray& content) {
    QByteArray group;
    for (const QByteArray& line : content.split('\n')) {
        const QByteArray trimmed = line.trimmed();
        if (trimmed.startsWith('[') && trimmed.endsWith(']')) {
            group = trimmed.mid(1, trimmed.size() - 2);
            continue;
        }
        const qsizetype sign = trimmed.indexOf('=');
        if (sign > 0 && !trimmed.startsWith('#'))
            groups_[group].insert(trimmed.left(sign).trimmed(), trimmed.mid(sign + 1).trimmed());
    }
}

QString KeyFile::text(const QByteArray& group, const QByteArray& key) const {
    const QString raw = QString::fromUtf8(groups_.value(group).value(key));
    QString text;
    for (qsizetype i = 0; i < raw.size(); ++i) {
        if (raw[i] != u'\\' || i + 1 == raw.size()) {
            text += raw[i];
            continue;
        }
        switch (raw[++i].unicode()) {
        case u's':
            text += u' ';
            break;
        case u'n':
            text += u'\n';
            break;
        case u't':
            text += u'\t';
            break;
        case u'r':
            text += u'\r';
            break;
        case u'\\':
            text += u'\\';
            break;
        default: // not ours to judge
            text += u'\\';
            text += raw[i];
        }
    }
    return text;
}

QStringList KeyFile::list(const QByteArray& group, const QByteArray& key, QChar separator) const {
    return text(group, key).split(separator, Qt::SkipEmptyParts);
}

bool KeyFile::has(const QByteArray& group, const QByteArray& key) const {
    return groups_.value(group).contains(key);
}

bool KeyFile::isTrue(const QByteArray& group, const QByteArray& key) const {
    const QByteArray value = groups_.value(group).value(key);
    return value == "true" || value == "1";
}

bool KeyFile::isFalse(const QByteArray& group, const QByteArray& key) const {
    const QByteArray value = groups_.value(group).value(key);
    return value == "false" || value == "0";
}

int KeyFile::number(const QByteArray& group, const QByteArray& key, int otherwise) const {
    bool isNumber = false;
    const int number = groups_.value(group).value(key).toInt(&isNumber);
    return isNumber ? number : otherwise;
}

} // namespace zenlot
