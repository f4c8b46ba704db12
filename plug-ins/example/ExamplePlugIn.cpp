// An example plug-in of the client window: it remembers the window and adds
// one command to the "Plug-Ins" menu that says where it was loaded. A real
// plug-in is made the same way: a QObject implementing KettlebrookPlugIn,
// with the interface's identifier in its metadata, built as a module whose
// file name starts with "plg".

#include "clientwindow/KettlebrookPlugIn.h"

#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QObject>
#include <QPointer>

class ExamplePlugIn : public QObject, public kb::ui::KettlebrookPlugIn
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KettlebrookPlugIn_iid)
    Q_INTERFACES(kb::ui::KettlebrookPlugIn)

public:
    void Initialize(QMainWindow* mainWindow) override { m_window = mainWindow; }

    void SetMenu(QMenu* plugInsMenu) override
    {
        QAction* action = plugInsMenu->addAction(QStringLiteral("Example Plug-In"));
        action->setObjectName(QStringLiteral("ExamplePlugIn"));
        QObject::connect(action, &QAction::triggered, plugInsMenu, [this] {
            QMessageBox::information(m_window, QStringLiteral("Example Plug-In"),
                                     QStringLiteral("This example plug-in was loaded into \"%1\".")
                                         .arg(m_window ? m_window->windowTitle() : QString()));
        });
    }

private:
    QPointer<QMainWindow> m_window;
};

#include "ExamplePlugIn.moc"
