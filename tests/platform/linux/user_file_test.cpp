#include "platform/linux/user_file.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace zenlot {

TEST(UserFile, TakesBackNoEditMadeSinceItWasReadAndKeepsTheMode) {
    using Outcome = Replacement::Outcome;
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "file";
    const QString path = QString::fromStdString(file);
    const UserFile missing = readUserFile(path, 16);
    folder.write("file", "other");
    const UserFile other = readUserFile(path, 16);
    folder.write("file", "another");
    for (const UserFile& outdated : {missing, other}) {
        EXPECT_EQ(replaceUserFile(path, outdated, "mine").outcome, Outcome::changedMeanwhile);
        EXPECT_EQ(moveUserFileAside(path, outdated, path).outcome, Outcome::changedMeanwhile);
    }
    EXPECT_EQ(folder.read("file"), "another");
    const auto mode = std::filesystem::perms{0604};
    std::filesystem::permissions(file, mode);
    EXPECT_EQ(replaceUserFile(path, readUserFile(path, 16), "mine").outcome, Outcome::done);
    EXPECT_EQ(folder.read("file"), "mine");
    EXPECT_EQ(std::filesystem::status(file).permissions(), mode);
}

} // namespace zenlot
