// What the run's grid gives out as it stands: the export of its shown
// columns (all rows, or the selected ones) and the rows handed to the quick
// listing in the grid's order under the screen's caption.

#include "RunFixture.h"

#include "stops/GridExport.h"

#include <QFile>
#include <QTemporaryDir>

using namespace kb;
using namespace kb::test;

namespace {

class RunGridOutputTest : public RunFixture
{
};

QStringList linesOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) return {};
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

TEST_F(RunGridOutputTest, TheGridIsExportedAndListedAsItStands)
{
    addClient(1, {{QStringLiteral("Last_Name"), QStringLiteral("Zeller")}});
    addClient(2, {{QStringLiteral("Last_Name"), QStringLiteral("Abbott")}});
    addClient(3, {{QStringLiteral("Last_Name"), QStringLiteral("Moreno")}});
    QTemporaryDir dir;
    GridExportOptions options;
    options.fileName = dir.filePath(QStringLiteral("run.txt"));
    // Nothing to give out before Prepare.
    EXPECT_FALSE(form().ActionExportData(options));
    EXPECT_FALSE(form().ActionQuickClientsListing());
    prepare(monday);

    // A stop changed in the grid is exported as changed.
    ASSERT_TRUE(form().model()->setData(form().model()->index(0, 1), QStringLiteral("7.5")));
    ASSERT_TRUE(form().ActionExportData(options));
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Information),
              QStringList{"Finished exporting the data."});
    QStringList lines = linesOf(options.fileName);
    ASSERT_EQ(lines.size(), 4);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("\"Route\",\"Stop\",\"Alt Addr\",\"Deliv Type\"")))
        << lines[0].toStdString();
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("\"R1\",\"7.5\","))) << lines[1].toStdString();
    EXPECT_TRUE(lines[1].contains(QStringLiteral("\"First1 Zeller\""))) << lines[1].toStdString();

    options.selectedOnly = true;
    ASSERT_TRUE(form().ActionExportData(options, {2}));
    lines = linesOf(options.fileName);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[1].contains(QStringLiteral("\"First3 Moreno\""))) << lines[1].toStdString();
    // A file that cannot be written is told.
    options.fileName = dir.filePath(QStringLiteral("no/such/folder/run.txt"));
    EXPECT_FALSE(form().ActionExportData(options));
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Error).size(), 1);

    // The listing: every column of the rows, in the grid's order.
    ui.clear();
    EXPECT_FALSE(form().ActionQuickClientsListing()); // no printer given
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Error),
              QStringList{"The quick listing cannot be printed from here."});
    QStringList listed;
    QString heading;
    form().setQuickListingPrinter([&](ResultSet rows, const QString& h) {
        heading = h;
        for (qsizetype r = 0; r < rows.rowCount(); ++r)
            listed << rows.value(r, u"Last_Name").toString() + QLatin1Char(' ') +
                          rows.value(r, u"Stop").toString();
    });
    form().sortByTitle(QStringLiteral("Client"));
    ASSERT_TRUE(form().ActionQuickClientsListing());
    EXPECT_EQ(heading, form().caption());
    EXPECT_EQ(listed, (QStringList{"ABBOTT 2", "MORENO 3", "ZELLER 7.5"}));
}

} // namespace
