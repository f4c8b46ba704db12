// Reading templates: what a valid one becomes, the message and line of a
// bad one, and hostile files that must be refused without a crash.

#include "ReportTestSupport.h"

#include "template/ExpressionParser.h"
#include "template/TemplateError.h"
#include "template/TemplateReader.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::reports;
using namespace kb::test;

namespace {

QString errorOf(const QString& text)
{
    try {
        TemplateReader::readText(text, QStringLiteral("bad.rtm"));
    } catch (const TemplateError& e) {
        return e.message();
    }
    return QStringLiteral("(no error)");
}

} // namespace

TEST(TemplateReader, ReadsEveryPartOfATemplate)
{
    const ReportTemplate t = TemplateReader::readText(QStringLiteral(R"(report "Kitchen"
# a comment line
  page a4 landscape
  margins 10mm 15mm
  units mm
  locale en_US
  dateFormat "dd.MM.yyyy"
  font "DejaVu Serif" 11
  style big size 16 bold align center
  parameter Title "Counts"
  pipe Items
  data Extra
    sql "select 1 as One"
    sql "from Config"
  end
  title height 20
    text 0 0 100 8 "{$Title}" style big
  end
  group Diet key "Diet_Descr" keepTogether reprintHeader
    header height 6
      text 0 0 50 6 "{Diet_Descr}" italic color #336699 fill lightgray border 0.5pt
    end
    footer height 6
      line 0 1 100 1 width 1pt color gray
    end
  end
  detail height 5 stretch
    text 0 0 50 5 "{Meal_Item}" wrap
    box 60 0 10 5 fill #eeeeee
    barcode 80 0 40 5 code128 "{Item_ID}" notext
    image 130 0 10 5 file "logo.png" stretch
  end
  summary height 30
    crosstab 0 2 pipe Items
      row "Meal_Item" title "Item" width 40
      column "Diet_Descr"
      value sum "Quantity" format "0"
      cellWidth 15
      totals rows
    end
  end
  pageFooter height 5
    text 0 0 100 5 "Page {page} of {pages}" align right
  end
end
)"),
                                                     QStringLiteral("kitchen.rtm"));
    EXPECT_EQ(t.title, "Kitchen");
    EXPECT_NEAR(t.pageSize.width(), 841.89, 0.01); // landscape A4
    EXPECT_NEAR(t.marginLeft, 10 * 72 / 25.4, 0.001);
    EXPECT_NEAR(t.marginTop, 15 * 72 / 25.4, 0.001);
    EXPECT_EQ(t.dateFormat, "dd.MM.yyyy");
    EXPECT_EQ(t.defaultStyle.family, "DejaVu Serif");
    EXPECT_EQ(t.defaultStyle.size, 11);
    ASSERT_EQ(t.parameters.size(), 1u);
    EXPECT_EQ(t.parameters[0].defaultValue.toString(), "Counts");
    EXPECT_EQ(t.body.pipe, "Items");
    ASSERT_EQ(t.data.size(), 1u);
    EXPECT_EQ(t.data[0].sql, "select 1 as One\nfrom Config");

    ASSERT_TRUE(t.body.header);
    const TextStyle& big = t.body.header->elements[0].style;
    EXPECT_TRUE(big.bold);
    EXPECT_EQ(big.size, 16);
    EXPECT_EQ(big.align, HAlign::Center);
    EXPECT_EQ(big.family, "DejaVu Serif"); // a named style starts from the default font

    ASSERT_EQ(t.body.groups.size(), 1u);
    const Group& diet = t.body.groups[0];
    EXPECT_TRUE(diet.keepTogether);
    EXPECT_TRUE(diet.reprintHeader);
    EXPECT_FALSE(diet.newPage);
    const Element& headerText = diet.header->elements[0];
    EXPECT_TRUE(headerText.style.italic);
    EXPECT_EQ(headerText.style.color, QColor(0x33, 0x66, 0x99));
    EXPECT_TRUE(headerText.style.fill.has_value());
    EXPECT_NEAR(headerText.style.border, 0.5, 1e-9);
    EXPECT_NEAR(diet.footer->elements[0].penWidth, 1, 1e-9);

    const Band& detail = *t.body.detail;
    EXPECT_TRUE(detail.stretch);
    ASSERT_EQ(detail.elements.size(), 4u);
    EXPECT_TRUE(detail.elements[0].wrap);
    EXPECT_NEAR(detail.elements[0].rect.width(), 50 * 72 / 25.4, 1e-6);
    EXPECT_EQ(detail.elements[1].kind, Element::Kind::Box);
    EXPECT_EQ(detail.elements[2].kind, Element::Kind::Barcode);
    EXPECT_FALSE(detail.elements[2].barcodeText);
    EXPECT_EQ(detail.elements[3].imageFile, "logo.png");
    EXPECT_FALSE(detail.elements[3].keepAspect);

    const Element& crosstab = t.body.footer->elements[0];
    ASSERT_EQ(crosstab.kind, Element::Kind::Crosstab);
    EXPECT_EQ(crosstab.crosstab->pipe, "Items");
    EXPECT_EQ(crosstab.crosstab->rows[0].title, "Item");
    EXPECT_EQ(crosstab.crosstab->valueFormat, "0");
    EXPECT_TRUE(crosstab.crosstab->rowTotals);
    EXPECT_FALSE(crosstab.crosstab->columnTotals);

    ASSERT_TRUE(t.pageFooter);
    EXPECT_EQ(t.pageFooter->elements[0].text.pieces.size(), 4u);
}

