#include "shell/inspector/process_details_text.h"

#include <QLatin1Char>

#include <algorithm>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

QString twoDigits(qint64 number) {
    return u"%1"_s.arg(number, 2, 10, QLatin1Char('0'));
}

QString percentText(std::uint64_t tenths) {
    return u"%1.%2%"_s.arg(QString::number(tenths / 10), QString::number(tenths % 10));
}

} // namespace

QString residentSizeText(std::uint64_t bytes) {
    return bytes >> 20 ? QString::number(bytes >> 20) + u" MB"_s
                       : QString::number(bytes >> 10) + u" KB"_s;
}

QString virtualSizeText(std::uint64_t bytes) {
    return bytes >> 30 ? QString::number(bytes >> 30) + u" GB"_s
                       : QString::number(bytes >> 20) + u" MB"_s;
}

QString processStatusText(ProcessState state) {
    switch (state) {
    case ProcessState::beingCreated:
        return u"I"_s;
    case ProcessState::runnable:
        return u"R"_s;
    case ProcessState::sleeping:
        return u"S"_s;
    case ProcessState::stopped:
        return u"T"_s;
    case ProcessState::zombie:
        return u"Z"_s;
    case ProcessState::unknown:
        break;
    }
    return {};
}

QString elapsedText(std::chrono::seconds elapsed) {
    const qint64 total = std::max<qint64>(0, elapsed.count());
    const QString seconds = twoDigits(total % 60);
    if (total < 3600)
        return u"%1:%2"_s.arg(QString::number(total / 60), seconds);
    const QString minutes = twoDigits(total % 3600 / 60);
    if (total < 86400)
        return u"%1:%2:%3"_s.arg(QString::number(total / 3600), minutes, seconds);
    return u"%1-%2:%3:%4"_s.arg(QString::number(total / 86400), twoDigits(total % 86400 / 3600),
                                minutes, seconds);
}

QString cpuShareText(std::chrono::milliseconds cpuTime, std::chrono::seconds elapsed) {
    // A thousandth of a second in each second is a tenth of a percent.
    const bool hasShare = cpuTime.count() > 0 && elapsed.count() > 0;
    return percentText(hasShare ? static_cast<std::uint64_t>(cpuTime.count() / elapsed.count())
                                : 0);
}

QString memoryShareText(std::uint64_t residentBytes, std::uint64_t physicalBytes) {
    // In KiB, so that the product fits whatever the sizes are.
    const std::uint64_t physical = physicalBytes >> 10;
    return physical == 0 ? QString() : percentText((residentBytes >> 10) * 1000 / physical);
}

QString tcpStateText(TcpState state) {
    switch (state) {
    case TcpState::closed:
        return u"CLOSED"_s;
    case TcpState::listen:
        return u"LISTEN"_s;
    case TcpState::synSent:
        return u"SYN_SENT"_s;
    case TcpState::synReceived:
        return u"SYN_RCVD"_s;
    case TcpState::established:
        return u"ESTABLISHED"_s;
    case TcpState::closeWait:
        return u"CLOSE_WAIT"_s;
    case TcpState::finWait1:
        return u"FIN_WAIT_1"_s;
    case TcpState::closing:
        return u"CLOSING"_s;
    case TcpState::lastAck:
        return u"LAST_ACK"_s;
    case TcpState::finWait2:
        return u"FIN_WAIT_2"_s;
    case TcpState::timeWait:
        return u"TIME_WAIT"_s;
    case TcpState::unknown:
        break;
    }
    return u"UNKNOWN"_s;
}

} // namespace zenlot
