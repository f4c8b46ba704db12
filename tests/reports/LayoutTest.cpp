// Layout: page breaks, groups kept together and repeated, sums and counts,
// page numbers, labels in a grid, crosstabs and subreports.

#include "ReportTestSupport.h"

#include "template/TemplateError.h"

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::reports;
using namespace kb::test;

namespace {

QString numbered(const QString& header, int from, int to, const std::function<QString(int)>& row)
{
    QString csv = header + u'\n';
    for (int i = from; i <= to; ++i)
        csv += row(i) + u'\n';
    return csv;
}

QStringList textsOfPage(const ReportDocument& d, int page) { return pageTexts(d, page); }

} // namespace

TEST(ReportLayout, BreaksPagesAndNumbersThem)
{
    // A body of 792 - 72 - 40 = 680 points holds six rows of 100.
    auto p = pipeFrom(QStringLiteral("P"), numbered(QStringLiteral("N"), 1, 15, [](int i) { return QString::number(i); }));
    const ReportDocument d = layoutOf(QStringLiteral(R"(report "Pages"
  units pt
  pipe P
  pageHeader height 20
    text 0 0 200 20 "Header {N}"
  end
  detail height 100
    text 0 0 200 20 "Row {N}"
  end
  pageFooter height 20
    text 0 0 200 20 "Page {page} of {pages}"
  end
end
)"),
                                      {p.get()});
    ASSERT_EQ(d.pageCount(), 3);
    EXPECT_EQ(textsOfPage(d, 0), (QStringList{"Row 1", "Row 2", "Row 3", "Row 4", "Row 5", "Row 6", "Header 1",
                                              "Page 1 of 3"}));
    EXPECT_EQ(textsOfPage(d, 2), (QStringList{"Row 13", "Row 14", "Row 15", "Header 13", "Page 3 of 3"}));
    // Rows stand below the page header.
    EXPECT_DOUBLE_EQ(d.pages[0].blocks[0].at.y(), 56);
    EXPECT_DOUBLE_EQ(d.pages[0].blocks[5].at.y(), 556);
}

TEST(ReportLayout, KeepsGroupsTogetherAndRepeatsTheirHeaders)
{
    // Group A: 20 + 4 x 100 + 20 = 440; B: 340; C: 20 + 8 x 100 + 20, taller than a page.
    QString csv = QStringLiteral("G,N\n");
    int n = 0;
    for (const auto& [group, rows] : {std::pair{"A", 4}, std::pair{"B", 3}, std::pair{"C", 8}}) {
        for (int i = 0; i < rows; ++i)
            csv += QStringLiteral("%1,%2\n").arg(QLatin1String(group)).arg(++n);
    }
    const QString templ = QStringLiteral(R"(report "Groups"
  units pt
  margins 36 36 36 56
  pipe P
  group G key "G" %1
    header height 20
      text 0 0 200 20 "Group {G}"
    end
    footer height 20
      text 0 0 200 20 "End {G}"
    end
  end
  detail height 100
    text 0 0 200 20 "Row {N}"
  end
end
)");
    auto p = pipeFrom(QStringLiteral("P"), csv);
    // Body: 792 - 36 - 56 = 700.
    const ReportDocument loose = layoutOf(templ.arg(QString()), {p.get()});
    EXPECT_TRUE(textsOfPage(loose, 0).contains("Group B")); // B starts where A ends
    const ReportDocument kept = layoutOf(templ.arg(QStringLiteral("keepTogether reprintHeader")), {p.get()});
    ASSERT_GE(kept.pageCount(), 3);
    EXPECT_EQ(textsOfPage(kept, 0), (QStringList{"Group A", "Row 1", "Row 2", "Row 3", "Row 4", "End A"}));
    // B did not fit under A, so it starts page 2; C, taller than any page,
    // follows B at once and goes on over the pages with its header again.
    const QStringList second = textsOfPage(kept, 1);
    EXPECT_EQ(second.mid(0, 5), (QStringList{"Group B", "Row 5", "Row 6", "Row 7", "End B"}));
    EXPECT_EQ(second.value(5), "Group C");
    const QStringList third = textsOfPage(kept, 2);
    EXPECT_EQ(third.value(0), "Group C");
    EXPECT_TRUE(kept.pages[2].blocks[0].repeated);
    int rowsOfC = 0;
    for (int page = 1; page < kept.pageCount(); ++page) {
        for (const QString& t : textsOfPage(kept, page))
            rowsOfC += t.startsWith(QLatin1String("Row ")) && t.mid(4).toInt() >= 8;
    }
    EXPECT_EQ(rowsOfC, 8); // nothing lost or doubled
}

