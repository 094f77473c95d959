// A desktop drops an entry with mistakes without a word.
#include <gtest/gtest.h>

#include <cstdlib>

TEST(PackagingTest, DesktopEntryIsValid) {
    EXPECT_EQ(std::system("desktop-file-validate --warn-kde " ZENLOT_PACKAGING
                          "/dev.quorvane.zenlot.desktop"),
              0);
}