TEST(TemplateReader, LabelStockSetsPageAndGrid)
{
    const ReportTemplate t = TemplateReader::readText(QStringLiteral(R"(report "Labels"
  stock "Avery 5160"
  pipe Labels
  detail height 2in
    text 0.1in 0.1in 2.4in 0.2in "{Name}"
  end
end
)"),
                                                     QStringLiteral("labels.rtm"));
    EXPECT_EQ(t.pageSize, QSizeF(612, 792));
    EXPECT_EQ(t.columns.count, 3);
    EXPECT_NEAR(t.columns.width, 189, 1e-9);
    EXPECT_NEAR(t.columns.gap, 9, 1e-9);
    EXPECT_NEAR(t.columns.rowPitch, 72, 1e-9);
    EXPECT_NEAR(t.body.detail->height, 72, 1e-9); // one label, whatever the band said
    EXPECT_NEAR(t.marginLeft, 13.5, 1e-9);
    EXPECT_NEAR(t.marginTop, 36, 1e-9);
}

TEST(TemplateReader, BadTemplatesNameTheLineAndTheFault)
{
    const QString head = QStringLiteral("report \"R\"\n  pipe P\n");
    const struct
    {
        QString text;
        QString expected;
    } cases[] = {
        {QString(), "the file is empty"},
        {"page letter\n", "line 1: a template starts with the line: report"},
        {head + "  detail height 1in\n", "line 3: the detail band opened here has no 'end'"},
        {head + "  detail\n  end\nend\n", "line 3: the detail band needs a height"},
        {head + "  detail height 1furlong\n  end\nend\n", "line 3: expected the band's height as a length such as 0.5in"},
        {head + "  detail height abc\n  end\nend\n", "line 3: expected the band's height as a length"},
        {head + "  detail height 1\n    text 0 0 1 1 \"{Name\"\n  end\nend\n", "line 4: in the text \"{Name\": a '{' is not closed"},
        {head + "  detail height 1\n    text 0 0 1 1 \"{a +}\"\n  end\nend\n", "line 4: in the text \"{a +}\": the expression ends too early"},
        {head + "  detail height 1\n    text 0 0 1 1 \"unclosed\n  end\nend\n", "line 4: a text in double quotes is not closed"},
        {head + "  detail height 1\n    circle 0 0 1 1\n  end\nend\n", "line 4: unknown element 'circle'"},
        {head + "  detail height 1\n    barcode 0 0 1 1 code999 \"x\"\n  end\nend\n", "line 4: unknown symbology 'code999'"},
        {head + "  detail height 1\n  end\n  detail height 1\n  end\nend\n", "line 5: there is already a detail band here"},
        {head + "  page 0.1in 0.1in\n  detail height 1\n  end\nend\n", "line 3: a page must be at least half an inch"},
        {head + "  margins 5in\n  detail height 1\n  end\nend\n", "the margins leave no room on the page"},
        {head + "  group G\n  end\n  detail height 1\n  end\nend\n", "line 3: the group needs a key"},
        {head + "  stock \"Avery 9999\"\nend\n", "line 3: there is no label stock named \"Avery 9999\""},
        {head + "  detail height 1\n    text 0 0 1 1 \"x\" style nosuch\n  end\nend\n", "line 4: there is no style named nosuch"},
        {head + "  detail height 1\n    text 0 0 1 1 \"x\" color nocolour\n  end\nend\n", "line 4: the colour 'nocolour' is not a colour"},
        {head + "  detail height 1\n  end\nend\nextra\n", "line 6: nothing may follow the 'end' of the report"},
        {head + "  detail height 101in\n  end\nend\n", "line 3: the band's height is larger than 100 inches"},
        {head + "  detail height 1\n    text 0 0 1 1 \"a\\qb\"\n  end\nend\n", "line 4: unknown escape \\q"},
        {head + "  pageHeader height 1\n    subreport 0 0 pipe X\n    end\n  end\nend\n", "line 4: a page header or footer cannot hold a subreport"},
        {head + "  columns 3\n  detail height 1\n    crosstab 0 0\n      row \"a\"\n      column \"b\"\n      value count\n    end\n  end\nend\n",
         "a detail printed in columns can hold only inline subreports and no crosstab"},
    };
    for (const auto& c : cases) {
        const QString message = errorOf(c.text);
        EXPECT_TRUE(message.contains(c.expected)) << "template:\n"
                                                   << c.text.toStdString() << "\nmessage: " << message.toStdString();
        EXPECT_TRUE(message.startsWith(QLatin1String("Error in the report template bad.rtm")))
            << message.toStdString();
    }
}

