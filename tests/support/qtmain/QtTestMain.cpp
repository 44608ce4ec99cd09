// The main of the test programs whose code waits in Qt's event loop (the service channel,
// HTTP clients, the tracking queue), which needs the application object.
#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
