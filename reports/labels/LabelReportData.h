#pragma once

#include "delivery/data/ReportData.h"
#include "labels/LabelSelection.h"

namespace kb::reports {

struct ReportBuild;

// The data of the three label reports ("Daily Labels", "Labels with
// Preferences", "Delivery Labels with Addresses"): a label for each saved
// delivery of the dates that the selection keeps, in its order, with the
// client, the items, the special meals' diets, the cuisine, the preferences
// and, for the address labels, the alternate address of the day.
//
// When some delivery of the dates needs more than one label, every delivery
// is copied into MemTableLabels once for each of its labels, so that the
// copies of one delivery print together; otherwise each delivery gets one
// label whatever its count.
ReportData buildLabels(ReportBuild& build, int report, const LabelSelection& selection);

// The same after asking "Label Selection and Sorting"; Cancel there prints
// every delivery's label.
ReportData buildLabels(ReportBuild& build, int report);

} // namespace kb::reports
