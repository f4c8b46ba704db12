#include "DesktopProgram.h"

#include "session/AppDataFolder.h"
#include "Clock.h"
#include "store/Database.h"
#include "DebugLog.h"
#include "QtClientDialogs.h"
#include "clientwindow/MainWindow.h"
#include "clientwindow/PlugIns.h"
#include "rules/ModuleClientRules.h"
#include "window/TFormClients.h"
#include "PasswordDialog.h"
#include "QtUserInterface.h"
#include "session/SessionSettings.h"
#include "session/TDataModule1.h"
#include "session/TPasswordDlg.h"
#include "store/ValueConversion.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>
#include <QSplashScreen>
#include <QTimer>

#include <cstdio>

namespace kb::ui {

namespace {

std::unique_ptr<Clock> makeClock(const QString& today)
{
    const QDate day = parseDate(today);
    if (today.isEmpty() || !day.isValid())
        return std::make_unique<SystemClock>();
    return std::make_unique<FixedClock>(QDateTime(day, QTime::currentTime()));
}

QPixmap splashPicture()
{
    QPixmap picture(420, 140);
    picture.fill(QColor(0xF4, 0xF1, 0xE8));
    QPainter painter(&picture);
    QFont font = painter.font();
    font.setPointSize(20);
    painter.setFont(font);
    painter.drawText(QRect(0, 20, 420, 50), Qt::AlignCenter, QStringLiteral("Kettlebrook"));
    font.setPointSize(9);
    painter.setFont(font);
    painter.drawText(QRect(0, 65, 420, 20), Qt::AlignCenter,
                     QStringLiteral("Version ") + QApplication::applicationVersion());
    return picture;
}

int fail(UserInterface& ui, const QString& message)
{
    std::fputs((message + QLatin1Char('\n')).toLocal8Bit().constData(), stderr);
    ui.terminate(message);
    return 1;
}

} // namespace

int runDesktopProgram(int argc, char** argv, const DesktopOptions& options)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Kettlebrook"));
    QApplication::setApplicationVersion(QStringLiteral("0.1"));
    DebugLog log = DebugLog::fromArguments(app.arguments().mid(1));
    log.install();
    QtUserInterface ui;
    if (log.target() == DebugLog::Target::File)
        ui.information(log.destinationMessage());

    const std::unique_ptr<Clock> clock = makeClock(options.today);
    std::unique_ptr<TDataModule1> data;
    // Declared after the module, so they go first: the rules hang on its
    // Clients set, the window on both.
    std::unique_ptr<ModuleClientRules> clientRules;
    std::unique_ptr<QtClientDialogs> clientDialogs;
    std::unique_ptr<TFormClients> form;
    std::unique_ptr<MainWindow> window;
    {
        QSplashScreen splash(splashPicture());
        splash.show();
        splash.showMessage(QStringLiteral("Loading..."), Qt::AlignBottom | Qt::AlignHCenter);
        const auto step = [&](const char* text) {
            splash.showMessage(QString::fromLatin1(text), Qt::AlignBottom | Qt::AlignHCenter);
            DebugLog::log(QString::fromLatin1(text));
            app.processEvents();
        };
        try {
            SessionSettings settings = SessionSettings::readUserStore();
            if (!options.dataDir.isEmpty())
                settings.applyDataOption(options.dataDir);
            if (!options.server.isEmpty())
                settings.applyServerOption(options.server);
            step("Creating DataModule1");
            data = std::make_unique<TDataModule1>(*clock, ui);
            clientRules = std::make_unique<ModuleClientRules>(*data);
            data->start(settings, platformUserDataFolder());
            clientDialogs = std::make_unique<QtClientDialogs>(nullptr, data->userSettings());
            clientRules->setDialogs(clientDialogs.get());
            step("Creating Form Clients");
            form = std::make_unique<TFormClients>(*data, ui, clientRules->rules());
            form->setStartedWithParameters(log.target() != DebugLog::Target::Off);
            form->create();
            window = std::make_unique<MainWindow>(*form, ui);
            window->loadPlugIns(PlugIns::defaultFolder());
        } catch (const std::exception& e) {
            splash.close();
            return fail(ui, QStringLiteral("Aborting... Critical error: ") + QString::fromUtf8(e.what()));
        }
        splash.finish(nullptr);
    }

    window->show();
    ui.setParent(window.get());
    clientDialogs->setParent(window.get());
    TPasswordDlg signIn(data->db(), data->session(), ui);
    PasswordDialog dialog(signIn, window.get());
    if (!dialog.run()) // Cancel ends the program; a fatal failure says why first
        return dialog.fatalMessage().isEmpty() ? 0 : fail(ui, dialog.fatalMessage());
    data->userSignedIn();
    form->firstShow();
    window->showUser();
    QTimer::singleShot(0, form.get(), [&form] { form->firstActivation(); });
    const int rc = app.exec();
    window.reset();
    form.reset();
    clientDialogs.reset();
    clientRules.reset();
    try {
        data->shutdown();
    } catch (const std::exception& e) {
        return fail(ui, QString::fromUtf8(e.what()));
    }
    return rc;
}

} // namespace kb::ui
