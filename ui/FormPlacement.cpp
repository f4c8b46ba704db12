#include "FormPlacement.h"

#include "settings/SettingsFile.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace kb::ui {

void restoreFormPosition(QWidget& window, const SettingsFile& settings, const QString& formName)
{
    const std::optional<QRect> place = settings.formPosition(formName);
    if (!place) return;
    // A place on a screen that is gone (a second monitor unplugged) is not used.
    for (const QScreen* screen : QGuiApplication::screens())
        if (screen->availableGeometry().intersects(*place)) {
            window.setGeometry(*place);
            return;
        }
}

void saveFormPosition(const QWidget& window, SettingsFile& settings, const QString& formName)
{
    settings.setFormPosition(formName, window.geometry());
}

} // namespace kb::ui