TEST(ReportLayout, SumsAndCountsPerGroupAndReport)
{
    auto p = pipeFrom(QStringLiteral("P"), QStringLiteral("Route,Item,Qty\nA,x,1\nA,y,2\nA,x,3\nB,z,4\n"));
    const ReportDocument d = layoutOf(QStringLiteral(R"(report "Sums"
  units pt
  pipe P
  title height 20
    text 0 0 300 20 "Report total {sum(Qty)}"
  end
  group Route key "Route"
    header height 20
      text 0 0 300 20 "Route {Route}: {sum(Qty)} meals"
    end
    footer height 20
      text 0 0 500 20 "Total {sum(Qty)} in {count()} lines, {distinct(Item)} items, max {max(Qty)}, so far {sum(Qty, 'report')}"
    end
  end
  detail height 20
    text 0 0 300 20 "{Item} {Qty} running {sum(Qty)}"
  end
  summary height 20
    text 0 0 300 20 "All {sum(Qty)} avg {avg(Qty)} min {min(Item)}"
  end
end
)"),
                                      {p.get()});
    EXPECT_EQ(documentTexts(d),
              (QStringList{"--- page 1 ---", "Report total 10", "Route A: 6 meals", "x 1 running 1", "y 2 running 3",
                           "x 3 running 6", "Total 6 in 3 lines, 2 items, max 3, so far 6", "Route B: 4 meals",
                           "z 4 running 4", "Total 4 in 1 lines, 1 items, max 4, so far 10", "All 10 avg 2.5 min x"}));
}

TEST(ReportLayout, PageNumbersRestartForEachGroup)
{
    // Route A takes two pages, B one; each numbers its own pages.
    QString csv = QStringLiteral("Route,N\n");
    for (int i = 1; i <= 9; ++i)
        csv += QStringLiteral("A,%1\n").arg(i);
    csv += QStringLiteral("B,10\n");
    auto p = pipeFrom(QStringLiteral("P"), csv);
    const ReportDocument d = layoutOf(QStringLiteral(R"(report "Runs"
  units pt
  pipe P
  group Route key "Route" resetPageNumber
  end
  detail height 100
    text 0 0 200 20 "{Route} {N}"
  end
  pageFooter height 20
    text 0 0 200 20 "Route {Route} page {page} of {pages}"
  end
end
)"),
                                      {p.get()});
    ASSERT_EQ(d.pageCount(), 3);
    EXPECT_EQ(textsOfPage(d, 0).last(), "Route A page 1 of 2");
    EXPECT_EQ(textsOfPage(d, 1).last(), "Route A page 2 of 2");
    EXPECT_EQ(textsOfPage(d, 2), (QStringList{"B 10", "Route B page 1 of 1"}));
}

