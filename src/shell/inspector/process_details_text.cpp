#include "shell/inspector/process_details_text.h"

#include <QLatin1Char>

#include <algorithm>

namespace zenlot {
namespace {

QString twoDigits(qint64 number) {
    return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

QString percentText(std::uint64_t tenths) {
    return QStringLiteral("%1.%2%").arg(QString::number(tenths / 10), QString::number(tenths % 10));
}

} // namespace

QString residentSizeText(std::uint64_t bytes) {
    return bytes >> 20 ? QString::number(bytes >> 20) + QStringLiteral(" MB")
                       : QString::number(bytes >> 10) + QStringLiteral(" KB");
}

QString virtualSizeText(std::uint64_t bytes) {
    return bytes >> 30 ? QString::number(bytes >> 30) + QStringLiteral(" GB")
                       : QString::number(bytes >> 20) + QStringLiteral(" MB");
}

QString processStatusText(ProcessState state) {
    switch (state) {
    case ProcessState::beingCreated:
        return QStringLiteral("I");
    case ProcessState::runnable:
        return QStringLiteral("R");
    case ProcessState::sleeping:
        return QStringLiteral("S");
    case ProcessState::stopped:
        return QStringLiteral("T");
    case ProcessState::zombie:
        return QStringLiteral("Z");
    case ProcessState::unknown:
        break;
    }
    return {};
}

QString elapsedText(std::chrono::seconds elapsed) {
    const qint64 total = std::max<qint64>(0, elapsed.count());
    const QString seconds = twoDigits(total % 60);
    if (total < 3600)
        return QStringLiteral("%1:%2").arg(QString::number(total / 60), seconds);
    const QString minutes = twoDigits(total % 3600 / 60);
    if (total < 86400)
        return QStringLiteral("%1:%2:%3").arg(QString::number(total / 3600), minutes, seconds);
    return QStringLiteral("%1-%2:%3:%4")
        .arg(QString::number(total / 86400), twoDigits(total % 86400 / 3600), minutes, seconds);
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
        return QStringLiteral("CLOSED");
    case TcpState::listen:
        return QStringLiteral("LISTEN");
    case TcpState::synSent:
        return QStringLiteral("SYN_SENT");
    case TcpState::synReceived:
        return QStringLiteral("SYN_RCVD");
    case TcpState::established:
        return QStringLiteral("ESTABLISHED");
    case TcpState::closeWait:
        return QStringLiteral("CLOSE_WAIT");
    case TcpState::finWait1:
        return QStringLiteral("FIN_WAIT_1");
    case TcpState::closing:
        return QStringLiteral("CLOSING");
    case TcpState::lastAck:
        return QStringLiteral("LAST_ACK");
    case TcpState::finWait2:
        return QStringLiteral("FIN_WAIT_2");
    case TcpState::timeWait:
        return QStringLiteral("TIME_WAIT");
    case TcpState::unknown:
        break;
    }
    return QStringLiteral("UNKNOWN");
}

} // namespace zenlot
