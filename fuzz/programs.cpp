// What the background monitor reads of others' programs: arguments and environment, settings in
// every format, sources, manuals, what was built and packed.
#include "background_monitor/java_archive.h"
#include "background_monitor/port_text.h"
#include "background_monitor/settings_text.h"
#include "background_monitor/stage.h"
#include "background_monitor/written_ports.h"
#include "fuzzing.h"
#include "inventory/programs/invocation.h"
#include "posix/regular_file.h"

#include <algorithm>
#include <array>

namespace {

using namespace zenlot;
using namespace zenlot::fuzzing;

constexpr std::array<std::uint16_t, 4> kHeld{80, 3000, 5432, 8080};

void readCommandLine(std::string_view text) {
    const std::vector<std::string> words = pieces(text, '\0');
    const auto invocation = identifyInvocation(words, "/usr/bin/" + words.front());
    if (!invocation)
        return;
    isInstalledScript(invocation->script);
    for (const std::string& word : words) {
        addsArguments(*invocation, word);
        namesOtherSocket(word);
        parseEndpoint(publishedEndpoint(word));
    }
    for (std::size_t place = 0; place < invocation->arguments.size(); ++place)
        tellingValue(invocation->arguments, place);
}

void readSettingsText(std::string_view text) {
    for (const SettingsFormat format :
         {SettingsFormat::braces, SettingsFormat::keywords, SettingsFormat::indentation,
          SettingsFormat::lines, SettingsFormat::elements}) {
        for (const Setting& setting : readSettings(text, format)) {
            likelihoodOfSetting(setting);
            portsInValue(setting.value);
            variablesIn(setting.value);
        }
    }
    readVariables(text);
    ZENLOT_EXPECT(withoutOtherStages(text, kUsualStage).size() <= text.size() + 1); // ends a line
    settingsFormatOf(text.substr(0, 64));
}

void readSource(std::string_view text) {
    for (const PortSite& site : portSites(text))
        ZENLOT_EXPECT(site.likelihood > 0);
    portsCalled(namesListenedOn(text), text);
    variablesIn(text);
    relativeImports(text);
    namedSettings(text);
    for (const auto& found :
         {mentionedPorts(text, kHeld), spelledPorts(text, kHeld), describedPorts(text, kHeld),
          portsInBinary(text, BinaryKind::program, kHeld),
          portsInBinary(text, BinaryKind::bytecode, kHeld)}) {
        for (const std::uint16_t port : found)
            ZENLOT_EXPECT(std::ranges::find(kHeld, port) != kHeld.end());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static MemoryFile archive;
    if (size == 0)
        return 0;
    const std::string_view text = textOf(data, size).substr(1);
    switch (data[0] % 4) {
    case 0:
        readCommandLine(text);
        break;
    case 1:
        readSettingsText(text);
        break;
    case 2:
        readSource(text);
        break;
    default:
        archive.set(text);
        for (const ArchivedFile& file :
             readJavaArchive(openRegularFile(archive.path().c_str())->descriptor).settings)
            ZENLOT_EXPECT(file.text.size() <= std::size_t{128} * 1024);
    }
    return 0;
}
