#include "shell/mainwindow/sidebar_model.h"

#include <QAbstractItemModelTester>
#include <QStringList>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

constexpr UserId kMe = 501;

OccupiedPort record(std::int64_t port, std::int64_t pid, const std::string& user = "501",
                    const std::string& name = "Name") {
    return {port, "TCP4", "name", name, pid, user, "/bin/name"};
}

// Writes down every operation of a model.
class Operations : public QObject {
  public:
    explicit Operations(QAbstractItemModel& model) {
        const auto note = [this](const char* what) {
            return [this, what](const QModelIndex&, int first, int last) {
                list << QStringLiteral("%1 %2-%3").arg(QLatin1String(what)).arg(first).arg(last);
            };
        };
        connect(&model, &QAbstractItemModel::rowsInserted, this, note("insert"));
        connect(&model, &QAbstractItemModel::rowsRemoved, this, note("remove"));
        connect(&model, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex& first) {
            list << QStringLiteral("change %1").arg(first.row());
        });
        connect(&model, &QAbstractItemModel::modelReset, this, [this] { list << u"reset"_qs; });
    }

    QStringList take() { return std::exchange(list, {}); }

    QStringList list;
};

QStringList shown(const SidebarModel& model) {
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        const QModelIndex index = model.index(row);
        const QString heading = index.data(SidebarModel::headingRole).toString();
        rows << (heading.isEmpty() ? index.data(SidebarModel::portRole).toString() : heading);
    }
    return rows;
}

TEST(SidebarModelTest, OwnPortsComeFirst) {
    SidebarModel model(nullptr, kMe);
    const QAbstractItemModelTester tester(&model);
    model.setPorts({record(22, 0, "0"), record(3000, 7), record(80, 8), record(443, 0, "")});
    EXPECT_EQ(shown(model), (QStringList{u"My Processes"_qs, u"80"_qs, u"3000"_qs, u"System"_qs,
                                         u"22"_qs, u"443"_qs}));
}

TEST(SidebarModelTest, RefreshTouchesOnlyWhatChanged) {
    SidebarModel model(nullptr, kMe);
    const QAbstractItemModelTester tester(&model);
    Operations operations(model);
    const std::vector<OccupiedPort> before{record(80, 1), record(81, 2), record(82, 3)};
    model.setPorts(before);
    operations.take();

    model.setPorts(before);
    EXPECT_EQ(operations.take(), QStringList());
    model.setPorts({record(80, 1), record(81, 2, "501", "Other"), record(82, 3)});
    EXPECT_EQ(operations.take(), QStringList{u"change 2"_qs});
    model.setPorts({record(80, 1), record(82, 3), record(83, 4)});
    EXPECT_EQ(operations.take(), (QStringList{u"remove 2-2"_qs, u"insert 3-3"_qs}));
    model.setPorts({record(80, 9), record(82, 3), record(83, 4)}); // another owner, another row
    EXPECT_EQ(operations.take(), (QStringList{u"remove 1-1"_qs, u"insert 1-1"_qs}));
    model.setPorts({});
    EXPECT_EQ(operations.take(), QStringList{u"remove 0-3"_qs});
}

} // namespace
} // namespace zenlot
