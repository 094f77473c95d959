// A list model whose rows are told apart by a key, so that new content is reached by as few
// removals, moves, insertions and changes as possible: a view keeps its selection and its place.
#pragma once

#include <QAbstractListModel>
#include <QHash>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace zenlot {

// `Row` has a member `key` that no two rows share, and ==.
template <typename Row>
class KeyedListModel : public QAbstractListModel {
  public:
    using Key = decltype(Row::key);
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows_.size());
    }

    const std::vector<Row>& rows() const { return rows_; }
    bool isEmpty() const { return rows_.empty(); }

    // The row with that key, or -1.
    int rowOf(const Key& key) const {
        const std::size_t place = placeOf(key);
        return place == rows_.size() ? -1 : static_cast<int>(place);
    }

  protected:
    void setRows(std::vector<Row> wanted) {
        removeUnwanted(wanted);
        const std::vector<bool> staysPut = unmovedRows(wanted);
        QHash<Key, bool> moves;
        for (std::size_t row = 0; row < rows_.size(); ++row)
            moves.insert(rows_[row].key, !staysPut[row]);

        std::size_t done = 0; // the place behind the rows that are where they belong
        for (std::size_t each = 0; each < wanted.size();) {
            const auto move = moves.constFind(wanted[each].key);
            if (move == moves.constEnd()) {
                const std::size_t count = insertRun(wanted, each, done, moves);
                each += count;
                done += count;
                continue;
            }
            done = *move ? moveTo(done, wanted[each].key) : placeOf(wanted[each].key, done) + 1;
            if (Row& row = rows_[done - 1]; row != wanted[each]) {
                row = std::move(wanted[each]);
                const QModelIndex changed = index(static_cast<int>(done) - 1);
                Q_EMIT dataChanged(changed, changed);
            }
            ++each;
        }
    }

  private:
    std::size_t placeOf(const Key& key, std::size_t from = 0) const {
        const auto found = std::ranges::find(rows_.begin() + static_cast<std::ptrdiff_t>(from),
                                             rows_.end(), key, &Row::key);
        return static_cast<std::size_t>(found - rows_.begin());
    }

    // Inserts the new rows from `first` on, up to the next known one, and says how many they are.
    std::size_t insertRun(std::vector<Row>& wanted, std::size_t first, std::size_t place,
                          const QHash<Key, bool>& known) {
        std::size_t end = first + 1;
        while (end < wanted.size() && !known.contains(wanted[end].key))
            ++end;
        const std::size_t count = end - first;
        beginInsertRows({}, static_cast<int>(place), static_cast<int>(place + count) - 1);
        rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(place),
                     std::make_move_iterator(wanted.begin() + static_cast<std::ptrdiff_t>(first)),
                     std::make_move_iterator(wanted.begin() + static_cast<std::ptrdiff_t>(end)));
        endInsertRows();
        return count;
    }

    // Brings a row to the place, and returns the place behind it. A row that comes from above
    // pulls the others up.
    std::size_t moveTo(std::size_t place, const Key& key) {
        const std::size_t from = placeOf(key);
        if (from == place)
            return place + 1;
        beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {},
                      static_cast<int>(place));
        const auto begin = rows_.begin();
        const auto source = begin + static_cast<std::ptrdiff_t>(from);
        const auto target = begin + static_cast<std::ptrdiff_t>(place);
        if (from < place)
            std::rotate(source, source + 1, target);
        else
            std::rotate(target, source, source + 1);
        endMoveRows();
        return from < place ? place : place + 1;
    }

    void removeUnwanted(const std::vector<Row>& wanted) {
        QHash<Key, bool> keys;
        keys.reserve(static_cast<qsizetype>(wanted.size()));
        for (const Row& row : wanted)
            keys.insert(row.key, true);
        for (std::size_t end = rows_.size(); end > 0;) {
            if (keys.contains(rows_[end - 1].key)) {
                --end;
                continue;
            }
            std::size_t first = end - 1;
            while (first > 0 && !keys.contains(rows_[first - 1].key))
                --first;
            beginRemoveRows({}, static_cast<int>(first), static_cast<int>(end) - 1);
            rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(first),
                        rows_.begin() + static_cast<std::ptrdiff_t>(end));
            endRemoveRows();
            end = first;
        }
    }

    // The longest run of rows that are in the wanted order already; only the others have to move.
    std::vector<bool> unmovedRows(const std::vector<Row>& wanted) const {
        QHash<Key, std::size_t> places;
        places.reserve(static_cast<qsizetype>(wanted.size()));
        for (std::size_t place = 0; place < wanted.size(); ++place)
            places.insert(wanted[place].key, place);

        constexpr auto kNone = static_cast<std::size_t>(-1);
        std::vector<std::size_t> targets(rows_.size());
        std::vector<std::size_t> before(rows_.size(), kNone);
        std::vector<std::size_t> ends; // the row that ends the best run of each length
        for (std::size_t row = 0; row < rows_.size(); ++row) {
            targets[row] = places.value(rows_[row].key);
            const auto end = std::ranges::lower_bound(
                ends, targets[row], {}, [&targets](std::size_t each) { return targets[each]; });
            if (end != ends.begin())
                before[row] = *(end - 1);
            if (end == ends.end())
                ends.push_back(row);
            else
                *end = row;
        }
        std::vector<bool> unmoved(rows_.size(), false);
        for (std::size_t row = ends.empty() ? kNone : ends.back(); row != kNone; row = before[row])
            unmoved[row] = true;
        return unmoved;
    }

    std::vector<Row> rows_;
};

} // namespace zenlot
