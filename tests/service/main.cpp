// The channel's waits turn the message loop, so these tests run with an application object.
#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
