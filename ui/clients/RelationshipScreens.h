#pragma once

namespace kb::ui {

class MainWindow;

// The client window's commands for individuals, relationships and list
// memberships (the Relationships page, "List Membership", "Copy
// Individual") and the "Recent Stops and Suspensions" report.
void registerRelationshipScreens(MainWindow& window);

} // namespace kb::ui
