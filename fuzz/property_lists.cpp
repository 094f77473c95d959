// Property lists in both formats. Nothing but the four texts comes out of them, and each is no
// longer than the file.
#include "fuzzing.h"
#include "platform/linux/property_list_file_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QStringList keys{QStringLiteral("CFBundleIdentifier"), QStringLiteral("CFBundleVersion"),
                           QStringLiteral("CFBundleShortVersionString"),
                           QStringLiteral("CFBundleIconFile")};
    const QByteArray content(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const zenlot::PropertyTexts texts = zenlot::propertyListTexts(content, keys);
    ZENLOT_EXPECT(texts.size() <= keys.size());
    for (const QString& text : texts)
        ZENLOT_EXPECT(text.size() <= content.size() + 4096); // what an entity may stand for
    return 0;
}
