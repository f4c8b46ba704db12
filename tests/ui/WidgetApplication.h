#pragma once

#include <QApplication>
#include <QWidget>

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

// With KB_SCREENSHOTS set to a folder, the widget is saved there as NAME.png
// for a person to look at.
inline void keepScreenshot(QWidget& widget, const QString& name)
{
    const QString folder = qEnvironmentVariable("KB_SCREENSHOTS");
    if (folder.isEmpty())
        return;
    widget.show();
    QApplication::processEvents();
    widget.grab().save(folder + QLatin1Char('/') + name + QStringLiteral(".png"));
}

} // namespace kb::test
