#include "shell/mainwindow/sidebar_model.h"
#include "support/model_operations.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

AppPortGroup single(std::int64_t port, std::int64_t pid) {
    return {std::nullopt, {{port, "TCP4", "name", "Name", pid, "501", "/bin/name"}}};
}

AppPortGroup bundle(const std::string& path, std::initializer_list<std::int64_t> ports) {
    AppPortGroup group{path, {}};
    for (const std::int64_t port : ports)
        group.ports.push_back({port, "TCP4", "x", "X", 9, "501", path + "/x"});
    return group;
}

QStringList shown(const SidebarModel& model) {
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row)
        rows << model.index(row).data(SidebarModel::accessibleNameRole).toString();
    return rows;
}

TEST(SidebarModelTest, ShowsPartsGroupsAndPorts) {
    SidebarModel model;
    const QAbstractItemModelTester tester(&model);
    model.setContent({{bundle("/A.app", {1, 2}), bundle("/B.app", {3})}, {single(22, 0)}});
    EXPECT_EQ(shown(model), (QStringList{u"My Processes"_s, u"A 2"_s, u"3 X TCP4"_s, u"System"_s,
                                         u"22 Name TCP4"_s}));
    EXPECT_EQ(model.rowOfPort(1), -1);
    EXPECT_EQ(model.index(2).data(SidebarModel::pidRole), 9);
    model.setExpanded(1, true);
    EXPECT_EQ(model.rowOfPort(1), 2);
    EXPECT_EQ(model.index(3).data(SidebarModel::accessibleNameRole), u"2 TCP4"_s);
    EXPECT_EQ(model.neighbour(4, 1), 6); // over the heading
    EXPECT_EQ(model.neighbour(1, -1), 1);

    model.setContent({{}, {single(22, 0), single(22, 0)}}); // twice the same, as a list may say
    EXPECT_EQ(model.rowCount(), 3);
    model.setContent({{bundle("/A.app", {1, 2})}, {}});
    EXPECT_EQ(model.rowCount(), 4) << "an open group stays open";
    model.toggle(1);
    EXPECT_EQ(model.rowCount(), 2);
}

TEST(SidebarModelTest, RefreshTouchesOnlyWhatChanged) {
    SidebarModel model;
    const QAbstractItemModelTester tester(&model);
    std::vector<AppPortGroup> own;
    for (std::int64_t port = 1000; port < 2200; ++port)
        own.push_back(single(port, port));
    QSignalSpy settled(&model, &SidebarModel::settled);
    model.setContent({own, {}});
    EXPECT_LT(model.rowCount(), 1000) << "the window would stand still";
    ASSERT_TRUE(QTest::qWaitFor([&] { return !settled.empty(); }, 20'000));
    EXPECT_EQ(model.rowCount(), 1201);
    ModelOperations operations(model);
    model.setContent({own, {}});
    EXPECT_EQ(operations.take(), QStringList());
    own[600].ports[0].displayName = "Other";
    model.setContent({own, {}});
    EXPECT_EQ(operations.take(), QStringList{u"change 601"_s});
    own.erase(own.begin() + 10);
    model.setContent({own, {}});
    EXPECT_EQ(operations.take(), QStringList{u"remove 11-11"_s});
    own.insert(own.begin(), single(80, 5));
    model.setContent({own, {}});
    EXPECT_EQ(operations.take(), QStringList{u"insert 1-1"_s});
}

} // namespace
} // namespace zenlot
