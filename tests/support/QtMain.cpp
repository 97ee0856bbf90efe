// The main of every test of widgets: a QApplication without a display, then the tests.
#include <clocale>

#include <QApplication>

#include <gmock/gmock.h>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    testing::InitGoogleMock(&argc, argv);
    QApplication application(argc, argv);
    // Tests read numbers and dates in one form, whatever the machine's language.
    QLocale::setDefault(QLocale::c());
    std::setlocale(LC_ALL, "C.UTF-8");
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
