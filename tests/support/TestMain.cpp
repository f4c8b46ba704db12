// The main() of every test program: screens render offscreen, and
// end-to-end tests find the kettlebrook executable through KB_APP.

#include <QByteArray>
#include <QtGlobal>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", QByteArrayLiteral("offscreen"));
    if (qEnvironmentVariableIsEmpty("KB_APP"))
        qputenv("KB_APP", QByteArray(KB_APP_PATH));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
