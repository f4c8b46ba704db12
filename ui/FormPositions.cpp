#include "FormPositions.h"

#include <QDir>
#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QWidget>

namespace kb::ui {

namespace {

QString key(const QString& form)
{
    return QStringLiteral("Form_Positions/") + form;
}

} // namespace

QString FormPositions::iniPath(const QString& appDataFolder)
{
    return QDir(appDataFolder).filePath(QStringLiteral("Kettbrk.ini"));
}

void FormPositions::restore(QWidget& window, const QString& iniPath, const QString& form)
{
    if (iniPath.isEmpty()) return;
    const QString value = QSettings(iniPath, QSettings::IniFormat).value(key(form)).toString();
    const QStringList parts = value.split(u',');
    if (parts.size() != 4) return;
    bool ok[4] = {};
    const QRect rect(parts[0].toInt(&ok[0]), parts[1].toInt(&ok[1]), parts[2].toInt(&ok[2]),
                     parts[3].toInt(&ok[3]));
    if (!(ok[0] && ok[1] && ok[2] && ok[3]) || rect.width() < 100 || rect.height() < 60) return;
    // A position left on a screen that is gone is not restored.
    const QScreen* screen = QGuiApplication::screenAt(rect.center());
    if (!screen) return;
    window.resize(rect.size().boundedTo(screen->availableGeometry().size()));
    window.move(rect.topLeft());
}

void FormPositions::save(const QWidget& window, const QString& iniPath, const QString& form)
{
    if (iniPath.isEmpty()) return;
    const QRect rect(window.pos(), window.size());
    QSettings(iniPath, QSettings::IniFormat)
        .setValue(
            key(form),
            QStringLiteral("%1,%2,%3,%4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height()));
}

} // namespace kb::ui
