#include "settings/window/exception_list_model.h"

#include "settings/window/exception_entries.h"
#include "text/display_line.h"

#include <algorithm>
#include <utility>

namespace zenlot {
namespace {

bool isCodePointLess(const QString& left, const QString& right) {
    return left.toUcs4() < right.toUcs4();
}

QStringList decimals(const QList<qint64>& ports) {
    QStringList texts;
    for (const qint64 port : ports)
        texts.append(QString::number(port));
    return texts;
}

} // namespace

ExceptionListModel::ExceptionListModel(AppSettings& settings, PortsGetter get, PortsSetter set,
                                       Changed changed, QObject* parent)
    : ExceptionListModel(settings,
                         {[&settings, get] { return decimals((settings.*get)()); }, validatePort,
                          [&settings, get, set](const QString& entry) {
                              QList<qint64> ports = (settings.*get)();
                              ports.append(entry.toLongLong());
                              std::ranges::sort(ports);
                              (settings.*set)(ports);
                          },
                          [&settings, get, set](const QString& entry) {
                              QList<qint64> ports = (settings.*get)();
                              ports.removeAll(entry.toLongLong());
                              (settings.*set)(ports);
                          }},
                         changed, parent) {}

ExceptionListModel::ExceptionListModel(AppSettings& settings, NamesGetter get, NamesSetter set,
                                       Changed changed, QObject* parent)
    : ExceptionListModel(settings,
                         {[&settings, get] { return (settings.*get)(); }, validateProcessName,
                          [&settings, get, set](const QString& entry) {
                              QStringList names = (settings.*get)();
                              names.append(entry);
                              std::ranges::sort(names, isCodePointLess);
                              (settings.*set)(names);
                          },
                          [&settings, get, set](const QString& entry) {
                              QStringList names = (settings.*get)();
                              names.removeAll(entry);
                              (settings.*set)(names);
                          }},
                         changed, parent) {}

ExceptionListModel::ExceptionListModel(AppSettings& settings, Editor editor, Changed changed,
                                       QObject* parent)
    : QAbstractListModel(parent), editor_(std::move(editor)), items_(editor_.items()) {
    connect(&settings, changed, this, &ExceptionListModel::refresh);
}

int ExceptionListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(items_.size());
}

QVariant ExceptionListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const QString& item = items_.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case EntryRole:
        return displayLine(item); // alerts bring names of other processes here
    case IsNumericRole:
        return std::ranges::all_of(item, [](QChar character) { return character.isNumber(); });
    default:
        return {};
    }
}

QHash<int, QByteArray> ExceptionListModel::roleNames() const {
    return {{EntryRole, "entry"}, {IsNumericRole, "isNumeric"}};
}

// Entries come and go one at a time, mostly: what stays at both ends keeps its rows.
void ExceptionListModel::refresh() {
    const QStringList wanted = editor_.items();
    const auto shorter = static_cast<int>(std::min(items_.size(), wanted.size()));
    int kept = 0;
    while (kept < shorter && items_.at(kept) == wanted.at(kept))
        ++kept;
    int keptAtEnd = 0;
    while (keptAtEnd < shorter - kept &&
           items_.at(items_.size() - 1 - keptAtEnd) == wanted.at(wanted.size() - 1 - keptAtEnd))
        ++keptAtEnd;

    if (const int last = rowCount() - keptAtEnd - 1; last >= kept) {
        beginRemoveRows({}, kept, last);
        items_.erase(items_.begin() + kept, items_.begin() + last + 1);
        endRemoveRows();
    }
    if (const int last = static_cast<int>(wanted.size()) - keptAtEnd - 1; last >= kept) {
        beginInsertRows({}, kept, last);
        items_ = wanted;
        endInsertRows();
    }
}

void ExceptionListModel::commit(const QString& draft) {
    const std::optional<QString> entry = editor_.validate(withoutOuterBlanks(draft));
    if (entry && !items_.contains(*entry))
        editor_.onAdd(*entry);
}

void ExceptionListModel::removeEntry(int row) {
    if (row >= 0 && row < items_.size())
        editor_.onRemove(QString(items_.at(row)));
}

} // namespace zenlot
