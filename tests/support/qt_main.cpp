// main() of the suites that need Qt's event loop.
#include <gtest/gtest.h>

#ifdef QT_WIDGETS_LIB
#include <QApplication>
using Application = QApplication;
#else
#include <QGuiApplication>
using Application = QGuiApplication;
#endif

int main(int argc, char** argv) {
    Application application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
