// The monitor log, as the viewer and the listener read it while it grows in two steps: a text that
// was read again is the text that is read at once, and every announcement has come by the end.
#include "shell/logviewer/log_text.h"

#include "fuzzing.h"
#include "monitoring/monitor_log_tail.h"

#include <QString>

namespace {

using namespace zenlot;

std::size_t announcementsIn(MonitorLogTail& tail) {
    std::size_t count = 0;
    if (!tail.begin().isPieceFound)
        return count;
    for (auto lines = tail.nextAnnouncements(); !lines.empty(); lines = tail.nextAnnouncements())
        count += lines.size();
    return count;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzzing::MemoryFile file;
    if (size == 0)
        return 0;
    const std::string_view text = fuzzing::textOf(data, size).substr(1);
    const std::size_t split = text.size() * data[0] / 256;
    const QString path = QString::fromStdString(file.path());
    const std::atomic<bool> isStopped{false};

    file.set("\n");
    MonitorLogTail tail(path);
    announcementsIn(tail);
    file.append(text.substr(0, split));
    std::size_t announced = announcementsIn(tail);
    const auto before = readLogText(path, LogText(), isStopped);
    file.append(text.substr(split));
    announced += announcementsIn(tail);
    ZENLOT_EXPECT(announced <= text.size() / kConflictAnnouncement.size());

    const auto again = readLogText(path, before.value_or(LogText()), isStopped);
    const auto atOnce = readLogText(path, LogText(), isStopped);
    ZENLOT_EXPECT(again.has_value() == atOnce.has_value());
    if (!again)
        return 0;
    ZENLOT_EXPECT(again->lineCount() == atOnce->lineCount());
    ZENLOT_EXPECT(again->countOfEqualLines(*atOnce) == again->lineCount());
    for (qint64 line = 0; line < again->lineCount(); ++line) {
        ZENLOT_EXPECT(again->line(line).text == atOnce->line(line).text);
        again->tint(line);
    }
    return 0;
}
