// Writes down every operation of a model, for comparison with an expected list.
#pragma once

#include <QAbstractItemModel>
#include <QStringList>

#include <utility>

namespace zenlot {

class ModelOperations : public QObject {
  public:
    explicit ModelOperations(QAbstractItemModel& model) {
        const auto note = [this](const char* what) {
            return [this, what](const QModelIndex&, int first, int last) {
                list_ << QStringLiteral("%1 %2-%3").arg(QLatin1String(what)).arg(first).arg(last);
            };
        };
        connect(&model, &QAbstractItemModel::rowsInserted, this, note("insert"));
        connect(&model, &QAbstractItemModel::rowsRemoved, this, note("remove"));
        connect(&model, &QAbstractItemModel::rowsMoved, this,
                [this](const QModelIndex&, int from, int, const QModelIndex&, int to) {
                    list_ << QStringLiteral("move %1 to %2").arg(from).arg(to);
                });
        connect(&model, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex& first) {
            list_ << QStringLiteral("change %1").arg(first.row());
        });
        connect(&model, &QAbstractItemModel::modelReset, this,
                [this] { list_ << QStringLiteral("reset"); });
    }

    QStringList take() { return std::exchange(list_, {}); }

  private:
    QStringList list_;
};

} // namespace zenlot
