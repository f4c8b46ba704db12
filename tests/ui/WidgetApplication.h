#pragma once

#include <QApplication>

namespace kb::test {

// The one QApplication of the widget tests, made by the first suite that
// needs it.
inline void ensureWidgetApplication()
{
    static int argc = 1;
    static char name[] = "ui_tests";
    static char* argv[] = {name, nullptr};
    if (!QApplication::instance())
        new QApplication(argc, argv);
}

} // namespace kb::test
