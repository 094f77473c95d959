#include "inventory/linux/proc_files.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace zenlot {
namespace {

TEST(ProcFilesTest, StatusNamesBothUsers) {
    struct Case {
        const char* text;
        std::optional<ProcessStatus> expected;
    };
    for (const auto& [text, expected] : std::initializer_list<Case>{
             {"Name:\tx\nState:\tS (sleeping)\nUid:\t1000\t0\t0\t0\nGid:\t5\t5\t5\t5\n",
              ProcessStatus{1000, 0, false}},
             {"Name:\tx\nState:\tZ (zombie)\nUid:\t7\t8\t8\t8\n", ProcessStatus{7, 8, true}},
             // The kernel escapes line breaks in the name, so that it can't pass for a line.
             {"Name:\tx\\nUid:\t1\nUid:\t4294967295\t3\t3\t3", ProcessStatus{4294967295, 3, false}},
             {"Uid:\t7\n", std::nullopt},
             {"Uid:\tx\ty\n", std::nullopt},
             {"", std::nullopt}})
        EXPECT_EQ(decodeProcessStatus(text), expected) << text;
}

TEST(ProcFilesTest, ReadsProcessesFromAnyRoot) {
    const TemporaryFolder folder;
    folder.write("12/status", "State:\tR\nUid:\t5\t6\t6\t6\n");
    folder.write("uptime", "1");
    folder.write("self/status", "");
    folder.link("12/fd/0", "/dev/null");
    folder.link("12/fd/1", "socket:[4711]");
    folder.link("12/fd/2", "socket:[]");
    folder.link("12/fd/3", "socket:[18446744073709551616]");
    folder.link("12/fd/4", "/srv/" + std::string(3000, 'x') + "/socket:[1]");
    const ProcFiles files(folder.path().string());
    EXPECT_EQ(files.pids(), std::vector<ProcessId>{12});
    EXPECT_EQ(files.pids(), std::vector<ProcessId>{12}); // a second look starts afresh
    EXPECT_EQ(files.status(12), (ProcessStatus{5, 6, false}));
    EXPECT_EQ(files.status(13), std::nullopt);
    std::vector<std::uint64_t> inodes;
    const auto collect = [&inodes](std::uint64_t inode) { inodes.push_back(inode); };
    files.forEachSocketInode(12, collect);
    files.forEachSocketInode(13, collect);
    EXPECT_EQ(inodes, std::vector<std::uint64_t>{4711});
    EXPECT_TRUE(ProcFiles("/nowhere").pids().empty());
}

TEST(ProcFilesTest, DeletedMarkIsTakenOffUnlessItIsTheName) {
    const TemporaryFolder folder;
    folder.write("really (deleted)", "");
    const std::string real = (folder.path() / "really (deleted)").string();
    folder.link("2/exe", "/opt/server (deleted)");
    folder.link("3/exe", real);
    folder.link("4/exe", "/opt/server");
    const ProcFiles files(folder.path().string());
    EXPECT_EQ(files.executablePath(2), "/opt/server");
    EXPECT_EQ(files.executablePath(3), real);
    EXPECT_EQ(files.executablePath(4), "/opt/server");
    EXPECT_EQ(files.executablePath(5), "");
}

} // namespace
} // namespace zenlot
