#pragma once

#include "dataset/DataSet.h"
#include "reference/TFormEditBase.h"

#include <QList>
#include <QString>

#include <functional>
#include <memory>

namespace kb {

class QueryDataSet;

// "Funding Sources Maintenance": Fundsrcs on the generic table editor, with
// the source's rates on a wider form behind "View Rates". A changed code
// that clients use is carried to FundUses, Deliveri, Pricing and Events in
// the same transaction as the source's own row, so a failure half way
// changes nothing. Deleting is guarded by the services, clients,
// deliveries and events that use the source, and takes its rates along.
class TFormEditFundingSources
{
public:
    struct UnitChoice
    {
        QString unit; // an Item_ID as text, "MF" or "SM"
        QString name;
    };

    // userId: the User ID that new rates are created by.
    TFormEditFundingSources(RecordServices& services, QString userId);
    ~TFormEditFundingSources();
    TFormEditFundingSources(const TFormEditFundingSources&) = delete;
    TFormEditFundingSources& operator=(const TFormEditFundingSources&) = delete;

    static EditorScreen screen();
    static QString caption() { return QStringLiteral("Funding Sources Maintenance"); }
    static QString formName() { return QStringLiteral("TFormEditFundingSources"); }
    static QString noCodeText() { return QStringLiteral("You must enter a value for the Fund Code."); }
    static QString duplicateText()
    {
        return QStringLiteral("Not able to save this change- it creates a duplicated Code.");
    }
    static QString cascadeQuestion()
    {
        return QStringLiteral(
            "The Funding Code you are changing is in use by at least one client.\r\nThe current data "
            "must be updated to reflect this change. \r\nThe change could take some time. Proceed "
            "with the change?");
    }
    static QString zeroRateText()
    {
        return QStringLiteral("You have created an item with a reimbursement rate of zero! ");
    }
    static QString noItemText() { return QStringLiteral("You have not specified an item! "); }

    TFormEditBase& editor() { return *m_editor; }
    bool open();
    // Closing asks about an open rate first, then about the source.
    bool close();

    // "View Rates" / "Hide Rates".
    bool ratesShown() const { return m_ratesShown; }
    void toggleRates() { m_ratesShown = !m_ratesShown; }
    QString ratesButtonText() const
    {
        return m_ratesShown ? QStringLiteral("Hide Rates") : QStringLiteral("View Rates");
    }
    // Billed party "N" shows no method and no rates; otherwise "T" shows the
    // time rate and "I" the item rates.
    bool methodVisible() const;
    bool timeRatesVisible() const;
    bool itemRatesVisible() const;

    QueryDataSet& rates() { return *m_rates; }
    const QList<UnitChoice>& unitChoices() const { return m_units; }
    void ActionAddItem();
    void ActionDeleteItem();
    bool setRateValue(const QString& field, const QVariant& value);
    bool postRate();
    // Called when the rates were read again for another source.
    void setOnRatesChanged(std::function<void()> changed) { m_ratesChanged = std::move(changed); }

private:
    void beforePost(DataSet& set, const DataSet::HookFunction& generic);
    void cascade(const QVariant& oldCode, const QVariant& newCode);
    void finishTransaction(bool keep);
    void followSource();

    RecordServices& m_services;
    QString m_userId;
    std::unique_ptr<TFormEditBase> m_editor;
    std::unique_ptr<QueryDataSet> m_rates;
    QList<UnitChoice> m_units;
    std::function<void()> m_ratesChanged;
    bool m_ratesShown = false;
    bool m_inTransaction = false;
};

} // namespace kb
