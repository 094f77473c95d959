// The file of the settings, damaged anyhow: what it says is read, a change is kept, and what could
// be read before is still there after it.
#include "fuzzing.h"
#include "platform/linux/json_user_defaults.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Qt::StringLiterals;
    static int argc = 1;
    static char name[] = "settings"; // NOLINT: as main() has it
    static char* argv[] = {name, nullptr};
    static const QCoreApplication application(argc, argv);
    static const QTemporaryDir folder(u"/dev/shm/zenlot-fuzz-XXXXXX"_s);
    const QString path = folder.filePath(u"defaults.json"_s);
    const QString known = u"monitorIgnoredPorts"_s;
    const QString changed = u"showInDock"_s;
    {
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    }
    QFile::remove(path + u".damaged"_s);
    zenlot::JsonUserDefaults defaults(path);
    defaults.read().waitForFinished();
    const auto before = defaults.object(known);
    defaults.set(changed, true);
    defaults.settle();
    ZENLOT_EXPECT(!defaults.isUnwritten());
    ZENLOT_EXPECT(defaults.wasDamaged() == QFile::exists(path + u".damaged"_s));
    zenlot::JsonUserDefaults again(path);
    again.settle();
    ZENLOT_EXPECT(!again.wasDamaged() && again.boolean(changed) && again.object(known) == before);
    return 0;
}
