#pragma once

#include "store/ResultSet.h"

#include <QDate>
#include <QString>

#include <functional>

namespace kb {

class Clock;
class Database;
class UserInterface;

// "Recent Stops and Suspensions": which clients on the delivery list of a
// date have been stopped or suspended by changes entered since a given
// day, printed through the template RecentStops.rtm of the data directory.
class TFormRecentStops
{
public:
    enum class Destination { ScreenAndFile, Printer };

    // What the report is handed.
    struct Report
    {
        ResultSet rows; // RecentStops::select
        QDate stopDate;
        QDate recencyDate;
        QDate deliveryDate; // null when no list of the date was saved
        Destination destination = Destination::ScreenAndFile;
        QString templatePath;
    };
    using Printer = std::function<void(const Report&)>;

    // templateFolder: the data directory, or empty where the data lives on
    // a server and the template built into the program is used.
    TFormRecentStops(Database& db, UserInterface& ui, const Clock& clock, QString templateFolder);

    static QString caption() { return QStringLiteral("Recent Stops and Suspensions"); }
    static QString stopDateLabel() { return QStringLiteral("Select a Delivery Date:"); }
    static QString recencyDateLabel() { return QStringLiteral("Select changes entered on or after:"); }
    static QString destinationLabel() { return QStringLiteral("Select a Destination"); }
    static QString screenText() { return QStringLiteral("Screen and/or File"); }
    static QString printerText() { return QStringLiteral("Printer"); }
    static QString templateFileName() { return QStringLiteral("RecentStops.rtm"); }
    static QString missingTemplateText(const QString& path);

    // Starts at today and yesterday.
    QDate stopDate() const { return m_stopDate; }
    void setStopDate(const QDate& date) { m_stopDate = date; }
    QDate recencyDate() const { return m_recencyDate; }
    void setRecencyDate(const QDate& date) { m_recencyDate = date; }
    Destination destination() const { return m_destination; }
    void setDestination(Destination destination) { m_destination = destination; }

    QString templatePath() const;
    void setPrinter(Printer printer) { m_printer = std::move(printer); }
    // Selects the clients and hands them to the printer. False, with the
    // message, when the template is missing or a date is not set.
    bool ActionPrint();

private:
    Database& m_db;
    UserInterface& m_ui;
    QString m_templateFolder;
    QDate m_stopDate;
    QDate m_recencyDate;
    Destination m_destination = Destination::ScreenAndFile;
    Printer m_printer;
};

} // namespace kb
