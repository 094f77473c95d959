#include "platform/linux/user_file.h"
#include "support/temporary_files.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace zenlot {
namespace {

constexpr qint64 kMaximumBytes = 16;
const QString kName = QStringLiteral("file");

class UserFileTest : public testing::Test {
  protected:
    UserFile read() const { return readUserFile(folder_.path(kName), kMaximumBytes); }

    unsigned modeOf(const QString& name) const {
        struct stat status {};
        EXPECT_EQ(::stat(folder_.encoded(name).constData(), &status), 0);
        return status.st_mode & 07777U;
    }

    TemporaryFiles folder_;
};

TEST_F(UserFileTest, TakesBackNoEditMadeSinceTheFileWasRead) {
    const QString path = folder_.path(kName);
    const UserFile missing = read();
    EXPECT_EQ(missing.state, UserFile::State::missing);
    folder_.write(kName, "other");
    const UserFile file = read();
    EXPECT_EQ(file.content, "other");
    folder_.write(kName, "another");
    for (const UserFile& outdated : {missing, file}) {
        EXPECT_EQ(replaceUserFile(path, outdated, "mine").outcome,
                  Replacement::Outcome::changedMeanwhile);
        EXPECT_EQ(moveUserFileAside(path, outdated, QStringLiteral(".aside")).outcome,
                  Replacement::Outcome::changedMeanwhile);
    }
    EXPECT_EQ(folder_.read(kName), "another");
    EXPECT_EQ(folder_.names(), QStringList(kName));
}

TEST_F(UserFileTest, KeepsModesAndMakesFoldersForTheUserAlone) {
    folder_.write(kName, "other");
    ASSERT_EQ(::chmod(folder_.encoded(kName).constData(), 0640), 0);
    EXPECT_EQ(replaceUserFile(folder_.path(kName), read(), "mine").outcome,
              Replacement::Outcome::done);
    EXPECT_EQ(folder_.read(kName), "mine");
    EXPECT_EQ(modeOf(kName), 0640U);

    EXPECT_FALSE(makePrivateDirectories(folder_.path(QStringLiteral("a/b"))));
    EXPECT_EQ(modeOf(QStringLiteral("a")), 0700U);
    EXPECT_EQ(makePrivateDirectories(folder_.path(kName + QStringLiteral("/c"))),
              std::errc::not_a_directory);
}

} // namespace
} // namespace zenlot
