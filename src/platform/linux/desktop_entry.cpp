#include "platform/linux/desktop_entry.h"

#include "platform/linux/key_file.h"

#include <algorithm>

namespace zenlot {
namespace {

constexpr char kGroup[] = "Desktop Entry";
// Longer names of units don't exist; the bound keeps the number of guesses small.
constexpr qsizetype kMostParts = 12;

QString lastComponent(const QString& path) {
    return path.mid(path.lastIndexOf(u'/') + 1);
}

// "env NAME=value... program": the words from the program on.
QStringList withoutEnvironment(QStringList words) {
    if (words.isEmpty() || lastComponent(words.first()) != QLatin1String("env"))
        return words;
    words.removeFirst();
    while (!words.isEmpty() && (words.first().contains(u'=') || words.first().startsWith(u'-')))
        words.removeFirst();
    return words;
}

// As systemd escapes a part of a name: every byte may be written as \xNN.
QString unescapedPart(const QString& part) {
    const QByteArray bytes = part.toUtf8();
    QByteArray plain;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        bool isHex = false;
        const int code = bytes.mid(i, 2) == "\\x" ? bytes.mid(i + 2, 2).toInt(&isHex, 16) : 0;
        if (isHex) {
            plain += static_cast<char>(code);
            i += 3;
        } else {
            plain += bytes[i];
        }
    }
    return QString::fromUtf8(plain);
}

// For "de_AT" that of "de_AT", or of "de", or the one for everybody.
QString localizedName(const KeyFile& file, const QString& locale) {
    for (const QString& language : {locale, locale.section(u'_', 0, 0)}) {
        const QByteArray key = "Name[" + language.toUtf8() + ']';
        if (file.has(kGroup, key))
            return file.text(kGroup, key);
    }
    return file.text(kGroup, "Name");
}

} // namespace

QStringList wordsOfExec(const QString& value) {
    QStringList words;
    QString word;
    bool isWord = false;
    bool isQuoted = false;
    const auto endWord = [&] {
        // A word that is a field code stands for the files that the user opens.
        const bool isFieldCode = word.size() == 2 && word[0] == u'%' && word[1] != u'%';
        if (isWord && !isFieldCode)
            words.append(word.replace(QLatin1String("%%"), QLatin1String("%")));
        word.clear();
        isWord = false;
    };
    for (qsizetype i = 0; i < value.size(); ++i) {
        const QChar character = value[i];
        if (character == u'"') {
            isQuoted = !isQuoted;
            isWord = true;
        } else if (!isQuoted && (character == u' ' || character == u'\t' || character == u'\n')) {
            endWord();
        } else {
            if (isQuoted && character == u'\\' && i + 1 < value.size())
                ++i;
            word += value[i];
            isWord = true;
        }
    }
    endWord();
    return words;
}

std::optional<DesktopEntry> parseDesktopEntry(const QByteArray& content, const QString& locale) {
    const KeyFile file(content);
    if (file.text(kGroup, "Type") != QLatin1String("Application"))
        return std::nullopt;
    const QStringList words = withoutEnvironment(wordsOfExec(file.text(kGroup, "Exec")));
    DesktopEntry entry;
    entry.name = localizedName(file, locale);
    entry.icon = file.text(kGroup, "Icon");
    entry.program = words.value(0);
    entry.triedProgram = file.text(kGroup, "TryExec");
    entry.isInterpreted =
        std::any_of(words.begin() + std::min<qsizetype>(1, words.size()), words.end(),
                    [](const QString& word) { return !word.startsWith(u'-'); });
    entry.isHidden = file.isTrue(kGroup, "Hidden");
    entry.isDisplayed = !file.isTrue(kGroup, "NoDisplay");
    entry.isInTerminal = file.isTrue(kGroup, "Terminal");
    return entry;
}

QStringList desktopEntriesOfUnit(const QString& unit) {
    const bool isScope = unit.endsWith(QLatin1String(".scope"));
    if (!unit.startsWith(QLatin1String("app-")) ||
        !(isScope || unit.endsWith(QLatin1String(".service"))))
        return {};
    QString name = unit.mid(4, unit.lastIndexOf(u'.') - 4);
    // An instance is something random; an escaped "@" is no "@" here.
    if (!isScope)
        name = name.left(name.indexOf(u'@') < 0 ? name.size() : name.indexOf(u'@'));
    QStringList parts = name.split(u'-', Qt::SkipEmptyParts).mid(0, kMostParts);
    for (QString& part : parts)
        part = unescapedPart(part);

    // The regular place first: the last part, before the random one that a scope ends with. All
    // other runs of parts follow, the longest first.
    QStringList identifiers;
    if (isScope && parts.size() > 1)
        identifiers.append(parts[parts.size() - 2]);
    else if (!parts.isEmpty())
        identifiers.append(parts.last());
    for (qsizetype length = parts.size(); length > 0; --length) {
        for (qsizetype start = 0; start + length <= parts.size(); ++start)
            identifiers.append(parts.mid(start, length).join(u'-'));
    }
    identifiers.removeDuplicates();
    return identifiers;
}

QString unitOfCgroup(const QByteArray& content) {
    for (const QByteArray& line : content.split('\n')) {
        // The one hierarchy, or systemd's own beside those of older kernels.
        const qsizetype path = line.indexOf(":/");
        const QByteArray hierarchy = line.left(path);
        if (path < 0 || (hierarchy != "0:" && !hierarchy.endsWith(":name=systemd")))
            continue;
        const QStringList folders = QString::fromUtf8(line.mid(path + 1)).split(u'/');
        const auto unit = std::find_if(folders.rbegin(), folders.rend(), [](const QString& name) {
            return name.endsWith(QLatin1String(".scope")) ||
                   name.endsWith(QLatin1String(".service"));
        });
        if (unit != folders.rend())
            return *unit;
    }
    return {};
}

} // namespace zenlot
