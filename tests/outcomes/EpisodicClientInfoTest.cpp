// The credit list's client screen: which events it offers for deletion,
// what deleting them stores, and that a deletion that cannot finish changes
// nothing; and the credit list's own grid (its date column and export).

#include "OutcomesFixture.h"

#include "stops/GridExport.h"
#include "walkins/TFormCreditWalkIns.h"
#include "walkins/TFormViewEpisodicClientInfo.h"

#include <QFile>
#include <QTemporaryDir>

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;
using Details = std::vector<std::pair<QString, QString>>;

class EpisodicClientInfoTest : public OutcomesFixture
{
protected:
    void SetUp() override
    {
        OutcomesFixture::SetUp();
        addClient(1);
        addClient(2);
        own = addDated(1, monday, QStringLiteral("S"));
        addLine(1, 2, QString(), 10, 3, own); // the event's own items
        comp = addDated(1, tuesday, QStringLiteral("E"),
                        {{QStringLiteral("Delivery_Type"), QStringLiteral("W")},
                         {QStringLiteral("Fulfilled"), QStringLiteral("C")}});
        credited =
            addDated(1, monday, QStringLiteral("S"), {{QStringLiteral("Fulfilled"), QStringLiteral("Y")}});
        later = addDated(1, QDate(2024, 3, 7), QStringLiteral("S"));
        other = addDated(2, monday, QStringLiteral("S"));
    }

    QString eventIds(int person)
    {
        const ResultSet rows = db().execute(
            QStringLiteral("Select RecordID from EpisodicDeliveries where Person_ID = :P order by RecordID"),
            {{QStringLiteral("P"), person}});
        QStringList ids;
        for (qsizetype r = 0; r < rows.rowCount(); ++r)
            ids << rows.value(r, 0).toString();
        return ids.join(u',');
    }
    static QString idList(std::initializer_list<qint64> ids)
    {
        QStringList list;
        for (qint64 id : ids)
            list << QString::number(id);
        return list.join(u',');
    }

    qint64 own = 0, comp = 0, credited = 0, later = 0, other = 0;
};

TEST_P(EpisodicClientInfoTest, DeletingAClientsUncreditedEventsLogsThemAndListsAgain)
{
    TFormCreditWalkIns form(db(), session, ui);
    form.FormShow();
    form.ActionApplyChanges();
    ASSERT_EQ(form.clientCountText(), "Client Count: 3");
    EXPECT_EQ(form.model()->headerData(0, Qt::Horizontal).toString(), "Date");
    EXPECT_EQ(form.model()->data(form.model()->index(2, 0)).toDate(), monday); // Last2's event
    EXPECT_FALSE(form.mayDeleteEpisodicEventsOf(3));
    ASSERT_EQ(form.model()->field(0, QStringLiteral("Person_ID")).toLongLong(), 1);

    bool shown = false;
    EXPECT_TRUE(form.ActionDeleteEpisodicEvents(0, [&](TFormViewEpisodicClientInfo& info) {
        shown = true;
        EXPECT_EQ(info.caption(), "Episodic/Scheduled Client Information");
        EXPECT_EQ(info.details(), (Details{{"Name:", "First1 Last1"},
                                           {"Address:", "1 Main St\nSpringfield, PA 19000"},
                                           {"Default Service:", "Hot Meals"},
                                           {"Status:", "Active"},
                                           {"Start Date:", "1/1/24"},
                                           {"Stop Date:", ""},
                                           {"Client ID:", "C001"},
                                           {"Person ID:", "1"}}));
        // Up to the credit date and not yet credited, by date; the
        // complimentary walk-in is still uncredited.
        EXPECT_EQ(
            info.lines(),
            (QStringList{QStringLiteral("Mon 3/4/24  Scheduled  Frozen Meals  [Record ID:%1]").arg(own),
                         QStringLiteral("Tue 3/5/24  Episodic Walk-In  Frozen Meals (Comp)  [Record ID:%1]")
                             .arg(comp)}));
        EXPECT_FALSE(info.mayDelete());
        EXPECT_FALSE(info.ActionDelete());
        info.setChecked(0, true);
        info.setChecked(1, true);
        EXPECT_FALSE(info.ActionDelete()); // asked, and No
        EXPECT_EQ(ui.texts(Kind::Question),
                  QStringList{"Delete the 2 checked episodic/scheduled deliveries?"});
        EXPECT_EQ(count(QStringLiteral("Select Count(*) from History")), 0);
        ui.answerNext(Answer::Yes);
        EXPECT_TRUE(info.ActionDelete());
        EXPECT_EQ(info.deleted(), 2);
        return true;
    }));
    EXPECT_TRUE(shown);
    // The list was prepared again: only the other client's event is left.
    EXPECT_EQ(form.clientCountText(), "Client Count: 1");
    EXPECT_EQ(form.model()->field(0, QStringLiteral("Person_ID")).toLongLong(), 2);
    form.FormClose();

    EXPECT_EQ(eventIds(1), idList({credited, later}));
    EXPECT_EQ(eventIds(2), idList({other}));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from Defdels where Deliv_ID = :D"),
                    {{QStringLiteral("D"), own}}),
              0);
    const ResultSet history = db().execute(QStringLiteral(
        "Select Person_ID, Client_ID, Event, Event_Date, User from History order by Event_Date"));
    ASSERT_EQ(history.rowCount(), 2);
    EXPECT_EQ(history.value(0, 0).toLongLong(), 1);
    EXPECT_EQ(history.value(0, 1), "C001");
    EXPECT_EQ(history.value(0, 2), "Uncredited episodic delivery for 3/4/24 deleted");
    EXPECT_EQ(history.value(0, 3).toDate(), monday);
    EXPECT_EQ(history.value(0, 4), "Pat Tester");
    EXPECT_EQ(history.value(1, 2), "Uncredited episodic delivery for 3/5/24 deleted");

    // Closing the screen without deleting lists nothing again.
    TFormCreditWalkIns again(db(), session, ui);
    again.FormShow();
    again.ActionApplyChanges();
    EXPECT_FALSE(again.ActionDeleteEpisodicEvents(0, [](TFormViewEpisodicClientInfo&) { return false; }));
    EXPECT_EQ(eventIds(2), idList({other}));
    again.FormClose();
}

