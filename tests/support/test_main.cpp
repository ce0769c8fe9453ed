#include "platform/forms/Style.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // No display, but one of a usual size. Another platform can be asked for, to watch a test.
    if (const QByteArray asked = qgetenv("QT_QPA_PLATFORM"); asked.isEmpty() || asked == "offscreen")
        qputenv("QT_QPA_PLATFORM", ZEP_OFFSCREEN);
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setApplicationName("ZEP Lumo");
    QApplication::setQuitOnLastWindowClosed(false);
    forms::ApplyStyle(application);
    return RUN_ALL_TESTS();
}
