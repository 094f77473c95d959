#include "shell/mainwindow/keyed_list_model.h"

#include <QAbstractItemModelTester>
#include <QString>
#include <gtest/gtest.h>

#include <random>

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
    void show(const QString& keys) {
        std::vector<Row> rows;
        for (const QChar key : keys)
            rows.push_back({QString(key.toLower()), key.isUpper() ? 1 : 0});
        setRows(std::move(rows));
    }

    QString shown() const {
        QString keys;
        for (const Row& row : rows())
            keys += row.value == 1 ? row.key.toUpper() : row.key;
        return keys;
    }

    QVariant data(const QModelIndex&, int) const override { return {}; }
};

TEST(KeyedListModelTest, ReachesWhateverIsWanted) {
    std::mt19937 random(7);
    Model model;
    const QAbstractItemModelTester tester(&model);
    for (int round = 0; round < 300; ++round) {
        QString keys = u"abcdefghijkl"_s.left(static_cast<int>(random() % 13));
        std::shuffle(keys.begin(), keys.end(), random);
        for (QChar& key : keys) {
            if (random() % 4 == 0)
                key = key.toUpper();
        }
        model.show(keys);
        ASSERT_EQ(model.shown(), keys);
    }
}

} // namespace
} // namespace zenlot
