#include "window/ClientFieldLayout.h"

#include "window/ClientCommands.h"
#include "window/ClientPages.h"

namespace kb {

namespace {

using K = ClientFieldKind;

ClientFieldInfo f(const char* field, const char* label, K kind = K::Text, const char* list = "",
                  const char* component = "")
{
    return {QString::fromLatin1(field), QString::fromLatin1(label), kind, QString::fromLatin1(list),
            QString::fromLatin1(component)};
}

ClientFieldInfo beside(ClientFieldInfo info, const QString& command)
{
    info.command = command;
    return info;
}

QStringList buttons(std::initializer_list<QString> ids) { return QStringList(ids); }

namespace cmd = client_command;

} // namespace

const std::vector<ClientFieldGroup>& clientFieldGroups()
{
    static const std::vector<ClientFieldGroup> groups = {
        // The header.
        {-1,
         {},
         QStringLiteral("Client"),
         {f("STATUS", "Status", K::Choice, "Status"), f("CalcSuspendedText", "", K::Display),
          f("LAST_NAME", "Last Name"), f("FIRST_NAME", "First Name"), f("MID_NAME", "Middle Name"),
          f("CLIENT_ID", "Client ID", K::Display), f("DEF_RTE", "Route", K::Choice, "Routes"),
          f("ORG_CLIENT", "Organization Client", K::YesNo, "", "Organization Client"),
          f("URN", "Unique Identifier:", K::Text, "", "Unique Identifier")},
         {}},
        {-1,
         {},
         QStringLiteral("Address"),
         {f("ADDRESS1", "Address"), f("ADDRESS2", "Address Line 2"), f("CITY", "City"), f("STATE", "State"),
          f("ZIP", "ZIP Code"), f("PHONE_DESC", "Phone Type", K::Choice, "PhoneDesc"), f("PHONE", "Phone"),
          f("ODESC", "Other Phone Type"), f("OPHONE", "Other Phone"), beside(f("EMAIL", "E-Mail"), cmd::SendMail),
          f("USER_DEF5", "User-Defined", K::History, "UserDef5", "User-Defined Address Drop-Down")},
         {}},

        // 0 Map
        {client_page::Map, {}, QStringLiteral("Map"), {}, buttons({cmd::GetMap, cmd::MapPointMap})},

        // 1 Health/Nutrition
        {client_page::HealthNutrition,
         QStringLiteral("Health History"),
         QStringLiteral("Health"),
         {f("HIV_STATUS", "HIV Status", K::Choice, "HivStatus", "HIV Status"),
          f("USER_DEF4", "HIV-Affected", K::YesNo, "", "User-Defined Checkbox"),
          f("MENTAL_HLTH_DX", "Mental Health Diagnosis", K::Text, "", "Mental Health DX"),
          f("OTHER_DISEASE", "Other Disease"), f("HEIGHT", "Height", K::Text, "", "Height"),
          f("USUAL_WEIGHT", "Usual Weight", K::Number, "", "Usual Weight"), f("IDEAL_WEIGHT", "Ideal Weight", K::Number),
          f("FRAME_SIZE", "Frame Size", K::Choice, "FrameSize")},
         {}},
        {client_page::HealthNutrition, QStringLiteral("Health History"), QStringLiteral("Assessments"), {},
         buttons({cmd::AddAssessment}), QStringLiteral("QueryAssessments"), {}, false},
        {client_page::HealthNutrition, QStringLiteral("Health History"), QStringLiteral("Diseases"), {}, {},
         QStringLiteral("QueryClientDiseases"), {}, false,
         {QStringLiteral("Sort_Order=Rank"), QStringLiteral("Disease=Disease"), QStringLiteral("Diagonosis_Date=Dx Date"),
          QStringLiteral("Secondary_Conditions=Secondary Conditions"),
          QStringLiteral("Comments=Comments/Mobility Factors")}},
        {client_page::HealthNutrition, QStringLiteral("Counseling Events"), QStringLiteral("Counseling Events"), {},
         buttons({cmd::AddConsultation}), QStringLiteral("QueryEvents"), {}, false,
         {QStringLiteral("Event_Date=Date"), QStringLiteral("Event_Desc=Event"), QStringLiteral("Staff_Name=Counselor"),
          QStringLiteral("Location=Location"), QStringLiteral("Num_Sessions=Sessions"),
          QStringLiteral("Time_Spent=Hours"), QStringLiteral("Comments=Comments")}},

        // 2 Suspensions
        {client_page::Suspensions,
         {},
         QStringLiteral("Suspensions"),
         {},
         buttons({cmd::AddSuspension, cmd::EditSuspension, cmd::DeleteSuspension}),
         QStringLiteral("QuerySuspends"),
         {},
         false,
         {QStringLiteral("Stop_Dt=Stop Date"), QStringLiteral("Resume_Dt=Resume Date"), QStringLiteral("Reason=Reason"),
          QStringLiteral("User=Entered By"), QStringLiteral("Create_Date=Entered On")}},

        // 3 Delivery/Route
        {client_page::DeliveryRoute,
         {},
         QStringLiteral("Delivery"),
         {f("DELIVERY_TYPE", "Delivery Type", K::Choice, "DeliveryType"),
          f("ONGOING_FREQUENCY", "Schedule:", K::Choice, "Frequency"),
          f("DEF_RTE", "Default Route", K::Choice, "Routes"), f("DEF_STOP", "Default Stop", K::Number),
          f("DELIVERY_WINDOW_START", "Preferred Window From", K::Choice, "DeliveryWindow", "Preferred Delivery Window"),
          f("DELIVERY_WINDOW_END", "Preferred Window To", K::Choice, "DeliveryWindow", "Preferred Delivery Window")},
         buttons({cmd::EditRoutesStops, cmd::AlternateAddresses, cmd::ClearRoutes, cmd::ClearStops})},
        {client_page::DeliveryRoute,
         {},
         QStringLiteral("Service Days"),
         {f("MONDAY", "Mon", K::Check), f("TUESDAY", "Tue", K::Check), f("WEDNESDAY", "Wed", K::Check),
          f("THURSDAY", "Thu", K::Check), f("FRIDAY", "Fri", K::Check), f("SATURDAY", "Sat", K::Check),
          f("SUNDAY", "Sun", K::Check)},
         {}},
        {client_page::DeliveryRoute,
         {},
         QStringLiteral("Scheduled Deliveries"),
         {},
         buttons({cmd::ScheduledDeliveries, cmd::AddEditDeliveries, cmd::DeleteSelectedDelivery}),
         QStringLiteral("QueryEpisodicDeliveries"),
         {},
         false,
         {QStringLiteral("Deliv_Date=Date"), QStringLiteral("Service=Service"), QStringLiteral("Route=Route"),
          QStringLiteral("Stop=Stop"), QStringLiteral("Fulfilled=Delivered")}},
        {client_page::DeliveryRoute,
         {},
         QStringLiteral("Directions"),
         {f("DIRECTIONS", "Directions", K::Memo), f("CROSS_STREET", "Cross Street", K::Text, "", "Cross Street")},
         {}},

        // 4 Funding/Billing
        {client_page::FundingBilling, QStringLiteral("Funding"), QStringLiteral("Funding Sources"), {}, {},
         QStringLiteral("QueryFundUses"), {}, false,
         {QStringLiteral("Funding_Source=Funding Source"), QStringLiteral("Service=Service"),
          QStringLiteral("Reimbursement_Method=Method"), QStringLiteral("Reimbursement_Rate=Rate"),
          QStringLiteral("Reimbursement_Period=Period")}},
        {client_page::FundingBilling, QStringLiteral("Funding"), QStringLiteral("Client-Specific Rates"), {}, {},
         QStringLiteral("QueryClientSpecificFundingRates"), {}, false},
        {client_page::FundingBilling, QStringLiteral("Funding"), QStringLiteral("Resulting Item Rates"), {}, {},
         QStringLiteral("QueryServiceFundingRates"), {}, false},
        {client_page::FundingBilling,
         QStringLiteral("Pledges"),
         QStringLiteral("Pledge"),
         {f("PLEDGE_AMOUNT", "Pledged Amount", K::Money), f("PLEDGE_PERIOD", "Per", K::Choice, "PledgePeriod"),
          f("PLEDGE_METHOD", "Pledge Method", K::Choice, "PledgeMethod"),
          f("PLEDGE_UPDATE", "Pledge Updated", K::Display), f("PLEDGE_UPDATED_BY", "Updated By", K::Display)},
         {},
         QStringLiteral("QueryItemPledgeRates"),
         {},
         false},

        // 5 Service/Diet
        {client_page::ServiceDiet,
         {},
         QStringLiteral("Service"),
         {f("SVCS_USED", "Delivery Service", K::Choice, "DeliveryService"),
          f("CNSLG_SVCS", "Other Services Used", K::CheckList, "OtherServices", "Other Services Used")},
         buttons({cmd::ModifyItems, cmd::ItemsWizard})},
        {client_page::ServiceDiet,
         {},
         QStringLiteral("Diet"),
         {f("DIET_RESTR", "Diet Modifications", K::CheckList, "Diet"),
          beside(f("COLD_BAG_ID", "Cold Bag Code", K::Choice, "ColdBag", "Cold Bag Code"), cmd::GetBagCode),
          f("CUISINE_ID", "Cuisine", K::Choice, "Cuisine", "Cuisine"),
          f("PREFERENCES", "Preferences/Dislikes", K::Memo, "", "Preferences/Dislikes")},
         buttons({cmd::EditPreferences, cmd::EditCuisine})},

        // 6 Relationships
        {client_page::Relationships, QStringLiteral("Client-Specific Relations"), QStringLiteral("Relationships"), {},
         {}, QStringLiteral("QueryRelationships"), {}, false,
         {QStringLiteral("Last_Name=Last Name"), QStringLiteral("First_Name=First Name"),
          QStringLiteral("Relationship=Relationship"), QStringLiteral("Phone1=Phone"),
          QStringLiteral("Emergency_Contact=Emergency Contact"), QStringLiteral("Referrer=Referrer"),
          QStringLiteral("HIV_Aware=Aware")}},
        {client_page::Relationships, QStringLiteral("All Individuals"), QStringLiteral("All Individuals"), {}, {},
         QStringLiteral("Individuals"), {}, false,
         {QStringLiteral("Last_Name=Last Name"), QStringLiteral("First_Name=First Name"),
          QStringLiteral("Organization=Organization"), QStringLiteral("Phone1=Phone"), QStringLiteral("City=City")}},

        // 7 Status/Dates
        {client_page::StatusDates,
         {},
         QStringLiteral("Service Dates"),
         {f("INTAKE_DTE", "Intake Date", K::Date), f("START_DTE", "Start Date", K::Date),
          f("STOP_DTE", "Stop Date", K::Date), f("STOP_CODE", "Stop Reason", K::Choice, "StopReasons"),
          f("STOP_REASON", "Stop Details"),
          f("CONTRACTUAL_START_DTE", "Contractual Start", K::Date, "", "Contractual Start"),
          f("CONTRACTUAL_STOP_DTE", "Contractual Stop", K::Date, "", "Contractual Stop"),
          f("RECERT_DTE", "Recertification Date", K::Date, "", "Recertification Date"),
          f("INACTIVE_D", "Inactivation Date", K::Date), f("FIRST_ML_DTE", "First Service Date:", K::Date),
          f("FIRST_CNSL_DTE", "First Counseling Date", K::Date), f("ADD_DTE", "Added", K::Display),
          f("EDIT_DTE", "Last Changed", K::Display)},
         buttons({cmd::ViewStatusHistory})},
        {client_page::StatusDates,
         {},
         QStringLiteral("Missed Deliveries"),
         {f("MISSED_DELIVERIES", "Missed", K::Display), f("EXCUSED_DELIVERIES", "Excused", K::Display)},
         buttons({cmd::RecordMissed, cmd::ExcuseMissed, cmd::DeleteMissed}),
         {},
         QStringLiteral("Missed Deliveries")},

        // 8 Biographic Info
        {client_page::BiographicInfo,
         {},
         QStringLiteral("Personal Stats"),
         {f("DOB", "Date of Birth", K::Date, "", "Date of Birth"), f("#Age", "Age", K::Display, "", "Date of Birth"),
          f("SEX", "Gender", K::Choice, "Sex", "Gender"), f("RACE", "Race", K::Choice, "Race", "Race"),
          f("ETHNICITY", "Hispanic/Latino", K::YesNo, "", "Ethnicity"),
          f("MARITAL_ST", "Marital Status", K::Choice, "MaritalStatus", "Marital Status"),
          f("SOCIAL_SECURITY_NUMBER", "Social Security Number", K::Text, "", "Social Security Number"),
          f("HEIGHT", "Height", K::Text, "", "Height"), f("USUAL_WEIGHT", "Usual Weight", K::Number, "", "Usual Weight"),
          f("RURAL", "Rural", K::YesNo, "", "Rural"), f("HANDICAPPED", "Handicapped/Frail", K::YesNo, "", "Handicapped/Frail")},
         {}},
        {client_page::BiographicInfo,
         {},
         QStringLiteral("Household"),
         {f("#HouseholdName", "Household Name", K::Display, "", "Household Name"),
          f("CHILD_NBR", "Number of Children", K::Number, "", "Number of Children"),
          f("CHILD_RECV", "Children Receiving", K::Number, "", "Number Children Receiving"),
          f("NUMBER_IN_HOUSEHOLD", "Number in Household", K::Number, "", "Number in Household"),
          f("DEPENDENT", "Dependent/Caregiver", K::YesNo, "", "Dependent/Caregiver")},
         buttons({cmd::HouseholdMembers, cmd::Households, cmd::HouseholdWizard})},
        {client_page::BiographicInfo,
         {},
         QStringLiteral("Income and Language"),
         {f("INCOME_CATEGORY", "Income Category", K::Choice, "IncomeCategory", "Income Category"),
          f("INCOME_MONTH", "Income per Month", K::Money, "", "Income per Month"),
          f("INCOME_SOURCES", "Income Sources", K::CheckList, "IncomeSources", "Income Sources"),
          f("LANGUAGE", "Primary Language", K::Choice, "Language", "Primary Language"),
          f("ILLITERATE", "Illiterate", K::YesNo, "", "Illiterate")},
         {}},
        {client_page::BiographicInfo,
         {},
         QStringLiteral("Other Information"),
         {f("USER_DEF1", "User-Defined 1", K::Text, "", "Edit Field 1"),
          f("USER_DEF2", "User-Defined 2", K::History, "UserDef2", "Edit Field 2"),
          f("USER_DEF3", "User-Defined List", K::CheckList, "UserDef3", "Checklist 1"),
          f("HOUSING_ARRANGEMENT", "Housing/Living Arrangement", K::History, "Housing", "Housing/Living Arrangement"),
          f("INSURANCE_CARRIER", "Insurance Plan", K::History, "InsurancePlan", "Plan"),
          f("INSURANCE_ID_NUMBER", "Insurance Account Number", K::Text, "", "Account Number"),
          f("CC_CARDHOLDER", "Cardholder Name", K::Text, "", "Cardholder Name"),
          f("CC_NUMBER", "Card Number", K::Text, "", "Card Number"),
          f("CC_EXPIRATION", "Card Expiration", K::Text, "", "Expiration"),
          f("CC_SECURITY", "Card Security Code", K::Text, "", "Security Code")},
         {}},

        // 9 Case Management
        {client_page::CaseManagement, QStringLiteral("Case Management"), QStringLiteral("Case Management Events"),
         {}, {}, QStringLiteral("QueryCaseManagement"), {}, false,
         {QStringLiteral("Event_Date=Date"), QStringLiteral("Contact_Type=Event Type"),
          QStringLiteral("Contact_Method=Contact Method"), QStringLiteral("Staff_Member=Staff Member"),
          QStringLiteral("Time_Spent=Hours"), QStringLiteral("Comments=Comments")}},
        {client_page::CaseManagement, QStringLiteral("Nutrition Screening / ADL / IADL"),
         QStringLiteral("Screening Evaluations"), {}, {}, QStringLiteral("QueryNSIADLIADL"), {}, false},

        // 10 Client Services
        {client_page::ClientServices,
         {},
         QStringLiteral("Staff Contact"),
         {f("PRIMARY_CONTACT", "Staff Contact", K::Choice, "Staff", "Staff Contact")},
         {}},
        {client_page::ClientServices, {}, QStringLiteral("Applications"), {}, {}, QStringLiteral("QueryServiceApps"),
         {}, false,
         {QStringLiteral("App_Date=Applied"), QStringLiteral("Service=Service"), QStringLiteral("App_Status=Status"),
          QStringLiteral("Assigned=Assigned To"), QStringLiteral("Status_Comments=Comments")}},
        {client_page::ClientServices, {}, QStringLiteral("Documents"), {}, {}, QStringLiteral("QueryDocs"), {}, false,
         {QStringLiteral("Document=Document"), QStringLiteral("Requirement_Level=Required"),
          QStringLiteral("Completed=Completed"), QStringLiteral("Completed_Date=Completed On"),
          QStringLiteral("Doc_Status=Status"), QStringLiteral("Comments=Comments")}},
        {client_page::ClientServices, {}, QStringLiteral("Conditions"), {}, {}, QStringLiteral("QueryConditions"), {},
         false,
         {QStringLiteral("Condition=Condition"), QStringLiteral("Requirement_Level=Required"),
          QStringLiteral("Meets_Conditions=Meets"), QStringLiteral("Date_Met=Met On"),
          QStringLiteral("Condition_Status=Status"), QStringLiteral("Comments=Comments")}},
    };
    return groups;
}

QStringList clientEditedFields()
{
    QStringList fields;
    for (const ClientFieldGroup& group : clientFieldGroups())
        for (const ClientFieldInfo& field : group.fields)
            if (field.kind != ClientFieldKind::Display && !field.field.startsWith(QLatin1Char('#')) &&
                !fields.contains(field.field))
                fields.append(field.field);
    return fields;
}

} // namespace kb
