// SPDX-License-Identifier: Apache-2.0
// The test program of the windows: one QApplication in the shop's style, on no screen unless told.

#include "platform/qt/ShopStyle.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char* argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setApplicationName("Lodrin");
    QApplication::setQuitOnLastWindowClosed(false);
    platform::qt::ShopStyle::ApplyTo(application);
    return RUN_ALL_TESTS();
}