TEST(TemplateReader, MissingFileGivesTheReportScreensMessage)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Nowhere.rtm"));
    try {
        TemplateReader::readFile(path);
        FAIL() << "no error for a missing template";
    } catch (const TemplateMissing& e) {
        EXPECT_EQ(e.message(), QStringLiteral("Could not locate the report template file:\n\r") + path);
    }
}

TEST(TemplateReader, HostileFilesAreRefusedWithAMessage)
{
    QTemporaryDir dir;
    auto write = [&](const QString& name, const QByteArray& bytes) {
        const QString path = dir.filePath(name);
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
        return path;
    };
    auto refusal = [](const QString& path) {
        try {
            TemplateReader::readFile(path);
        } catch (const TemplateError& e) {
            return e.message();
        }
        return QStringLiteral("(no error)");
    };
    // Too large, never read whole.
    EXPECT_TRUE(refusal(write("big.rtm", QByteArray(TemplateReader::MaxFileBytes + 1, 'a')))
                    .contains("larger than"));
    // Not UTF-8.
    EXPECT_TRUE(refusal(write("latin.rtm", QByteArray("report \"Caf\xe9\"\nend\n"))).contains("not UTF-8"));
    // A NUL in the middle of a line.
    EXPECT_TRUE(refusal(write("nul.rtm", QByteArray("report \"R\"\n  pipe P\0X\nend\n", 25)))
                    .contains("control character"));
    // One enormous line.
    EXPECT_TRUE(
        refusal(write("line.rtm", "report \"R\"\n  pipe " + QByteArray(TemplateReader::MaxLineLength + 10, 'x') + "\n"))
            .contains("line 2: the line is longer than"));
    // Subreports nested beyond the bound.
    QByteArray nested = "report \"R\"\n  pipe P\n  detail height 1\n";
    for (int i = 0; i < 20; ++i)
        nested += "    subreport 0 0 pipe P\n    detail height 1\n";
    EXPECT_TRUE(refusal(write("deep.rtm", nested)).contains("blocks are nested more than"));
    // Too many elements.
    QByteArray many = "report \"R\"\n  pipe P\n  detail height 1\n";
    for (int i = 0; i <= TemplateReader::MaxElements; ++i)
        many += "    line 0 0 1 1\n";
    many += "  end\nend\n";
    EXPECT_TRUE(refusal(write("many.rtm", many)).contains("more than 5000 elements"));
    // An expression nested as deep as the line allows.
    const QByteArray brackets = "report \"R\"\n  pipe P\n  detail height 1\n    text 0 0 1 1 \"{" +
                                QByteArray(1000, '(') + "1" + QByteArray(1000, ')') + "}\"\n  end\nend\n";
    EXPECT_TRUE(refusal(write("brackets.rtm", brackets)).contains("nested too deeply"));
    // A number too large to be a length.
    EXPECT_TRUE(refusal(write("huge.rtm", "report \"R\"\n  margins 99999999999999999999in\nend\n"))
                    .contains("line 2: expected a margin as a length"));
}

