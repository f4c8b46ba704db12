#pragma once

#include <QObject>
#include <QSize>
#include <QString>

class QHeaderView;
class QSplitter;
class QWidget;

namespace kb {
class SettingsFile;
}

namespace kb::ui {

// Where the windows stand and how their grids and splitters are laid out,
// kept in the per-user Kettbrk.ini: window places in the section
// "Form_Positions", one key per window named after its form ("Default" or
// no key leaves the window where it first opens), layouts in a section of
// the screen's own.

// Puts a window where the user left it when that place is still on a screen.
void restoreFormPosition(QWidget& window, const SettingsFile& settings, const QString& formName);
// Remembers where the window is.
void saveFormPosition(const QWidget& window, SettingsFile& settings, const QString& formName);

// A first size for a window: the size it asks for, at most nine tenths of
// the screen it opens on, so every screen fits a 1366x768 display.
QSize fittingSize(const QWidget& window, QSize preferred);

// Gives a window its first size, puts it where the user left it, and
// remembers its place each time it is hidden or closed. Owned by the window.
class WindowPlacement : public QObject
{
public:
    WindowPlacement(QWidget& window, SettingsFile& settings, QString formName, QSize preferred);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& m_window;
    SettingsFile& m_settings;
    QString m_formName;
};

void keepPlacement(QWidget& window, SettingsFile& settings, const QString& formName, QSize preferred);

// Column widths of a grid, as "w1,w2,..." under section/key; a saved list of
// another length (the grid gained a column) is passed over.
void restoreColumnWidths(QHeaderView& header, const SettingsFile& settings, const QString& section,
                         const QString& key);
void saveColumnWidths(const QHeaderView& header, SettingsFile& settings, const QString& section,
                      const QString& key);
// The share of each pane of a splitter, in per cent, as "p1,p2,...".
void restoreSplitter(QSplitter& splitter, const SettingsFile& settings, const QString& section,
                     const QString& key);
void saveSplitter(const QSplitter& splitter, SettingsFile& settings, const QString& section,
                  const QString& key);

} // namespace kb::ui
