// Desktop entries, icon themes, the names of units; and the edit that switches the login item on,
// which changes nothing when it is made twice and takes no other line away.
#include "fuzzing.h"
#include "platform/linux/autostart_app_service.h"
#include "platform/linux/desktop_entry.h"
#include "platform/linux/key_file.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

using namespace zenlot;
using namespace Qt::StringLiterals;

QByteArray readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// What switches the entry off, and what starts a program that has gone, gives way.
bool mayGo(const QByteArray& line) {
    return line.contains("Hidden") || line.contains("X-GNOME-Autostart-enabled") ||
           line.contains("Exec");
}

void editLoginItem(const QByteArray& content) {
    static const QTemporaryDir folder(u"/dev/shm/zenlot-fuzz-XXXXXX"_s);
    const QString path = folder.path() + u"/autostart/dev.quorvane.zenlot.desktop"_s;
    AutostartAppService service(folder.path(), u"/bin/true"_s, "--background");
    QFile::remove(path);
    ZENLOT_EXPECT(!service.registerService());
    {
        QFile file(path);
        ZENLOT_EXPECT(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    if (service.registerService())
        return;
    ZENLOT_EXPECT(service.status() == AppServiceStatus::enabled);
    const QByteArray once = readAll(path);
    ZENLOT_EXPECT(!service.registerService() && readAll(path) == once);
    QList<QByteArray> left = once.split('\n');
    for (const QByteArray& line : content.split('\n'))
        ZENLOT_EXPECT(line.isEmpty() || mayGo(line) || left.removeOne(line));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray content(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const KeyFile file(content);
    file.list("Icon Theme", "Directories", u',');
    file.number("Icon Theme", "Size", 1);
    parseDesktopEntry(content);
    const QString text = QString::fromUtf8(content);
    for (const QString& word : wordsOfExec(text))
        ZENLOT_EXPECT(word.size() <= text.size());
    desktopEntriesOfUnit(text);
    desktopEntriesOfUnit(unitOfCgroup(content));
    editLoginItem(content);
    return 0;
}
