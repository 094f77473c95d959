#include "inventory/record_json.h"
#include "monitoring/shared_container.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

class SharedContainerTest : public testing::Test {
  protected:
    fs::path write(const std::string& name, const std::string& content) const {
        std::ofstream(stateHome / name, std::ios::binary) << content;
        return stateHome / name;
    }

    QTemporaryDir folder;
    const fs::path stateHome = folder.path().toStdString();
};

TEST_F(SharedContainerTest, IsNoneUntilThereIsAFolder) {
    const SharedContainer container(folder.path());
    EXPECT_EQ(container.containerURL(), std::nullopt);
    EXPECT_EQ(container.portsFileURL(), std::nullopt);
    EXPECT_EQ(container.conflictFileURL(3000), std::nullopt);
    EXPECT_EQ(SharedContainer::read(container.portsFileURL()), std::nullopt);

    const fs::path location = write("group.dev.quorvane.zenlot", "a file in its place");
    EXPECT_EQ(container.containerURL(), std::nullopt);

    fs::remove(location);
    fs::create_directory(location);
    EXPECT_EQ(container.containerURL(), location);
    EXPECT_EQ(container.portsFileURL(), location / "ports.json");
    EXPECT_EQ(container.conflictsFileURL(), location / "conflicts.json");
    EXPECT_EQ(container.conflictFileURL(3000), location / "conflict-3000.json");
    EXPECT_EQ(container.conflictFileURL(80), location / "conflict-80.json");
}

TEST_F(SharedContainerTest, DoesNotDependOnTheWorkingFolder) {
    fs::create_directory(stateHome / kContainerFolder);
    const fs::path before = fs::current_path();
    fs::current_path(stateHome);
    EXPECT_EQ(SharedContainer(QString()).containerURL(), std::nullopt);
    EXPECT_EQ(SharedContainer(u"."_s).containerURL(), std::nullopt);
    fs::current_path(before);
}

TEST_F(SharedContainerTest, ReadsRegularFilesWhole) {
    for (const std::string& content :
         {std::string(), std::string("[\0]", 3), std::string(3'000'000, 'x')}) {
        EXPECT_EQ(SharedContainer::read(write("file", content)), content);
    }
    fs::create_symlink(write("target", "[]"), stateHome / "link");
    EXPECT_EQ(SharedContainer::read(stateHome / "link"), "[]");
}

TEST_F(SharedContainerTest, WhatIsNoReadableFileHasNoContent) {
    fs::create_directory(stateHome / "folder");
    ASSERT_EQ(::mkfifo((stateHome / "pipe").c_str(), 0600), 0);
    fs::create_symlink("loop", stateHome / "loop");
    fs::create_symlink("nowhere", stateHome / "dangling");
    fs::create_symlink("/dev/zero", stateHome / "device");
    fs::resize_file(write("too large", ""), kMaxJsonBytes + 1);
    for (const char* const name :
         {"missing", "folder", "pipe", "loop", "dangling", "device", "too large"}) {
        EXPECT_EQ(SharedContainer::read(stateHome / name), std::nullopt) << name;
    }
    // The kernel's own files hold more than their size of zero says, as a growing file does.
    EXPECT_EQ(SharedContainer::read("/proc/self/status"), std::nullopt);
}

TEST_F(SharedContainerTest, AFileThatMayNotBeReadHasNoContent) {
    constexpr uid_t kNobody = 65534;
    fs::permissions(stateHome, fs::perms{0755});
    const fs::path file = write("secret", "[]");
    fs::permissions(file, fs::perms::none);
    const bool isRoot = ::geteuid() == 0;
    if (isRoot && ::seteuid(kNobody) != 0)
        GTEST_SKIP() << "root may read everything, and there is nobody else to be";
    EXPECT_EQ(SharedContainer::read(file), std::nullopt);
    if (isRoot) {
        ASSERT_EQ(::seteuid(0), 0);
    }
}

} // namespace
} // namespace zenlot