TEST(ReportLayout, LabelsFillTheGridFromAStartPosition)
{
    auto p = pipeFrom(QStringLiteral("Labels"),
                      numbered(QStringLiteral("Name"), 1, 35, [](int i) { return QStringLiteral("Client %1").arg(i); }));
    const QString templ = QStringLiteral(R"(report "Labels"
  stock "Avery 5160"
  pipe Labels
  detail height 1in
    text 0.1in 0.1in 2.4in 0.2in "{Name}"
  end
end
)");
    LayoutOptions options;
    options.start = 5; // four labels of the sheet are used already
    const ReportDocument d = layoutOf(templ, {p.get()}, options);
    ASSERT_EQ(d.pageCount(), 2);
    ASSERT_EQ(d.pages[0].blocks.size(), 26u);
    EXPECT_EQ(d.pages[1].blocks.size(), 9u);
    // Position 5 is the middle label of the second row.
    EXPECT_NEAR(d.pages[0].blocks[0].at.x(), 13.5 + 198, 1e-6);
    EXPECT_NEAR(d.pages[0].blocks[0].at.y(), 36 + 72, 1e-6);
    EXPECT_NEAR(d.pages[0].blocks[2].at.x(), 13.5, 1e-6); // then the next row from the left
    EXPECT_NEAR(d.pages[0].blocks[2].at.y(), 36 + 144, 1e-6);
    // The last label of the sheet, bottom right, and the next sheet from its first label.
    EXPECT_NEAR(d.pages[0].blocks[25].at.x(), 13.5 + 396, 1e-6);
    EXPECT_NEAR(d.pages[0].blocks[25].at.y(), 36 + 9 * 72, 1e-6);
    EXPECT_EQ(d.pages[1].blocks[0].at, QPointF(13.5, 36));
    EXPECT_EQ(textsOfPage(d, 1).first(), "Client 27");

    // Down the columns first: seven labels of 100 points to a column.
    const ReportDocument down = layoutOf(QStringLiteral(R"(report "Down"
  units pt
  pipe Labels
  columns 2 width 200 gap 10 down
  detail height 100
    text 0 0 200 20 "{Name}"
  end
end
)"),
                                         {p.get()});
    EXPECT_EQ(down.pages[0].blocks[6].at, QPointF(36, 636));
    EXPECT_EQ(down.pages[0].blocks[7].at, QPointF(246, 36));
    EXPECT_EQ(down.pages[0].blocks.size(), 14u);

    // A label printer: one label to a page.
    const ReportDocument single = layoutOf(QStringLiteral(R"(report "One"
  stock "Label printer 1-1/8 x 3-1/2 in"
  pipe Labels
  detail height 1in
    text 0.1in 0.1in 3in 0.3in "{Name}"
  end
end
)"),
                                           {p.get()});
    EXPECT_EQ(single.pageCount(), 35);
    EXPECT_EQ(single.pageSize, QSizeF(252, 81));
    EXPECT_EQ(textsOfPage(single, 34), QStringList{"Client 35"});
}

TEST(ReportLayout, CrosstabCellsAndTotals)
{
    const QString csv = QStringLiteral("Item,Diet,Qty\nSoup,Regular,2\nSoup,Diabetic,1\nBread,Regular,3\nSoup,Regular,4\n");
    auto p = pipeFrom(QStringLiteral("P"), csv);
    const QString expected = QStringLiteral(
        "Item|Diabetic|Regular|Total|Bread|3|3|Soup|1|6|7|Total|1|9|10");
    // From a pipe of its own, and gathered from the rows of the report.
    for (const QString& where : {QStringLiteral("pipe P"), QString()}) {
        const ReportDocument d = layoutOf(QStringLiteral(R"(report "Crosstab"
  units pt
  pipe P
  summary height 10
    crosstab 0 0 %1
      row "Item" title "Item" width 100
      column "Diet"
      value sum "Qty"
    end
  end
end
)")
                                              .arg(where),
                                          {p.get()});
        EXPECT_EQ(textsOfPage(d, 0).join(u'|').toStdString(), expected.toStdString()) << where.toStdString();
    }
    // Per group: the crosstab of a group footer counts that group's rows only.
    const ReportDocument perGroup = layoutOf(QStringLiteral(R"(report "Crosstab"
  units pt
  pipe P
  group Item key "Item"
    footer height 10
      crosstab 0 0
        row "Item" width 100
        column "Diet"
        value count
        totals none
      end
    end
  end
end
)"),
                                             {p.get()});
    // The rows are not sorted by item, so Soup makes two groups.
    EXPECT_EQ(textsOfPage(perGroup, 0).join(u'|').toStdString(),
              "|Diabetic|Regular|Soup|1|1||Regular|Bread|1||Regular|Soup|1");

    // Too wide for the page: slices of columns, each column once, the total last.
    QString wide = QStringLiteral("Item,Diet,Qty\n");
    for (int c = 0; c < 30; ++c)
        wide += QStringLiteral("Soup,D%1,1\n").arg(c, 2, 10, QLatin1Char('0'));
    auto w = pipeFrom(QStringLiteral("W"), wide);
    const ReportDocument sliced = layoutOf(QStringLiteral(R"(report "Wide"
  units pt
  pipe W
  summary height 10
    crosstab 0 0
      row "Item" width 100
      column "Diet"
      value sum "Qty"
      cellWidth 54
    end
  end
end
)"),
                                           {w.get()});
    const QStringList texts = documentTexts(sliced);
    for (int c = 0; c < 30; ++c)
        EXPECT_EQ(texts.count(QStringLiteral("D%1").arg(c, 2, 10, QLatin1Char('0'))), 1) << c;
    EXPECT_EQ(texts.count("30"), 2); // Soup's total and the grand total, each once
    EXPECT_GE(texts.count("Soup"), 4); // the row title again in each slice
}

