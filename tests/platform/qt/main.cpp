// Widgets need an application object; tests run them offscreen.
#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    QApplication::setApplicationDisplayName("Tallowick");
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
