#include "inventory/record_json.h"
#include "monitoring/conflict_record.h"
#include "monitoring/shared_container.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <fstream>

namespace zenlot {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

TEST(ConflictRecordTest, IsOneObjectWithTheKeysInOrder) {
    const std::string first =
        R"({"port":3000,"pid":42,"processName":"node","displayName":"Node","detectedAt":0.5})";
    const std::string both =
        "[" + first + R"(,{"port":-1,"pid":2,"processName":"","displayName":"b"}])";
    const std::vector<ConflictRecord> records{{3000, 42, "node", "Node", fromReferenceSeconds(0.5)},
                                              {-1, 2, "", "b", std::nullopt}};
    EXPECT_EQ(encodeConflictRecords(records), both);
    EXPECT_EQ(decodeConflictRecords(both), records);
    EXPECT_EQ(encodeConflictRecord(records[0]), first);
    EXPECT_EQ(decodeConflictRecord(first), records[0]);
    EXPECT_EQ(decodeConflictRecords("[" + first + ",{}]"), std::nullopt);
}

TEST(SharedContainerTest, ReadsRegularFilesWholeAndNothingElse) {
    const QTemporaryDir stateHome;
    const SharedContainer container(stateHome.path());
    EXPECT_EQ(SharedContainer::read(container.portsFileURL()), std::nullopt);
    const fs::path folder = fs::path(stateHome.path().toStdString()) / "group.dev.quorvane.zenlot";
    fs::create_directory(folder);
    EXPECT_EQ(container.conflictsFileURL(), folder / "conflicts.json");
    EXPECT_EQ(container.conflictFileURL(3000), folder / "conflict-3000.json");
    const QString relative = QFile::decodeName(fs::relative(folder.parent_path()).c_str());
    EXPECT_EQ(SharedContainer(relative).containerURL(), std::nullopt);

    for (const std::string& content : {std::string("[\0]", 3), std::string(3'000'000, 'x')}) {
        std::ofstream(folder / "ports.json") << content;
        EXPECT_EQ(SharedContainer::read(container.portsFileURL()), content);
    }
    fs::resize_file(folder / "ports.json", kMaxJsonBytes + 1);
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    // The kernel's own files hold more than their size of zero says, as a growing file does.
    for (const char* const name :
         {"ports.json", ".", "missing", "pipe", "/dev/zero", "/proc/self/status"})
        EXPECT_EQ(SharedContainer::read(folder / name), std::nullopt) << name;
}

} // namespace
} // namespace zenlot
