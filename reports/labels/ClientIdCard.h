#pragma once

#include "delivery/DeliveryReportContext.h"

#include <QString>

namespace kb::reports {

class ReportHolder;

// "Client ID Card": a client's card printed on a label printer, with the
// name and client number and a bar code of the person's number. The card's
// layout is the template "Client ID with Barcode.LWL" of the data
// directory, which receives the card's two fields, "Client Name and ID"
// and "Barcode", as the one row of the pipe LabelFields.
//
// The stock the card prints on is the user's (LabelStockSettings); the
// printer it went to last is kept in the section "ClientIDCard" of the
// per-user settings, so that the next card goes to the same label printer.
class ClientIdCard
{
public:
    static QString caption() { return QStringLiteral("Client ID Card"); }
    static QString templateFileName() { return QStringLiteral("Client ID with Barcode.LWL"); }
    static QString section() { return QStringLiteral("ClientIDCard"); }
    static QString fieldsPipe() { return QStringLiteral("LabelFields"); }

    // "Margaret A Abbott,    Client ID: 101": each name followed by a blank
    // when it is not empty, the last name, then the client number.
    static QString nameAndId(const QString& first, const QString& middle, const QString& last,
                             const QString& clientId);

    explicit ClientIdCard(const DeliveryReportContext& context);

    // The stock of the settings (empty: the template's own); a name
    // LabelStock does not know is ignored.
    QString stock() const;
    void setStock(const QString& name) { m_stock = name; }

    // Makes the holder ready to print the person's card: the template, its
    // fields, the stock. False when the template is missing, which it tells
    // ("Could not locate the label template file:" and the path). Throws
    // MessageError when there is no such person.
    bool prepare(ReportHolder& holder, int personId);

    // The card as the client's window prints it: one copy, to the printer
    // it went to last, through the print dialog. False when there was
    // nothing printed (the template missing, the dialog cancelled).
    bool print(ReportHolder& holder, int personId);

private:
    const DeliveryReportContext& m_context;
    QString m_stock;
};

} // namespace kb::reports
