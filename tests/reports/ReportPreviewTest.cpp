// The preview's presenter: moving through pages, zooming, saving.

#include "ReportTestSupport.h"
#include "ScriptedUserInterface.h"

#include "MessageError.h"
#include "ReportOutput.h"
#include "ReportPreview.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::reports;
using namespace kb::test;

namespace {

class NoPrinter final : public ReportOutput
{
public:
    void preview(std::shared_ptr<const ReportDocument>) override {}
    bool print(const ReportDocument&, bool showDialog) override
    {
        ++prints;
        dialog = showDialog;
        if (fail)
            throw MessageError(QStringLiteral("The printer is out of paper."));
        return true;
    }
    int prints = 0;
    bool dialog = false;
    bool fail = false;
};

std::shared_ptr<const ReportDocument> threePages()
{
    auto p = pipeFrom(QStringLiteral("P"), QStringLiteral("N\n1\n2\n3\n"));
    return std::make_shared<ReportDocument>(layoutOf(QStringLiteral(R"(report "Three Pages"
  pipe P
  detail height 1in newPageAfter
    text 0 0 1in 0.2in "{N}"
  end
end
)"),
                                                     {p.get()}));
}

} // namespace

TEST(ReportPreview, MovesThroughPagesAndZooms)
{
    ScriptedUserInterface ui;
    NoPrinter printer;
    ReportPreview preview(threePages(), &printer, ui);
    int changes = 0;
    QObject::connect(&preview, &ReportPreview::changed, [&] { ++changes; });
    EXPECT_EQ(preview.caption(), "Report Preview - Three Pages");
    EXPECT_EQ(preview.pageCount(), 3);
    EXPECT_EQ(preview.pageCountText(), "of 3");
    EXPECT_FALSE(preview.isEnabled(ReportPreview::Command::First));
    EXPECT_FALSE(preview.isEnabled(ReportPreview::Command::Prior));
    EXPECT_TRUE(preview.isEnabled(ReportPreview::Command::Next));
    preview.next();
    preview.next();
    EXPECT_EQ(preview.currentPage(), 2);
    EXPECT_FALSE(preview.isEnabled(ReportPreview::Command::Next));
    EXPECT_FALSE(preview.isEnabled(ReportPreview::Command::Last));
    preview.next(); // nothing beyond the last page
    EXPECT_EQ(changes, 2);
    preview.goToPage(99);
    EXPECT_EQ(preview.currentPage(), 2);
    preview.goToPage(0);
    EXPECT_EQ(preview.currentPage(), 0);
    preview.last();
    preview.prior();
    EXPECT_EQ(preview.currentPage(), 1);

    // Fitted to a window 850 pixels wide: 8.5 inches at 100 dpi.
    EXPECT_EQ(preview.zoom(), ReportPreview::Zoom::FitWidth);
    EXPECT_NEAR(preview.pageDpi(QSizeF(850 + 32, 500), 96), 100, 1e-9);
    EXPECT_EQ(preview.zoomPercent(), 104);
    preview.zoomIn(); // the next step above what is shown
    EXPECT_EQ(preview.zoom(), ReportPreview::Zoom::Percent);
    EXPECT_EQ(preview.zoomPercent(), 125);
    EXPECT_NEAR(preview.pageDpi(QSizeF(100, 100), 96), 120, 1e-9);
    preview.wholePage();
    EXPECT_NEAR(preview.pageDpi(QSizeF(2000, 1100 + 32), 96), 100, 1e-9); // 11 inches high
    preview.setZoomPercent(1000);
    EXPECT_EQ(preview.zoomPercent(), 400);
    EXPECT_FALSE(preview.isEnabled(ReportPreview::Command::ZoomIn));
    preview.setZoomPercent(25);
    EXPECT_FALSE(preview.isEnabled(ReportPreview::Command::ZoomOut));
    preview.zoomOut();
    EXPECT_EQ(preview.zoomPercent(), 25);
}

TEST(ReportPreview, PrintsSavesAndRemembersTheZoom)
{
    ScriptedUserInterface ui;
    NoPrinter printer;
    QTemporaryDir dir;
    const QString ini = dir.filePath(QStringLiteral("Kettbrk.ini"));
    {
        ReportPreview preview(threePages(), &printer, ui);
        preview.setSettingsFile(ini);
        preview.print();
        EXPECT_EQ(printer.prints, 1);
        EXPECT_TRUE(printer.dialog); // the preview's Print asks where and how
        printer.fail = true;
        preview.print();
        EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Error), QStringList{"The printer is out of paper."});

        EXPECT_EQ(preview.suggestedPdfName(), "Three Pages.pdf");
        const QString pdf = dir.filePath(preview.suggestedPdfName());
        EXPECT_TRUE(preview.saveAsPdf(pdf));
        const QString info = runTool(QStringLiteral("pdfinfo"), {pdf});
        EXPECT_TRUE(info.contains(QLatin1String("Pages:           3"))) << info.toStdString();
        EXPECT_FALSE(preview.saveAsPdf(dir.filePath(QStringLiteral("no/such/folder/x.pdf"))));
        EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Error).size(), 2);
        preview.setZoomPercent(150);
    }
    QSettings settings(ini, QSettings::IniFormat);
    EXPECT_EQ(settings.value(QStringLiteral("ReportPreview/Zoom")).toString(), "Percent");
    ReportPreview again(threePages(), nullptr, ui);
    again.setSettingsFile(ini);
    EXPECT_EQ(again.zoomPercent(), 150);
    EXPECT_FALSE(again.isEnabled(ReportPreview::Command::Print)); // nothing to print with
}
