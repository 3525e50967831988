#include "support/PrivateProfile.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    return runWithPrivateProfile(argc, argv, [&] {
        testing::InitGoogleTest(&argc, argv);
        const QCoreApplication application(argc, argv);
        QCoreApplication::setOrganizationDomain("stemhaven.app");
        QCoreApplication::setApplicationName("Stemhaven");
        return RUN_ALL_TESTS();
    });
}
