// Barcodes are drawn as vectors and decode as what they hold: from the PDF
// at print resolution, and drawn straight at a label printer's 203 dpi.

#include "ReportTestSupport.h"

#include "MessageError.h"
#include "render/Barcode.h"
#include "render/PagePainter.h"

#include <QDir>

#include <cmath>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::reports;
using namespace kb::test;

namespace {

const QString BarcodeTemplate = QStringLiteral(R"(report "Barcodes"
  page letter
  units in
  pipe P
  detail height 1.4
    text 0 0 3 0.2 "{Name}"
    barcode 0 0.25 2.5 0.8 code128 "{Client_ID}"
    barcode 3 0.25 1 1 qrcode "{Url}"
    barcode 4.5 0.25 2.5 0.8 ean13 "{Ean}"
  end
  summary height 1
    barcode 0 0 2.5 0.8 code39 "KB-2024"
  end
end
)");

QStringList decode(const QString& image)
{
    const QString out = runTool(QStringLiteral("zbarimg"), {QStringLiteral("-q"), image});
    QStringList lines = out.split(u'\n', Qt::SkipEmptyParts);
    lines.sort();
    return lines;
}

} // namespace

TEST(ReportBarcodes, DecodeFromPdfAndFromALabelPrinterPage)
{
    auto p = pipeFrom(QStringLiteral("P"), QStringLiteral("Name,Client_ID,Url,Ean\n"
                                                          "Ann Lee,00707-A,https://example.org/c/707,400638133393\n"));
    const ReportDocument d = layoutOf(BarcodeTemplate, {p.get()});
    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("codes.pdf"));
    writePdf(d, pdf);

    const QStringList expected{"CODE-128:00707-A", "CODE-39:KB-2024", "EAN-13:4006381333931",
                               "QR-Code:https://example.org/c/707"};
    runTool(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QStringLiteral("300"), QStringLiteral("-png"), pdf,
                                         dir.filePath(QStringLiteral("page"))});
    const QStringList pages = QDir(dir.path()).entryList({QStringLiteral("page*.png")});
    ASSERT_EQ(pages.size(), 1);
    EXPECT_EQ(decode(dir.filePath(pages[0])), expected);

    // Vectors, not pictures: the PDF holds no image at all.
    const QString images = runTool(QStringLiteral("pdfimages"), {QStringLiteral("-list"), pdf});
    EXPECT_EQ(images.split(u'\n', Qt::SkipEmptyParts).size(), 2) << images.toStdString(); // the header lines only

    // A thermal label printer's resolution: every module a whole number of dots.
    const QString png = dir.filePath(QStringLiteral("203dpi.png"));
    ASSERT_TRUE(pageImage(d, 0, 203).save(png));
    EXPECT_EQ(decode(png), expected);
}

TEST(ReportBarcodes, ShapesAndRefusals)
{
    const auto code = Barcode::encode(QStringLiteral("code128"), QStringLiteral("12345"), true);
    EXPECT_FALSE(code->bars.empty());
    EXPECT_FALSE(code->twoDimensional);
    EXPECT_EQ(code->text, "12345");
    EXPECT_GT(code->moduleWidth, 0);
    // Every bar is a whole number of modules wide.
    for (const QRectF& bar : code->bars) {
        const double modules = bar.width() / code->moduleWidth;
        EXPECT_NEAR(modules, std::round(modules), 1e-4);
    }
    EXPECT_TRUE(Barcode::encode(QStringLiteral("QRCode"), QStringLiteral("x"), true)->text.isEmpty());
    EXPECT_EQ(Barcode::encode(QStringLiteral("ean13"), QStringLiteral("400638133393"), true)->text, "4006381333931");
    EXPECT_TRUE(Barcode::encode(QStringLiteral("code128"), QString(), true)->bars.empty());
    EXPECT_THROW(Barcode::encode(QStringLiteral("ean13"), QStringLiteral("ABC"), true), MessageError);
    EXPECT_THROW(Barcode::encode(QStringLiteral("nosuch"), QStringLiteral("1"), true), MessageError);
    EXPECT_THROW(Barcode::encode(QStringLiteral("code128"), QString(3000, u'9'), true), MessageError);
}
