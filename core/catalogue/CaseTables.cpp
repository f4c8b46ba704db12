// The tables of case work: service applications and what they need, events,
// notes and alerts, the client history, assessments and screenings.

#include "catalogue/Catalogue.h"
#include "catalogue/LiveTables.h"

namespace kb {

namespace catalogue_detail {

// Counseling and case-management contacts (and posted deliveries when the
// agency asks for it).
TableDef eventsTable()
{
    TableDef t(QStringLiteral("Events"));
    t.autoinc("RecordID")
        .integer("PERSON_ID")
        .str("CLIENT_ID", 7)
        .date("EVENT_DATE")
        .integer("EVENT_ID")
        .integer("LOC_CODE")
        .str("CONTACT_TYPE", 1)
        .str("CONTACT_METHOD", 1)
        .integer("COUNSELOR_ID")
        .integer("NUM_SESSIONS")
        .flt("TIME_SPENT")
        .integer("NUM_CONSUMERS")
        .integer("NUM_PROFESSIONALS")
        .str("COMMENTS", 50)
        .date("FLLW_UP_DT")
        .boolean("FLLW_COMPL")
        .integer("FUNDING_SOURCE")
        .str("FUNDING_DESC", 25)
        .str("REFERRED_FROM", 50)
        .str("REFERRED_TO", 50)
        .integer("NOTE_ID")
        .str("STAFF_MEMBER", 20)
        .date("CREATE_DATE")
        .datetime("LAST_UPDATED")
        .primary("RecordID")
        .index("CLIENT_ID", "CLIENT_ID")
        .index("PERSON_ID", "PERSON_ID")
        .index("PERSON_ID_DATE", "PERSON_ID;EVENT_DATE")
        .index("EVENT_DATE", "EVENT_DATE")
        .index("EVENT_ID", "EVENT_ID");
    return t;
}

// The log of what happened to a client, or to the system as a whole when the
// person is empty. Append-only.
TableDef historyTable()
{
    TableDef t(QStringLiteral("History"));
    t.autoinc("RecordID")
        .integer("PERSON_ID")
        .str("CLIENT_ID", 7)
        .datetime("TRAN_DATE")
        .date("EVENT_DATE")
        .str("EVENT", 50)
        .str("USER", 20)
        .primary("RecordID")
        .index("CLIENT_ID", "CLIENT_ID")
        .index("PERSON_ID", "PERSON_ID")
        .index("TRAN_DATE", "TRAN_DATE");
    return t;
}

} // namespace catalogue_detail

namespace {

// A client's applications for a service.
TableDef serviceAppsTable()
{
    TableDef t(QStringLiteral("ServiceApps"));
    t.autoinc("App_ID")
        .date("App_Date")
        .integer("Person_ID")
        .integer("Service_ID")
        .integer("Assigned_To")
        .str("App_Status", 10)
        .memo("Status_Comments")
        .str("User_Def1", 100)
        .integer("User_Def2")
        .str("User_Def2_Desc", 50)
        .integer("User_Def3")
        .str("Physical_Location", 25)
        .str("Updated_By", 25)
        .date("Last_Updated")
        .date("Close_Date")
        .str("Close_Description", 100)
        .primary("App_ID")
        .index("PERSON_ID", "Person_ID");
    return t;
}

// The conditions that one application has to meet.
TableDef conditionUsesTable()
{
    TableDef t(QStringLiteral("ConditionUses"));
    t.autoinc("ConditionUse_ID")
        .integer("App_ID")
        .integer("Person_ID")
        .integer("Service_ID")
        .integer("Condition_ID")
        .str("Requirement_Level", 1)
        .integer("Sort_Order")
        .str("Meets_Conditions", 1)
        .date("Date_Met")
        .str("Condition_Status", 15)
        .str("Comments", 100)
        .date("Create_Date")
        .datetime("Last_Updated")
        .primary("ConditionUse_ID")
        .index("APP_ID", "App_ID")
        .index("PERSON_ID", "Person_ID");
    return t;
}

// The documents that one application needs.
TableDef docUsesTable()
{
    TableDef t(QStringLiteral("DocUses"));
    t.autoinc("DocUse_ID")
        .integer("App_ID")
        .integer("Person_ID")
        .integer("Service_ID")
        .integer("Doc_ID")
        .date("App_Date")
        .str("Requirement_Level", 1)
        .integer("Sort_Order")
        .str("Completed", 1)
        .date("Completed_Date")
        .str("Doc_Status", 15)
        .str("Comments", 100)
        .date("Create_Date")
        .datetime("Last_Updated")
        .primary("DocUse_ID")
        .index("APP_ID", "App_ID")
        .index("PERSON_ID", "Person_ID");
    return t;
}

// Notes about a person; a note with an alert time is an alert.
TableDef notesTable()
{
    TableDef t(QStringLiteral("Notes"));
    t.autoinc("Record_ID")
        .integer("Person_ID")
        .date("Note_Date")
        .datetime("Alert_DateTime")
        .str("Subject", 50)
        .str("Priority", 1)
        .str("Category", 15)
        .str("Department", 25)
        .str("Status", 1)
        .memo("Note")
        .integer("Creator_ID")
        .str("User", 25)
        .date("Create_Date")
        .datetime("Last_Update")
        .primary("Record_ID")
        .index("PERSON_ID", "Person_ID")
        .index("ALERT_DATETIME", "Alert_DateTime");
    return t;
}

// The staff members an alert is addressed to, and in what capacity.
TableDef alertRecipientsTable()
{
    TableDef t(QStringLiteral("Alert_Recipients"));
    t.integer("Alert_ID")
        .integer("Recipient_ID")
        .str("Responsibility_Code", 1)
        .index("ALERT_ID", "Alert_ID")
        .index("RECIPIENT_ID", "Recipient_ID");
    return t;
}

// Dated nutrition and health assessments of a client.
TableDef asssmntsTable()
{
    TableDef t(QStringLiteral("Asssmnts"));

    // Header.
    t.autoinc("ASSESSMENT_ID")
        .integer("PERSON_ID")
        .str("CLIENT_ID", 6)
        .date("ASSESSMENT_DATE")
        .str("STAFF_MEMB", 25)
        .integer("LOCATION")
        .flt("TIME_SPENT")
        .str("CREATED_BY", 25)
        .date("CREATE_DATE");

    // Footer, and the follow-up alert.
    t.date("FOLLOW_UP_DATE").boolean("FOLLOW_UP_COMPLETED").integer("NOTE_ID").datetime("LAST_UPDATED");

    // Subjective/objective.
    t.str("NUTRITION_DIAGNOSIS", 75)
        .str("OVERALL_HEALTH", 5)
        .str("NUMBER_MEALS", 5)
        .str("ENERGY_LEVEL", 5)
        .str("EMOTIONAL_HEALTH", 5)
        .str("DIET_KNOWLEDGE", 5)
        .str("VITAMINS", 50)
        .str("FOODMONEY", 1)
        .str("BREAKFAST", 100)
        .str("LUNCH", 100)
        .str("DINNER", 100)
        .str("SNACKS", 100)
        .str("DXRX", 50)
        .str("PMH", 50)
        .str("MEDICATION", 250)
        .str("E_PROTN_ND", 50)
        .str("E_ENRGY_ND", 50)
        .str("AVG_INTAKE", 2)
        .str("NUT_STAT", 2)
        .memo("PHYSICAL_CONDITION");

    // Patient history.
    t.date("DATE_LAST_MD_VISIT")
        .date("DATE_LAST_RD_VISIT")
        .integer("NUMBER_HOSPITALIZATIONS")
        .integer("NUMBER_DAYS_HOSPITALIZED")
        .integer("NUMBER_ER_VISITS")
        .date("DATE_LAST_HOSPITALIZED")
        .str("HOSPITAL_NAME", 50)
        .str("DIABETIC_MEDICATION", 1)
        .str("HYPERTENSION_MEDICATION", 1)
        .str("STRESS", 5)
        .str("APPETITE", 1)
        .str("DIET", 50)
        .smallint("AGE")
        .smallint("WEIGHT")
        .smallint("USUAL_WT")
        .flt("PCT_USL_WT")
        .smallint("IDEAL_WT")
        .integer("WEIGHT_LOSS")
        .boolean("WEIGHT_LOSS_BOOL")
        .str("MENTL_STAT", 50)
        .str("BREAST_SIZE", 25)
        .str("HIPS", 25)
        .str("WAIST", 25)
        .str("MID_ARM_CIRCUMFERENCE", 25)
        .str("MID_THIGH_CIRCUMFERENCE", 25)
        .boolean("NAUSEA_BOOL")
        .boolean("VOMITING_BOOL")
        .boolean("CHEWING_BOOL")
        .boolean("SWALLOWING_BOOL")
        .boolean("EXERCISE_BOOL")
        .boolean("DIARRHEA_BOOL")
        .boolean("CONSTIPATION_BOOL")
        .boolean("DYSGEUSIA_BOOL")
        .boolean("ANABOLIC_AGENT_BOOL")
        .boolean("GROWTH_HORMONE_BOOL")
        .boolean("TASTE_CHANGES_BOOL")
        .str("TASTE_CHANGES_DESC", 25)
        .boolean("DRY_MOUTH_BOOL")
        .str("DRY_MOUTH_DESC", 25)
        .boolean("FD_ALLERGY_BOOL")
        .str("FD_ALLERGY_DESC", 50)
        .boolean("INTOLER_BOOL")
        .str("INTOLER_DESC", 50)
        .boolean("ORAL_PROB_BOOL")
        .str("ORAL_PROB_DESC", 50)
        .boolean("REC_MVI_BOOL")
        .str("MVI_DESC", 50)
        .boolean("REC_STIM_BOOL")
        .str("STIM_DESC", 50)
        .boolean("REC_LIQSUP_BOOL")
        .str("LIQSUP_DESC", 50)
        .boolean("REC_OTHER_BOOL")
        .str("OTHER_CMNT", 50)
        .boolean("OPPORT_INFECTION_BOOL")
        .str("OPPORT_INFECTION_DESC", 50)
        .boolean("MENTAL_ILLNESS_BOOL")
        .str("MENTAL_ILLNESS_DESC", 50)
        .str("GROWTH_HORMONE_DESC", 75)
        .str("ANABOLIC_AGENT_DESC", 75);

    // Test results.
    for (const char* name :
         {"ALBUMIN", "SYSTOLIC_PRESSURE", "DIASTOLIC_PRESSURE", "HEART_RATE", "HDL_CHOLESTEROL",
          "LDL_CHOLESTEROL", "CHOLESTEROL", "BLOOD_GLUCOSE", "TRIGLYCERIDES", "TESTOSTERONE",
          "TOTAL_TESTOSTERONE", "BCM", "GOAL_BCM", "ECT", "FAT", "PHASE_ANGLE"})
        t.integer(QString::fromLatin1(name));
    for (const char* name : {"LDL_HDL_RATIO", "CRP", "HGBA1C", "HEMAGLOBIN", "FREE_TESTOSTERONE",
                             "PRO_LACTIN_TESTOSTERONE", "BMI"})
        t.flt(QString::fromLatin1(name));
    // The viral load is a count that can pass the 32-bit range; a double holds
    // it exactly.
    t.smallint("CD4").flt("VIRAL_LOAD").str("BLOOD_GLUCOSE_COMMENT", 25).str("VIRAL_LOAD_COMMENT", 10);

    // Summary and recommendation.
    t.memo("SUMMARY")
        .str("PLAN", 250)
        .boolean("REFERRAL_BOOL")
        .str("REFERRAL_DESC", 50)
        .boolean("NEEDS_MED_INTERVENTION_BOOL");

    // Outcomes 01 to 15, each a code, a mark and a comment.
    for (int n = 1; n <= 15; ++n) {
        const QString base = QStringLiteral("OUTCOMES%1").arg(n, 2, 10, QLatin1Char('0'));
        t.str(base, 5).boolean(base + QStringLiteral("_BOOL")).str(base + QStringLiteral("_DESC"), 25);
    }

    t.primary("ASSESSMENT_ID").index("PERSON_ID", "PERSON_ID");
    return t;
}

// Nutrition screening (NSI), daily living (ADL) and instrumental activities
// (IADL) of a client on a date; the scores are written by the agency's own
// statement.
TableDef nsiAdlIadlTable()
{
    TableDef t(QStringLiteral("NSI_ADL_IADL"));

    // Record.
    t.integer("Record_ID")
        .str("User_ID", 12)
        .str("Case_Manager", 25)
        .date("Create_Date")
        .datetime("Last_Updated")
        .integer("Person_ID");

    // Header.
    t.date("HEADAssessment_Date").str("HEADAssessment_Type", 1);

    // Demographics.
    t.str("DEMOAge_Group", 5)
        .str("DEMORace", 5)
        .str("DEMOSpeak_English", 5)
        .str("DEMOAnnual_Income", 5)
        .str("DEMOLiving_Situation", 5)
        .str("DEMOLIving_Situation_Desc", 100);

    // Nutrition screening answers.
    for (const char* name : {"NSI_Eating_Change_due_Illness",
                             "NSI_Fewer_Than_2_Meals",
                             "NSI_Fewer_Than_2_Veg_Srvgs",
                             "NSI_Fewer_Than_2_Dairy_Srvgs",
                             "NSI_3_or_More_Drinks",
                             "NSI_Tooth_or_Mouth_Problems",
                             "NSI_Biting_Problem",
                             "NSI_Chewing_Problem",
                             "NSI_Swallowing_Problem",
                             "NSI_Enough_Money",
                             "NSI_Eats_Alone",
                             "NSI_3_or_More_Drugs",
                             "NSI_Gained_or_Lost_Weight",
                             "NSI_Gained_Weight",
                             "NSI_Lost_Weight",
                             "NSI_Unable_to_Cook_Shop_Feed",
                             "NSI_Unable_to_Cook",
                             "NSI_Unable_to_Shop",
                             "NSI_Unable_to_Feed_Self",
                             "NSI_Refuse_to_Answer"})
        t.str(QString::fromLatin1(name), 5);

    // Activities of daily living.
    for (const char* name : {"ADL_Eating_", "ADL_Bathing_", "ADL_Grooming_", "ADL_Dressing_",
                             "ADL_Transferring_", "ADL_Toileting_", "ADL_Walking_", "ADL_Med_Device_",
                             "ADL_Bed_Mobility_", "ADL_Behavior_Difficulties", "ADL_Able_to_Leave_Home",
                             "ADL_Need_Assistance_In_Home", "ADL_Uses_Ambulatory_Device"})
        t.str(QString::fromLatin1(name), 5);
    t.str("ADL_Ambulatory_Device_Desc", 100);
    for (const char* name : {"ADL_Vision", "ADL_Hearing", "ADL_Teeth", "ADL_General_Health"})
        t.str(QString::fromLatin1(name), 5);

    // Instrumental activities of daily living.
    for (const char* name :
         {"IADLMeal_Preparation", "IADLHousehold_Maintenance", "IADLHousekeeping", "IADLManaging_Money",
          "IADLMed_Equip_Management", "IADLShopping", "IADLManaging_Medications", "IADLUsing_Telephone",
          "IADLTransportation", "IADLLaundry", "IADLChild_Care", "IADLCare_of_Support_Animals",
          "IADLVisually_Impaired_Mobility", "IADLHow_Many_Relatives_Nearby", "IADLHow_Often_See_Relatives",
          "IADLReceiving_Social_Services"})
        t.str(QString::fromLatin1(name), 5);
    t.str("IADLReceiving_Soc_Svcs_Desc", 100).str("IADLCare_Available", 5);

    // Scores.
    for (const char* name :
         {"FOOTDemographics_Score", "FOOTNSI_Score", "FOOTADL_Score", "FOOTIADL_Score", "FOOTMinority_Score",
          "FOOTImpoverished_Score", "FOOTFrail_Score", "FOOTVulnerable_Score", "FOOTTotal_Score"})
        t.flt(QString::fromLatin1(name));

    t.primary("Record_ID").index("PERSON_ID", "Person_ID");
    return t;
}

} // namespace

void declareCaseTables(Catalogue& catalogue)
{
    catalogue.add(serviceAppsTable());
    catalogue.add(conditionUsesTable());
    catalogue.add(docUsesTable());
    catalogue.add(catalogue_detail::eventsTable());
    catalogue.add(notesTable());
    catalogue.add(alertRecipientsTable());
    catalogue.add(catalogue_detail::historyTable());
    catalogue.add(asssmntsTable());
    catalogue.add(nsiAdlIadlTable());
}

} // namespace kb
