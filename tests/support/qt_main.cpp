// main() of the suites that need Qt's event loop.
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#ifdef QT_WIDGETS_LIB
#include <QApplication>
using Application = QApplication;
#else
#include <QGuiApplication>
using Application = QGuiApplication;
#endif

int main(int argc, char** argv) {
    // Qt warns where the folder for sockets is missing or open to others.
    const zenlot::TemporaryFolder runtime;
    ::setenv("XDG_RUNTIME_DIR", runtime.path().c_str(), 1);
    Application application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
