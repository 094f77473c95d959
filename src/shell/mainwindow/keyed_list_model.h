// A list model whose rows are told apart by a key, so that new content is reached by as few
// removals, moves, insertions and changes as possible: a view keeps its selection and its place.
#pragma once

#include <QAbstractListModel>
#include <QHash>

#include <algorithm>
#include <cstddef>
#include <span>
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
    static constexpr auto kAll = static_cast<std::size_t>(-1);

    // Comes to the wanted rows, or when more than `mostNew` of them are new, closer to them: a view
    // needs its time for each. True when all is as wanted.
    bool setRows(const std::vector<Row>& wanted, std::size_t mostNew = kAll) {
        rows_.reserve(wanted.size()); // to the row, as a long list is long
        // Most of a long list stays as it is.
        const std::size_t shared = std::min(rows_.size(), wanted.size());
        std::size_t begin = 0;
        while (begin < shared && rows_[begin].key == wanted[begin].key)
            ++begin;
        std::size_t tail = 0;
        while (tail < shared - begin &&
               rows_[rows_.size() - 1 - tail].key == wanted[wanted.size() - 1 - tail].key)
            ++tail;
        const Wanted middle(wanted.begin() + static_cast<std::ptrdiff_t>(begin),
                            wanted.end() - static_cast<std::ptrdiff_t>(tail));
        for (std::size_t row = 0; row < begin; ++row)
            update(row, wanted[row]);

        removeUnwanted(middle, begin, rows_.size() - tail);
        const std::vector<bool> staysPut = unmovedRows(middle, begin, rows_.size() - tail);
        QHash<Key, bool> moves;
        for (std::size_t row = 0; row < staysPut.size(); ++row)
            moves.insert(rows_[begin + row].key, !staysPut[row]);

        bool isComplete = true;
        std::size_t done = begin; // the place behind the rows that are where they belong
        for (std::size_t each = 0; each < middle.size();) {
            const auto move = moves.constFind(middle[each].key);
            if (move == moves.constEnd()) {
                std::size_t end = each + 1;
                while (end < middle.size() && !moves.contains(middle[end].key))
                    ++end;
                const std::size_t count = std::min(end - each, mostNew);
                insert(middle.subspan(each, count), done);
                isComplete = isComplete && count == end - each;
                mostNew -= mostNew == kAll ? 0 : count;
                done += count;
                each = end;
                continue;
            }
            const Key& key = middle[each].key;
            done = *move ? moveTo(done, key) : placeOf(key, done) + 1;
            update(done - 1, middle[each]);
            ++each;
        }
        for (std::size_t each = wanted.size() - tail; each < wanted.size(); ++each)
            update(done++, wanted[each]);
        tellChanges();
        return isComplete;
    }

  private:
    using Wanted = std::span<const Row>;

    std::size_t placeOf(const Key& key, std::size_t from = 0) const {
        const auto found = std::ranges::find(rows_.begin() + static_cast<std::ptrdiff_t>(from),
                                             rows_.end(), key, &Row::key);
        return static_cast<std::size_t>(found - rows_.begin());
    }

    // Changes of rows that stand together are told together, before anything else is.
    void update(std::size_t place, const Row& wanted) {
        if (rows_[place] == wanted)
            return;
        if (changedEnd_ != place)
            tellChanges();
        if (changedBegin_ == changedEnd_)
            changedBegin_ = place;
        rows_[place] = wanted;
        changedEnd_ = place + 1;
    }

    void tellChanges() {
        const std::size_t begin = changedBegin_;
        const std::size_t end = changedEnd_;
        changedBegin_ = changedEnd_ = 0;
        if (begin != end)
            Q_EMIT dataChanged(index(static_cast<int>(begin)), index(static_cast<int>(end) - 1));
    }

    void insert(Wanted rows, std::size_t place) {
        if (rows.empty())
            return;
        tellChanges();
        beginInsertRows({}, static_cast<int>(place), static_cast<int>(place + rows.size()) - 1);
        rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(place), rows.begin(), rows.end());
        endInsertRows();
    }

    // Brings a row to the place, and returns the place behind it. A row that comes from above
    // pulls the others up.
    std::size_t moveTo(std::size_t place, const Key& key) {
        const std::size_t from = placeOf(key);
        if (from == place)
            return place + 1;
        tellChanges();
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

    void removeUnwanted(Wanted wanted, std::size_t begin, std::size_t end) {
        QHash<Key, bool> keys;
        keys.reserve(static_cast<qsizetype>(wanted.size()));
        for (const Row& row : wanted)
            keys.insert(row.key, true);
        while (end > begin) {
            if (keys.contains(rows_[end - 1].key)) {
                --end;
                continue;
            }
            std::size_t first = end - 1;
            while (first > begin && !keys.contains(rows_[first - 1].key))
                --first;
            tellChanges();
            beginRemoveRows({}, static_cast<int>(first), static_cast<int>(end) - 1);
            rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(first),
                        rows_.begin() + static_cast<std::ptrdiff_t>(end));
            endRemoveRows();
            end = first;
        }
    }

    // The longest run of rows that are in the wanted order already; only the others have to move.
    std::vector<bool> unmovedRows(Wanted wanted, std::size_t begin, std::size_t end) const {
        QHash<Key, std::size_t> places;
        places.reserve(static_cast<qsizetype>(wanted.size()));
        for (std::size_t place = 0; place < wanted.size(); ++place)
            places.insert(wanted[place].key, place);

        std::vector<std::size_t> targets(end - begin);
        std::vector<std::size_t> before(end - begin, kAll);
        std::vector<std::size_t> ends; // the row that ends the best run of each length
        for (std::size_t row = 0; row < targets.size(); ++row) {
            targets[row] = places.value(rows_[begin + row].key);
            const auto place = std::ranges::lower_bound(
                ends, targets[row], {}, [&targets](std::size_t each) { return targets[each]; });
            if (place != ends.begin())
                before[row] = *(place - 1);
            if (place == ends.end())
                ends.push_back(row);
            else
                *place = row;
        }
        std::vector<bool> unmoved(targets.size(), false);
        for (std::size_t row = ends.empty() ? kAll : ends.back(); row != kAll; row = before[row])
            unmoved[row] = true;
        return unmoved;
    }

    std::vector<Row> rows_;
    std::size_t changedBegin_{0};
    std::size_t changedEnd_{0};
};

} // namespace zenlot
