#include "TFormEditRoutes.h"

#include "RouteRules.h"

#include "records/RecordServices.h"

namespace kb {

EditorScreen TFormEditRoutes::editorScreen()
{
    EditorScreen screen;
    screen.formName = formName();
    screen.table = QStringLiteral("Routes");
    screen.caption = QStringLiteral("Add and Edit Routes");
    screen.menuText = QStringLiteral("Routes");
    screen.indexName = QStringLiteral("ROUTE_ID");
    screen.browseFields = {QStringLiteral("ROUTE_ID"), QStringLiteral("ROUTE_DESC"),
                           QStringLiteral("ROUTE_TYPE"), QStringLiteral("DIST_CENTER_CD")};
    screen.incrementalSearch = true;
    return screen;
}

TFormEditRoutes::TFormEditRoutes(RecordServices& services) : TFormEditBase(services, editorScreen())
{
    Database& db = services.db();
    UserInterface& ui = services.ui();
    setRules({[&db, &ui](const RowReader& row, const RowWriter& write, const RowReader& original) {
                  return RouteRules::beforePost(db, ui, row, write, original);
              },
              [&db](const RowReader& row) {
                  return RouteRules::deleteRefusal(db, row(QStringLiteral("ROUTE_ID")).toString());
              },
              [&db] { RouteRules::updateDistributionCenterCodes(db); }});
}

} // namespace kb
