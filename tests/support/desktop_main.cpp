// main() of the suites that need a display: they run once more, on a desktop of their own.
#include "e2e/private_desktop.h"

#include <gtest/gtest.h>

#ifdef QT_WIDGETS_LIB
#include <QApplication>
using Application = QApplication;
#else
#include <QGuiApplication>
using Application = QGuiApplication;
#endif

#include <iostream>

namespace {

constexpr const char* kInside = "ZENLOT_TEST_INSIDE_DESKTOP";

int runInside(int argc, char** argv) {
    qputenv("QT_FATAL_WARNINGS", "1");
    Application application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

int runOnDesktop(int argc, char** argv) {
    qputenv(kInside, "1");
    QCoreApplication application(argc, argv);
    zenlot::PrivateDesktop desktop;
    // Until the window manager works.
    for (bool isReady = false; !isReady;) {
        QProcess& query = desktop.start("xdotool get_num_desktops");
        isReady = query.waitForFinished() && query.exitCode() == 0;
    }
    QProcess& suite = desktop.start(QCoreApplication::applicationFilePath(),
                                    QCoreApplication::arguments().mid(1));
    suite.waitForFinished(-1);
    std::cout << suite.readAllStandardOutput().toStdString() << std::flush;
    std::cerr << suite.readAllStandardError().toStdString();
    return suite.exitStatus() == QProcess::NormalExit ? suite.exitCode() : EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv) {
    return (qEnvironmentVariableIsSet(kInside) ? runInside : runOnDesktop)(argc, argv);
}
