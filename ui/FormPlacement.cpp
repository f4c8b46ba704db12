#include "FormPlacement.h"

#include "settings/SettingsFile.h"

#include <QEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScreen>
#include <QSplitter>
#include <QWidget>

namespace kb::ui {

namespace {

QList<int> numbers(const QString& text)
{
    QList<int> list;
    for (const QString& part : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        bool ok = false;
        const int n = part.trimmed().toInt(&ok);
        if (!ok) return {};
        list.append(n);
    }
    return list;
}

QString joined(const QList<int>& list)
{
    QStringList parts;
    for (int n : list)
        parts.append(QString::number(n));
    return parts.join(QLatin1Char(','));
}

} // namespace

void restoreFormPosition(QWidget& window, const SettingsFile& settings, const QString& formName)
{
    const std::optional<QRect> place = settings.formPosition(formName);
    if (!place || place->width() < 100 || place->height() < 60) return;
    // A place on a screen that is gone (a second monitor unplugged) is not used.
    for (const QScreen* screen : QGuiApplication::screens())
        if (screen->availableGeometry().intersects(*place)) {
            window.resize(place->size().boundedTo(screen->availableGeometry().size()));
            window.move(place->topLeft());
            return;
        }
}

void saveFormPosition(const QWidget& window, SettingsFile& settings, const QString& formName)
{
    settings.setFormPosition(formName, QRect(window.pos(), window.size()));
}

QSize fittingSize(const QWidget& window, QSize preferred)
{
    const QScreen* screen = window.screen() ? window.screen() : QGuiApplication::primaryScreen();
    if (!screen) return preferred;
    const QSize available = screen->availableGeometry().size() * 9 / 10;
    return preferred.boundedTo(available);
}

WindowPlacement::WindowPlacement(QWidget& window, SettingsFile& settings, QString formName, QSize preferred)
    : QObject(&window), m_window(window), m_settings(settings), m_formName(std::move(formName))
{
    if (preferred.isValid()) window.resize(fittingSize(window, preferred));
    restoreFormPosition(window, settings, m_formName);
    window.installEventFilter(this);
}

bool WindowPlacement::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &m_window && (event->type() == QEvent::Hide || event->type() == QEvent::Close) &&
        m_window.isWindow() && !m_window.isMinimized())
        saveFormPosition(m_window, m_settings, m_formName);
    return QObject::eventFilter(watched, event);
}

void keepPlacement(QWidget& window, SettingsFile& settings, const QString& formName, QSize preferred)
{
    new WindowPlacement(window, settings, formName, preferred);
}

void restoreColumnWidths(QHeaderView& header, const SettingsFile& settings, const QString& section,
                         const QString& key)
{
    const QList<int> widths = numbers(settings.readString(section, key));
    if (widths.size() != header.count()) return;
    for (int i = 0; i < widths.size(); ++i)
        if (widths[i] > 0) header.resizeSection(i, widths[i]);
}

void saveColumnWidths(const QHeaderView& header, SettingsFile& settings, const QString& section,
                      const QString& key)
{
    QList<int> widths;
    for (int i = 0; i < header.count(); ++i)
        widths.append(header.sectionSize(i));
    if (!widths.isEmpty()) settings.writeString(section, key, joined(widths));
}

void restoreSplitter(QSplitter& splitter, const SettingsFile& settings, const QString& section,
                     const QString& key)
{
    const QList<int> shares = numbers(settings.readString(section, key));
    if (shares.size() != splitter.count()) return;
    // Sizes in per cent of whatever size the splitter has when it shows.
    QList<int> sizes;
    for (int share : shares)
        sizes.append(std::max(1, share) * 100);
    splitter.setSizes(sizes);
}

void saveSplitter(const QSplitter& splitter, SettingsFile& settings, const QString& section,
                  const QString& key)
{
    const QList<int> sizes = splitter.sizes();
    int total = 0;
    for (int s : sizes)
        total += s;
    if (total <= 0) return;
    QList<int> shares;
    for (int s : sizes)
        shares.append(s * 100 / total);
    settings.writeString(section, key, joined(shares));
}

} // namespace kb::ui