// Random damage to a real template: every variant is read or refused with a
// TemplateError, never anything else, and quickly.
TEST(TemplateReader, DamagedTemplatesNeverCrash)
{
    QFile file(builtInTemplatePath(QStringLiteral("DailyRunRAP030103.rtm")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray original = file.readAll();
    QRandomGenerator random(20240306);
    const char alphabet[] = "{}()\"'\\#:.,-+*/ \n\tabcdeEND0123456789$";
    int refused = 0;
    for (int round = 0; round < 1500; ++round) {
        QByteArray damaged = original;
        const int edits = 1 + int(random.bounded(6));
        for (int e = 0; e < edits; ++e) {
            const int at = int(random.bounded(damaged.size()));
            switch (random.bounded(4)) {
            case 0: damaged[at] = alphabet[random.bounded(int(sizeof(alphabet) - 1))]; break;
            case 1: damaged.remove(at, int(random.bounded(40))); break;
            case 2: damaged.insert(at, damaged.mid(int(random.bounded(damaged.size())), 30)); break;
            default: damaged[at] = char(random.bounded(256)); break;
            }
        }
        try {
            TemplateReader::readText(QString::fromUtf8(damaged), QStringLiteral("damaged.rtm"));
        } catch (const TemplateError&) {
            ++refused;
        }
    }
    EXPECT_GT(refused, 500); // most damage is noticed
}

TEST(ExpressionParser, TextPiecesAndFormats)
{
    const TextTemplate t = ExpressionParser::parseText(u"Due {Deliv_Dt:dddd, MMM d} {{literal}} {if(a = 'x:y', 1, 2)}");
    ASSERT_EQ(t.pieces.size(), 4u);
    EXPECT_EQ(t.pieces[0].literal, "Due ");
    EXPECT_EQ(t.pieces[1].format, "dddd, MMM d");
    EXPECT_EQ(t.pieces[2].literal, " {literal} ");
    EXPECT_TRUE(t.pieces[3].format.isEmpty()); // the colon inside quotes is no format
    EXPECT_EQ(t.pieces[3].expr->kind, Expr::Kind::Call);
    EXPECT_THROW(ExpressionParser::parseText(u"a } b"), ExpressionError);
    EXPECT_THROW(ExpressionParser::parse(u"1 +"), ExpressionError);
    EXPECT_THROW(ExpressionParser::parse(u"'open"), ExpressionError);
    EXPECT_THROW(ExpressionParser::parse(u"12abc"), ExpressionError);
    EXPECT_THROW(ExpressionParser::parse(u"a ; b"), ExpressionError);
    EXPECT_EQ(ExpressionParser::parse(u"Pipe.Field")->kind, Expr::Kind::Field);
    EXPECT_EQ(ExpressionParser::parse(u"$Param")->kind, Expr::Kind::Parameter);
    EXPECT_EQ(ExpressionParser::parse(u"sum(Quantity, 'Route')")->kind, Expr::Kind::Aggregate);
}