TEST(ReportLayout, SubreportsInlineAndFlowing)
{
    auto master = pipeFrom(QStringLiteral("M"), QStringLiteral("Id,Name\n1,Ann\n2,Bob\n"));
    QString lines = QStringLiteral("MId,Line\n");
    for (int i = 1; i <= 3; ++i)
        lines += QStringLiteral("1,a%1\n").arg(i);
    for (int i = 1; i <= 40; ++i)
        lines += QStringLiteral("2,b%1\n").arg(i);
    auto detail = pipeFrom(QStringLiteral("D"), lines);
    detail->linkTo(*master, {{QStringLiteral("MId"), QStringLiteral("Id")}});

    // Inline: Ann's three lines stand beside her name and grow the band.
    const ReportDocument inlined = layoutOf(QStringLiteral(R"(report "Inline"
  units pt
  pipe M
  detail height 30 stretch
    text 0 0 100 20 "{Name}"
    subreport 200 0 pipe D inline height 20
      detail height 20
        text 0 0 100 20 "{Line}"
      end
    end
    text 0 20 100 10 "below"
    text 100 10 100 10 "beside"
  end
end
)"),
                                            {master.get(), detail.get()});
    const Block& ann = inlined.blocks[size_t(inlined.pages[0].blocks[0].block)];
    EXPECT_DOUBLE_EQ(ann.height, 30 + 40); // three lines of 20 in a room of 20
    EXPECT_EQ(textsOfPage(inlined, 0).mid(0, 6), (QStringList{"Ann", "a1", "a2", "a3", "beside", "below"}));
    const auto* beside = std::get_if<TextItem>(&ann.items[4]);
    const auto* below = std::get_if<TextItem>(&ann.items[5]);
    ASSERT_TRUE(beside && below);
    EXPECT_DOUBLE_EQ(beside->rect.top(), 10); // beside the lines: it stays
    EXPECT_DOUBLE_EQ(below->rect.top(), 60);  // below their room: pushed down by the 40 they grew
    // Bob's 40 lines make one tall band on a page of its own, cut at the page's foot.
    EXPECT_EQ(inlined.pageCount(), 2);

    // Flowing: the lines are bands of their own and break across pages.
    const ReportDocument flowing = layoutOf(QStringLiteral(R"(report "Flowing"
  units pt
  pipe M
  detail height 40
    text 0 0 100 20 "{Name}"
    subreport 20 20 pipe D
      header height 20
        text 0 0 100 20 "Lines of {M.Name}"
      end
      detail height 20
        text 0 0 100 20 "{Line}"
      end
      footer height 20
        text 0 0 100 20 "{count()} lines"
      end
    end
  end
end
)"),
                                            {master.get(), detail.get()});
    const QStringList texts = documentTexts(flowing);
    EXPECT_EQ(flowing.pageCount(), 2);
    EXPECT_EQ(texts.mid(1, 6), (QStringList{"Ann", "Lines of Ann", "a1", "a2", "a3", "3 lines"}));
    EXPECT_EQ(texts.last(), "40 lines");
    EXPECT_EQ(texts.count(QStringLiteral("b40")), 1);
    EXPECT_DOUBLE_EQ(flowing.pages[0].blocks[2].at.x(), 36 + 20); // indented by the subreport's place
}

TEST(ReportLayout, PageFooterSumsItsPage)
{
    auto p = pipeFrom(QStringLiteral("P"), numbered(QStringLiteral("Qty"), 1, 10, [](int i) { return QString::number(i); }));
    const ReportDocument d = layoutOf(QStringLiteral(R"(report "Page sums"
  units pt
  pipe P
  detail height 100
    text 0 0 200 20 "{Qty}"
  end
  pageFooter height 40
    text 0 0 300 20 "This page {sum(Qty)} in {count()} rows"
  end
end
)"),
                                      {p.get()});
    ASSERT_EQ(d.pageCount(), 2); // 680 points: six rows, then four
    EXPECT_EQ(textsOfPage(d, 0).last(), "This page 21 in 6 rows");
    EXPECT_EQ(textsOfPage(d, 1).last(), "This page 34 in 4 rows");
}

