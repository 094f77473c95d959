#include "shell/mainwindow/keyed_list_model.h"

#include <QAbstractItemModelTester>
#include <QString>
#include <gtest/gtest.h>

#include <random>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

struct Row {
    QString key;
    int value{0};

    friend bool operator==(const Row&, const Row&) = default;
};

class Model : public KeyedListModel<Row> {
  public:
    // Each character is a key; rows of an upper-case letter carry another value.
    bool show(const QString& keys, std::size_t mostNew = kAll) {
        std::vector<Row> rows;
        for (const QChar key : keys)
            rows.push_back({QString(key.toLower()), key.isUpper() ? 1 : 0});
        return setRows(rows, mostNew);
    }

    QString shown() const {
        QString keys;
        for (const Row& row : rows())
            keys += row.value == 1 ? row.key.toUpper() : row.key;
        return keys;
    }

    QVariant data(const QModelIndex&, int) const override { return {}; }
};

// At once, or in slices.
class KeyedListModelTest : public testing::TestWithParam<std::size_t> {};
INSTANTIATE_TEST_SUITE_P(By, KeyedListModelTest, testing::Values(static_cast<std::size_t>(-1), 2));

TEST_P(KeyedListModelTest, ReachesWhateverIsWanted) {
    std::mt19937 random(7);
    Model model;
    std::size_t inserted = 0;
    QObject::connect(&model, &QAbstractItemModel::rowsInserted,
                     [&](const QModelIndex&, int first, int last) {
                         inserted += static_cast<std::size_t>(last - first + 1);
                     });
    const QAbstractItemModelTester tester(&model);
    for (int round = 0; round < 300; ++round) {
        QString keys = u"abcdefghijkl"_s.left(static_cast<int>(random() % 13));
        std::shuffle(keys.begin(), keys.end(), random);
        for (QChar& key : keys) {
            if (random() % 4 == 0)
                key = key.toUpper();
        }
        while (!model.show(keys, GetParam())) {
            ASSERT_EQ(inserted, GetParam()) << "or it might go on for good";
            inserted = 0;
        }
        ASSERT_LE(std::exchange(inserted, 0), GetParam());
        ASSERT_EQ(model.shown(), keys);
    }
}

} // namespace
} // namespace zenlot
