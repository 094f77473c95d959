#include "background_monitor/runtime_table.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

std::vector<std::string> strings(const QJsonValue& value) {
    std::vector<std::string> result;
    const QJsonArray array = value.toArray();
    for (const auto& entry : array)
        result.push_back(entry.toString().toStdString());
    return result;
}

std::uint16_t portOf(const QJsonValue& value) {
    return static_cast<std::uint16_t>(value.toInt());
}

Runtime runtimeOf(const QJsonObject& row) {
    Runtime runtime;
    runtime.name = row["name"_L1].toString().toStdString();
    runtime.programs = strings(row["programs"_L1]);
    runtime.within = strings(row["within"_L1]);
    runtime.without = strings(row["without"_L1]);
    runtime.flags = strings(row["flags"_L1]);
    runtime.hostFlags = strings(row["host"_L1]);
    runtime.environment = strings(row["environment"_L1]);
    runtime.configs = strings(row["configs"_L1]);
    runtime.configFlags = strings(row["configFlags"_L1]);
    const QJsonObject defaults = row["defaults"_L1].toObject();
    for (auto entry = defaults.begin(); entry != defaults.end(); ++entry)
        runtime.defaultPorts.emplace(entry.key().toStdString(), portOf(*entry));
    if (const QJsonValue port = row["default"_L1]; !port.isUndefined())
        runtime.defaultPorts.emplace("", portOf(port));
    const QJsonObject libraries = row["libraries"_L1].toObject();
    for (auto entry = libraries.begin(); entry != libraries.end(); ++entry)
        runtime.libraries.emplace(entry.key().toStdString(), portOf(*entry));
    runtime.readsEnvironmentFile = row["dotenv"_L1].toBool();
    runtime.takesPositional = row["positional"_L1].toBool();
    runtime.mayNamePortItself = row["script"_L1].toBool();
    runtime.drifts = row["drifts"_L1].toBool();
    runtime.goesOnWithoutPort = row["asks"_L1].toBool();
    runtime.probesProtocols = row["probes"_L1].toBool();
    runtime.publishesPorts = row["publishes"_L1].toBool();
    runtime.probesByConnecting = row["connects"_L1].toBool();
    return runtime;
}

std::vector<Runtime> rowsOf(const QByteArray& json) {
    std::vector<Runtime> rows;
    const QJsonArray array = QJsonDocument::fromJson(json).array();
    for (const auto& row : array)
        rows.push_back(runtimeOf(row.toObject()));
    return rows;
}

QByteArray compiledInTable() {
    QFile file(u":/background_monitor/runtimes.json"_s);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

std::optional<std::uint16_t> Runtime::defaultPort(std::string_view firstWord) const {
    auto found = defaultPorts.find(firstWord);
    if (found == defaultPorts.end())
        found = defaultPorts.find(std::string_view());
    return found == defaultPorts.end() ? std::nullopt : std::optional(found->second);
}

RuntimeTable::RuntimeTable() : rows_(rowsOf(compiledInTable())) {
    index();
}

RuntimeTable::RuntimeTable(std::string_view json)
    : rows_(rowsOf(QByteArray(json.data(), static_cast<qsizetype>(json.size())))) {
    index();
}

const Runtime* RuntimeTable::find(const Invocation& invocation) const {
    const std::string& tool = invocation.tool;
    for (const std::string& program : {invocation.package + "/" + tool, tool,
                                       invocation.genericTool, std::string(kAnyProgram)}) {
        if (const Runtime* row = findProgram(program, invocation.arguments))
            return row;
    }
    return nullptr;
}

const Runtime* RuntimeTable::findProgram(std::string_view program,
                                         std::span<const std::string> arguments) const {
    const auto found = byProgram_.find(program);
    if (found == byProgram_.end())
        return nullptr;
    for (const std::size_t row : found->second) {
        const std::vector<std::string>& within = rows_[row].within;
        if (within.empty() || std::ranges::find_first_of(arguments, within) != arguments.end())
            return &rows_[row];
    }
    return &rows_[found->second.front()];
}

void RuntimeTable::index() {
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        for (const std::string& program : rows_[row].programs)
            byProgram_[program].push_back(row);
    }
}

} // namespace zenlot
