// The main of every test executable: a Qt application object for the tests
// that need one (file watching, widgets, the cursor), then GoogleTest.
#include <gtest/gtest.h>

#ifdef ZK_TEST_GUI_APPLICATION
#include <QApplication>
using TestApplication = QApplication;
#else
#include <QCoreApplication>
using TestApplication = QCoreApplication;
#endif

int main(int argc, char** argv) {
#ifdef ZK_TEST_GUI_APPLICATION
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
    ::testing::InitGoogleTest(&argc, argv);
    TestApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