TEST_P(EpisodicClientInfoTest, ADeletionThatCannotFinishChangesNothing)
{
    TFormViewEpisodicClientInfo info(db(), session, ui, 1, QDate(2024, 3, 6));
    info.FormShow();
    ASSERT_EQ(info.lines().size(), 2);
    info.setChecked(0, true);
    info.setChecked(1, true);
    // Another workstation credits the second event in the meantime: its
    // delivery stands, so the first deletion is undone too.
    db().execute(QStringLiteral("Update EpisodicDeliveries set Fulfilled = 'Y' where RecordID = :R"),
                 {{QStringLiteral("R"), comp}});
    ui.answerNext(Answer::Yes);
    EXPECT_FALSE(info.ActionDelete());
    EXPECT_EQ(ui.texts(Kind::Error),
              QStringList{QStringLiteral("The delivery for 3/5/24 [Record ID:%1] has been credited since the "
                                         "list was read and will not be deleted.")
                              .arg(comp)});
    EXPECT_EQ(eventIds(1), idList({own, comp, credited, later}));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from Defdels where Deliv_ID = :D"),
                    {{QStringLiteral("D"), own}}),
              1);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from History")), 0);

    // A read-only user may look but not delete.
    ui.clear();
    session.accessLevel = QStringLiteral("R");
    TFormViewEpisodicClientInfo readOnly(db(), session, ui, 1, QDate(2024, 3, 6));
    readOnly.FormShow();
    readOnly.setChecked(0, true);
    EXPECT_FALSE(readOnly.mayDelete());
    EXPECT_FALSE(readOnly.ActionDelete());
    EXPECT_EQ(ui.texts(Kind::Error).size(), 1);
    EXPECT_EQ(eventIds(1), idList({own, comp, credited, later}));

    EXPECT_EQ(TFormViewEpisodicClientInfo::recordIdOfLine(QStringLiteral("Mon 3/4/24  [Record ID:42]")), 42);
    EXPECT_EQ(TFormViewEpisodicClientInfo::recordIdOfLine(QStringLiteral("[Record ID:42] trailing")), 0);
    EXPECT_EQ(TFormViewEpisodicClientInfo::recordIdOfLine(QStringLiteral("[Record ID:99999999999999999999]")),
              0);
}

TEST_P(EpisodicClientInfoTest, TheCreditGridExportsItsShownColumns)
{
    QTemporaryDir dir;
    TFormCreditWalkIns form(db(), session, ui);
    form.FormShow();
    GridExportOptions options;
    options.fileName = dir.filePath(QStringLiteral("credits.txt"));
    EXPECT_FALSE(form.ActionExportData(options)); // nothing listed yet
    form.ActionApplyChanges();
    options.selectedOnly = true;
    ASSERT_TRUE(form.ActionExportData(options, {2}));
    EXPECT_EQ(ui.texts(Kind::Information), QStringList{"Finished exporting the data."});
    form.FormClose();
    QFile file(options.fileName);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("\"Date\",\"Route\",\"Stop\",")))
        << lines[0].toStdString();
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("\"2024-03-04\",\"R2\",\"52\",")))
        << lines[1].toStdString();
    EXPECT_TRUE(lines[1].contains(QStringLiteral("\"First2 Last2\""))) << lines[1].toStdString();
}

INSTANTIATE_TEST_SUITE_P(Stores, EpisodicClientInfoTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