TEST(ReportLayout, ConditionsNoDataAndPageBreaks)
{
    auto empty = pipeFrom(QStringLiteral("P"), QStringLiteral("Name,Flag\n"));
    const QString templ = QStringLiteral(R"(report "Conditions"
  units pt
  parameter Heading "Clients"
  pipe P
  title height 20
    text 0 0 200 20 "{$Heading}"
  end
  noData height 20
    text 0 0 200 20 "No deliveries for this date."
  end
  detail height 20 newPageAfter visible "Name <> 'Hidden'"
    text 0 0 100 20 "{Name}"
    text 100 0 100 20 "special" visible "Flag"
  end
  summary height 20
    text 0 0 200 20 "{count()} shown"
  end
end
)");
    const ReportDocument none = layoutOf(templ, {empty.get()});
    EXPECT_EQ(documentTexts(none),
              (QStringList{"--- page 1 ---", "Clients", "No deliveries for this date.", "0 shown"}));

    auto rows = pipeFrom(QStringLiteral("P"), QStringLiteral("Name,Flag\nAnn,true\nHidden,true\nBob,false\n"));
    LayoutOptions options;
    options.parameters = {{QStringLiteral("Heading"), QStringLiteral("Today")}};
    const ReportDocument d = layoutOf(templ, {rows.get()}, options);
    EXPECT_EQ(documentTexts(d), (QStringList{"--- page 1 ---", "Today", "Ann", "special", "--- page 2 ---", "Bob",
                                            "--- page 3 ---", "3 shown"}));
}

TEST(ReportLayout, WrongNamesAreReportedWithTheirLine)
{
    auto p = pipeFrom(QStringLiteral("P"), QStringLiteral("Name\nAnn\n"));
    auto errorOf = [&](const QString& body) {
        try {
            layoutOf(QStringLiteral("report \"R\"\n  pipe P\n") + body + QStringLiteral("end\n"), {p.get()});
        } catch (const TemplateError& e) {
            return e.message();
        }
        return QStringLiteral("(no error)");
    };
    EXPECT_EQ(errorOf("  detail height 1\n    text 0 0 1 1 \"{Nmae}\"\n  end\n"),
              "Error in the report template test.rtm, line 4: there is no field or parameter named Nmae here "
              "(the fields come from P)");
    EXPECT_TRUE(errorOf("  detail height 1\n    text 0 0 1 1 \"{Q.Name}\"\n  end\n")
                    .contains("line 4: the report needs the data pipe Q, which it was not given (given: P)"));
    EXPECT_TRUE(errorOf("  detail height 1\n    text 0 0 1 1 \"{P.Age}\"\n  end\n")
                    .contains("line 4: the pipe P has no field Age (its fields: Name)"));
    EXPECT_TRUE(errorOf("  detail height 1\n    text 0 0 1 1 \"{$Missing}\"\n  end\n")
                    .contains("line 4: the report was given no parameter named Missing"));
    EXPECT_TRUE(errorOf("  detail height 1\n    text 0 0 1 1 \"{frobnicate(Name)}\"\n  end\n")
                    .contains("line 4: unknown function frobnicate"));
    EXPECT_TRUE(errorOf("  detail height 1\n    text 0 0 1 1 \"{left(Name)}\"\n  end\n")
                    .contains("line 4: left does not take 1 values"));
    EXPECT_TRUE(errorOf("  detail height 1\n    text 0 0 1 1 \"{sum(Name, 'Route')}\"\n  end\n")
                    .contains("line 4: no group named Route encloses this band"));
    EXPECT_TRUE(errorOf("  detail height 1\n    text 0 0 1 1 \"{sum(sum(Name))}\"\n  end\n")
                    .contains("cannot stand inside another sum"));
    EXPECT_TRUE(errorOf("  detail height 1\n    text 0 0 1 1 \"{sum(Name, 'page')}\"\n  end\n")
                    .contains("page sums can only stand in a page header or footer"));
    EXPECT_TRUE(errorOf("  detail height 1 visible \"page > 1\"\n  end\n")
                    .contains("line 3: page and pages can only be printed in a text"));
    EXPECT_TRUE(errorOf("  detail height 1\n    barcode 0 0 1 1 code128 \"{page}\"\n  end\n")
                    .contains("line 4: page and pages can only be printed in a text"));
    EXPECT_TRUE(errorOf("  group G key \"Name\"\n    header height 1\n      image 0 0 1 1 value \"{sum(1)}\"\n"
                        "    end\n  end\n")
                    .contains("line 5: a picture or barcode cannot use page numbers or sums known only later"));
    EXPECT_TRUE(errorOf("  detail height 1\n    barcode 0 0 1 1 ean13 \"{Name}\"\n  end\n")
                    .contains("line 4: The barcode 'Ann' cannot be printed as ean13"));
}

