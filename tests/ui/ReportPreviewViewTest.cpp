// The report preview window over its presenter, offscreen: moving through
// pages, zooming, and printing through the printer path into a file.

#include "QtReportOutput.h"
#include "ReportPreview.h"
#include "ReportPreviewView.h"
#include "ScriptedUserInterface.h"

#include "data/CsvRows.h"
#include "data/RowsPipe.h"
#include "engine/ReportLayout.h"
#include "template/TemplateReader.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QProcess>
#include <QScreen>
#include <QSpinBox>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::reports;

namespace {

class ReportPreviewViewTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        static int argc = 1;
        static char name[] = "ui_tests";
        static char* argv[] = {name, nullptr};
        if (!QApplication::instance())
            new QApplication(argc, argv);
    }

    // Forty deliveries on two routes, a page of routes per route.
    static std::shared_ptr<const ReportDocument> runSheet()
    {
        QString csv = QStringLiteral("Route_ID,Stop,Name\n");
        for (int i = 1; i <= 40; ++i)
            csv += QStringLiteral("%1,%2,Client %3\n").arg(i <= 30 ? "North" : "South").arg(i).arg(i);
        RowsPipe pipe(QStringLiteral("DBPipelineDeliveries"), readCsvText(csv, QStringLiteral("rows")));
        auto report = std::make_shared<ReportTemplate>(TemplateReader::readText(QStringLiteral(R"(report "Run Sheet"
  pipe DBPipelineDeliveries
  group Route key "Route_ID" newPage
    header height 0.4in
      text 0 0 7.5in 0.3in "Route {Route_ID}" size 14 bold
    end
  end
  detail height 0.5in
    text 0 0 0.5in 0.25in "{Stop}" size 12 bold align right
    text 0.7in 0 4in 0.25in "{Name}"
    line 0 0.45in 7.5in 0.45in width 0.25pt
  end
  pageFooter height 0.3in
    text 0 0 7.5in 0.2in "Page {page} of {pages}" align right
  end
end
)"),
                                                                                        QStringLiteral("test.rtm")));
        ReportInputs inputs;
        inputs.pipes = {&pipe};
        return std::make_shared<ReportDocument>(layoutReport(report, inputs));
    }

    test::ScriptedUserInterface ui;
};

} // namespace

TEST_F(ReportPreviewViewTest, MovesThroughPagesAndZooms)
{
    const auto document = runSheet();
    ASSERT_EQ(document->pageCount(), 3);
    ui::QtReportOutput output(nullptr, ui);
    ReportPreview presenter(document, &output, ui);
    ui::ReportPreviewView view(presenter);
    view.resize(1000, 700);
    view.show();
    QApplication::processEvents();

    EXPECT_EQ(view.windowTitle(), "Report Preview - Run Sheet");
    EXPECT_EQ(view.pageBox()->value(), 1);
    EXPECT_EQ(view.pageBox()->maximum(), 3);
    EXPECT_EQ(view.pageCountLabel()->text().trimmed(), "of 3");
    EXPECT_FALSE(view.action(QStringLiteral("prior"))->isEnabled());
    EXPECT_TRUE(view.action(QStringLiteral("print"))->isEnabled());
    const QImage fitted = view.pageImage();
    ASSERT_FALSE(fitted.isNull());
    // Fitted to the width: the page almost fills the view across.
    EXPECT_GT(fitted.width(), 800);

    view.action(QStringLiteral("next"))->trigger();
    EXPECT_EQ(view.pageBox()->value(), 2);
    view.pageBox()->setValue(3);
    EXPECT_EQ(presenter.currentPage(), 2);
    EXPECT_FALSE(view.action(QStringLiteral("last"))->isEnabled());
    view.action(QStringLiteral("first"))->trigger();
    EXPECT_EQ(view.pageBox()->value(), 1);

    // The whole page: as high as the view.
    view.zoomBox()->setCurrentIndex(1);
    emit view.zoomBox()->activated(1);
    EXPECT_LT(view.pageImage().height(), 700);
    view.action(QStringLiteral("zoomIn"))->trigger();
    EXPECT_EQ(presenter.zoom(), ReportPreview::Zoom::Percent);
    EXPECT_EQ(view.zoomBox()->currentText(), QStringLiteral("%1%").arg(presenter.zoomPercent()));

    // Under a display, KB_PREVIEW_SHOT=FILE keeps a picture of the window.
    const QString shot = qEnvironmentVariable("KB_PREVIEW_SHOT");
    if (!shot.isEmpty()) {
        presenter.fitWidth();
        view.showMaximized();
        for (int i = 0; i < 20; ++i)
            QApplication::processEvents();
        view.screen()->grabWindow(0).save(shot);
    }
}

TEST_F(ReportPreviewViewTest, PrintsThroughThePrinterPath)
{
    const auto document = runSheet();
    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("printed.pdf"));
    ui::QtReportOutput output(nullptr, ui);
    output.setPrintToFile(pdf);
    ASSERT_TRUE(output.print(*document, false));
    QProcess info;
    info.start(QStringLiteral("pdfinfo"), {pdf});
    ASSERT_TRUE(info.waitForFinished(30000));
    const QString text = QString::fromUtf8(info.readAllStandardOutput());
    EXPECT_TRUE(text.contains(QLatin1String("Pages:           3"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QLatin1String("612 x 792 pts"))) << text.toStdString();
}
