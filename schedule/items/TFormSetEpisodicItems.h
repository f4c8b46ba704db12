#pragma once

#include "defaults/TFormSetDefaultDeliveries.h"

#include <QDate>

namespace kb {

// "Set Episodic Items": the item list of one dated delivery (the Defdels
// lines whose Deliv_ID is the delivery's RecordID), which the run takes in
// place of the client's standing list and the service default. It is the
// item screen with its day and service fixed to the delivery's, the lines
// kept under the delivery instead of the service, and beside them, read
// only, the list the delivery would get without lines of its own.
class TFormSetEpisodicItems : public TFormSetDefaultDeliveries
{
public:
    // The delivery: its client, RecordID, service and date.
    TFormSetEpisodicItems(RecordServices& services, qint64 personId, qint64 delivId, qint64 serviceId,
                          const QDate& date);
    ~TFormSetEpisodicItems() override;

    static QString episodicCaption() { return QStringLiteral("Set Episodic Items"); }
    static QString clearQuestion() { return QStringLiteral("Clear all items for this delivery date?"); }
    static QString standingText()
    {
        return QStringLiteral(
            "These are this client's own items for this day. They can't be modified on this "
            "screen.");
    }
    static QString defaultText()
    {
        return QStringLiteral(
            "These are the default items for this client's service. They can't be modified on this screen.");
    }

    // The opener names the delivery in the title ("Episodic Items for ...").
    void setTitle(const QString& title) { m_title = title; }
    QString title() const override { return m_title; }
    QString screenName() const override { return QStringLiteral("TFormSetEpisodicItems"); }

    void FormShow() override;
    bool FormClose() override;

    // The list the delivery gets without lines of its own: the client's
    // standing list of its service and weekday, else the service default.
    QueryDataSet& comparison() { return *m_comparison; }
    bool comparisonIsStanding() const { return m_comparisonPerson != 0; }
    QString comparisonText() const { return comparisonIsStanding() ? standingText() : defaultText(); }

    // "Add Item": a line of quantity 1 at the end of the delivery's list.
    void ActionAddItem() override;
    // "Clear Selected Day of All Items": every line of the delivery, asked first.
    void ActionClear();
    // "Copy Selected Day from Defaults": the comparison list's lines added
    // to the delivery's, in their order; what the delivery has stays.
    void ActionCopy();

protected:
    void bindList(QueryDataSet& list) override;
    int highestSortOrder() override;
    void shiftOthers(int newSort, int oldSort, qint64 recordId) override;

private:
    void openComparison();

    qint64 m_personId;
    qint64 m_delivId;
    qint64 m_serviceId;
    QDate m_date;
    QString m_title = episodicCaption();
    std::unique_ptr<QueryDataSet> m_comparison;
    qint64 m_comparisonPerson = 0;
};

} // namespace kb