TEST(ReportLayout, ExpressionsAndFormats)
{
    auto p = pipeFrom(QStringLiteral("P"),
                      QStringLiteral("Day,Amount,Count,Mask,First,Mid,Last,Born,Note\n"
                                     "2024-03-06,1234.5,3,5,Ann,,Lee,1950-03-07,\n"));
    const struct
    {
        const char* expression;
        const char* expected;
    } cases[] = {
        {"{Day}", "03/06/2024"},
        {"{Day:dddd, MMMM d, yyyy}", "Wednesday, March 6, 2024"},
        {"{Amount:#,##0.00}", "1,234.50"},
        {"{Amount:$#,##0}", "$1,235"},
        {"{Count:000}", "003"},
        {"{Count / 4:0.0%}", "75.0%"},
        {"{Amount}", "1234.5"},
        {"{Count * 2 + 1}", "7"},
        {"{Count / 0}", ""},
        {"{Day + 7:MM/dd}", "03/13"},
        {"{dayname(Day)}", "Wednesday"},
        {"{join(' ', First, Mid, Last)}", "Ann Lee"},
        {"{Last & ', ' & First}", "Lee, Ann"},
        {"{if(Count > 2, 'many', 'few')}", "many"},
        {"{if(isnull(Note), 'no note', Note)}", "no note"},
        {"{nvl(Note, Mid, 'none')}", "none"},
        {"{hasbit(Mask, 2)} {hasbit(Mask, 1)}", "Yes No"},
        {"{bitand(Mask, 4)}", "4"},
        {"{age(Born)}", "73"},
        {"{upper(left(Last, 2))}{len(First)}", "LE3"},
        {"{Count = 3 and not (Amount < 1000)}", "Yes"},
        {"{Note = null}", "Yes"},
        {"{round(Amount / 7, 2)}", "176.36"},
        {"{today():yyyy-MM-dd}", "2024-03-06"},
        {"{replace(mid(Last, 1, 2), 'e', 'o')}", "Lo"},
        {"{{not an expression}}", "{not an expression}"},
    };
    for (const auto& c : cases) {
        const ReportDocument d = layoutOf(QStringLiteral(R"(report "E"
  units pt
  pipe P
  detail height 20
    text 0 0 500 20 "%1"
  end
end
)")
                                              .arg(QString::fromUtf8(c.expression)),
                                          {p.get()});
        const QStringList texts = textsOfPage(d, 0);
        EXPECT_EQ(texts.value(0), QString::fromUtf8(c.expected)) << c.expression;
    }
}

TEST(ReportLayout, LongTextsWrapOrAreCut)
{
    auto p = pipeFrom(QStringLiteral("P"),
                      QStringLiteral("Text\n\"Blue house behind the church; the driveway is steep, park on the street "
                                     "and use the ramp at the back.\"\n"));
    const ReportDocument d = layoutOf(QStringLiteral(R"(report "Wrap"
  units pt
  font "DejaVu Sans" 10
  pipe P
  detail height 20 stretch
    text 0 0 120 12 "{Text}" stretch
    text 200 0 120 12 "{Text}"
    text 0 12 100 8 "after"
  end
end
)"),
                                      {p.get()});
    const Block& b = d.blocks[0];
    const auto* wrapped = std::get_if<TextItem>(&b.items[0]);
    const auto* cut = std::get_if<TextItem>(&b.items[1]);
    const auto* after = std::get_if<TextItem>(&b.items[2]);
    ASSERT_TRUE(wrapped && cut && after);
    EXPECT_GE(wrapped->lines.size(), 4);
    EXPECT_EQ(wrapped->lines.join(u' '),
              "Blue house behind the church; the driveway is steep, park on the street and use the ramp at the back.");
    ASSERT_EQ(cut->lines.size(), 1);
    EXPECT_TRUE(cut->lines[0].endsWith(QChar(0x2026)));
    EXPECT_TRUE(cut->lines[0].startsWith(QLatin1String("Blue house")));
    // What stood below the growing text moved down with it, and the band grew.
    EXPECT_GT(after->rect.top(), 12 + 30);
    EXPECT_GT(b.height, 20 + 30);
}
