#include "platform/forms/Style.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setApplicationName("ZEP Lumo");
    QApplication::setQuitOnLastWindowClosed(false);
    forms::ApplyStyle(application);
    return RUN_ALL_TESTS();
}
