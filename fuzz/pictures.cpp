// The pictures of applications, as their files are. What is drawn has the size that was asked for.
#include "fuzzing.h"
#include "shell/processicon/picture_file.h"

#include <QBuffer>
#include <QGuiApplication>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static int argc = 1;
    static char name[] = "pictures"; // NOLINT: as main() has it
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QGuiApplication application(argc, argv);
    QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    const QImage picture = zenlot::decodedPicture(file, 32);
    ZENLOT_EXPECT(picture.isNull() || picture.size() == QSize(32, 32));
    return 0;
}
