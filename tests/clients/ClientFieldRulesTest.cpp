// The rules of the client's fields while they are edited: entry masks,
// card numbers, and the fields that enable, limit or fill others.

#include "ClientRulesFixture.h"

#include "MessageError.h"
#include "fields/CardNumber.h"
#include "fields/ClientFieldRules.h"
#include "fields/EditMask.h"
#include "rules/ClientStatus.h"

using namespace kb;
using namespace kb::test;

namespace {

using Fit = EditMask::Fit;

TEST(EditMask, PostalPhoneAndSocialSecurityPicturesTellCompleteIncompleteAndInvalid)
{
    const EditMask zip(QStringLiteral("#####[-####]"));
    EXPECT_EQ(zip.fit(QStringLiteral("06033")), Fit::Complete);
    EXPECT_EQ(zip.fit(QStringLiteral("06033-1234")), Fit::Complete);
    EXPECT_EQ(zip.fit(QStringLiteral("0603")), Fit::Incomplete);
    EXPECT_EQ(zip.fit(QStringLiteral("06033-12")), Fit::Incomplete);
    EXPECT_EQ(zip.fit(QStringLiteral("0603A")), Fit::Invalid);
    EXPECT_EQ(zip.fit(QStringLiteral("06033-12345")), Fit::Invalid);
    EXPECT_EQ(zip.fit(QString()), Fit::Complete);

    const EditMask phone(QStringLiteral("###-###-####[ x#][#][#][#][#]"));
    EXPECT_EQ(phone.fit(QStringLiteral("860-555-0100")), Fit::Complete);
    EXPECT_EQ(phone.fit(QStringLiteral("860-555-0100 x12")), Fit::Complete);
    EXPECT_EQ(phone.fit(QStringLiteral("860-555-0100 x")), Fit::Incomplete);
    EXPECT_EQ(phone.fit(QStringLiteral("8605550100")), Fit::Invalid);

    // Letters of a set are taken in either case and stored as the picture writes them.
    const EditMask canada(
        QStringLiteral("{A,B,C,E,G,H,J,K,L,M,N,P,R,S,T,V,X,Y}#{A,B,C,E,G,H,J,K,L,M,N,P,R,S,T,V,W,X,Y,Z} "
                       "#{A,B,C,E,G,H,J,K,L,M,N,P,R,S,T,V,W,X,Y,Z}#"));
    EXPECT_EQ(canada.fit(QStringLiteral("K1A 0B1")), Fit::Complete);
    EXPECT_EQ(canada.normalized(QStringLiteral("k1a 0b1")), "K1A 0B1");
    EXPECT_EQ(canada.fit(QStringLiteral("D1A 0B1")), Fit::Invalid) << "D starts no Canadian postal code";

    const EditMask uk(QStringLiteral("&[&][&][&][#][#][&][ #&&]"));
    EXPECT_EQ(uk.fit(QStringLiteral("SW1A 1AA")), Fit::Complete);
    EXPECT_EQ(uk.normalized(QStringLiteral("sw1a 1aa")), "SW1A 1AA");
    const EditMask ukPhone(QStringLiteral("{##### ######,#### ### ####,### #### ####}[x#][#][#][#][#]"));
    EXPECT_EQ(ukPhone.fit(QStringLiteral("0161 496 0000")), Fit::Complete);
    EXPECT_EQ(ukPhone.fit(QStringLiteral("020 7946 0000x12")), Fit::Complete);
    EXPECT_EQ(ukPhone.fit(QStringLiteral("0161 4960 000")), Fit::Invalid);

    // Repetition, escapes, and pictures that cannot be read.
    EXPECT_EQ(EditMask(QStringLiteral("*3#;#")).fit(QStringLiteral("123#")), Fit::Complete);
    EXPECT_EQ(EditMask(QStringLiteral("*#")).fit(QStringLiteral("1234567890")), Fit::Complete);
    EXPECT_EQ(EditMask(QStringLiteral("*[#]")).fit(QStringLiteral("12a")), Fit::Invalid);
    for (const char* bad : {"[##", "{#,#", "#]", ";", "*65#"})
        EXPECT_THROW(EditMask(QString::fromLatin1(bad)), MessageError) << bad;
    EXPECT_THROW(EditMask(QString(40, u'[') + QString(40, u']')), MessageError);
    EXPECT_EQ(EditMask(QStringLiteral("*#")).fit(QString(300, u'1')), Fit::Invalid);
}

TEST(CardNumber, KnownCardsByPrefixLengthAndCheckDigit)
{
    using R = CardNumberCheck::Result;
    auto check = [](const char* number) { return CardNumberCheck::check(QString::fromLatin1(number)); };
    EXPECT_EQ(check("4111 1111 1111 1111").result, R::Valid);
    EXPECT_EQ(check("4111 1111 1111 1111").card, "Visa");
    EXPECT_EQ(check("4111111111111112").result, R::BadCheckDigit);
    EXPECT_EQ(check("5555555555554444").card, "MasterCard");
    EXPECT_EQ(check("378282246310005").card, "Amex");
    EXPECT_EQ(check("30569309025904").card, "Diners Club");
    EXPECT_EQ(check("3530111333300000").card, "JCB");
    // The first four kinds carry no check digit.
    EXPECT_EQ(check("6011111111111112").result, R::Valid);
    EXPECT_EQ(check("6011111111111112").card, "Discover");
    EXPECT_EQ(check("201400000000001").card, "enRoute");
    EXPECT_EQ(check("4903000000000001").card, "Switch");
    EXPECT_EQ(check("6767000000000001").card, "Solo");
    // A Switch prefix with a Visa length is a Visa number.
    EXPECT_EQ(check("4903000000000").card, "Visa");
    EXPECT_EQ(check("9111111111111111").result, R::Unknown);
    EXPECT_EQ(check("411111111111").result, R::Incomplete);
    EXPECT_EQ(check("4111-1111-1111-1111").result, R::Incomplete);
    EXPECT_EQ(check("").result, R::Empty);
    EXPECT_FALSE(check("").marked());
    EXPECT_TRUE(check("9111111111111111").marked());
}

TEST(ClientStatusChoices, DependOnTheStatusOnFileAndTheClientNumber)
{
    auto codes = [](const QString& status, bool client) {
        QStringList list;
        for (const auto& choice : client_status::choices(status, client))
            list.append(choice.code.isEmpty() ? QStringLiteral("-") : choice.code);
        return list;
    };
    for (const char* status : {"A", "I", "S"})
        EXPECT_EQ(codes(QString::fromLatin1(status), true), (QStringList{"A", "I", "S", "W"}));
    EXPECT_EQ(codes(QStringLiteral("W"), true), (QStringList{"A", "I", "S", "W"}));
    EXPECT_EQ(codes(QStringLiteral("W"), false), (QStringList{"W", "-"}));
    EXPECT_EQ(codes(QStringLiteral("N"), true), (QStringList{"A", "W", "N"}));
    EXPECT_EQ(codes(QString(), false), QStringList{"W"});
    EXPECT_EQ(client_status::choices(QStringLiteral("W"), false).last().word, "No Status");
    EXPECT_EQ(client_status::word(QStringLiteral("W")), "Wait List");
}

using ClientFields = ClientRulesFixture;

TEST_P(ClientFields, FieldsEnableLimitAndFillEachOther)
{
    setConfig(QStringLiteral("DSAT"), false);
    setConfig(QStringLiteral("MAXDIETMOD"), 2);
    insertRow(db(), QStringLiteral("Zips"),
              {{QStringLiteral("Zip"), QStringLiteral("06033")},
               {QStringLiteral("City"), QStringLiteral("Glastonbury")},
               {QStringLiteral("St"), QStringLiteral("CT")},
               {QStringLiteral("County"), QStringLiteral("Hartford")}});
    insertRow(db(), QStringLiteral("Cold_Bag_Usage"),
              {{QStringLiteral("Diet_Restr"), 5}, {QStringLiteral("Bag_ID"), 2}});
    addClient(1, {{QStringLiteral("Contractual_Start_Dte"), QDate(2024, 4, 1)},
                  {QStringLiteral("Contractual_Stop_Dte"), QDate(2024, 9, 30)},
                  {QStringLiteral("Start_Dte"), QVariant()},
                  {QStringLiteral("Diet_Restr"), 5},
                  {QStringLiteral("Social_Security_Number"), QStringLiteral("123-45-6789")}});
    addClient(2, {{QStringLiteral("Status"), QStringLiteral("W")}, {QStringLiteral("Diet_Restr"), 3}});
    ClientFieldRules fields(db(), ui());

    clients().open();
    ASSERT_TRUE(clients().locate(QStringLiteral("PERSON_ID"), 1));
    EXPECT_TRUE(fields.isDayEnabled(clients(), 0));
    EXPECT_FALSE(fields.isDayEnabled(clients(), 5)) << "the agency does not deliver on Saturdays";
    EXPECT_TRUE(fields.isDietListEnabled());
    EXPECT_TRUE(fields.acceptDietCheck(2));
    EXPECT_FALSE(fields.acceptDietCheck(3));
    EXPECT_EQ(fields.latestServiceDate(clients()), QDate(2024, 9, 30));
    EXPECT_FALSE(fields.isStopReasonEnabled(clients()));
    EXPECT_EQ(fields.socialSecurityText(clients()), "xxx-xx-6789");
    EXPECT_EQ(ClientFieldRules::maskedSocialSecurity(QStringLiteral("123-456-789"), QStringLiteral("CAN")),
              "xxx-xxx-789");
    EXPECT_EQ(ClientFieldRules::maskedSocialSecurity(QStringLiteral("AB123456C"), QStringLiteral("UK")),
              "xxxxx456C");

    clients().edit();
    EXPECT_EQ(fields.socialSecurityText(clients()), "123-45-6789");
    fields.contractualStartLeft(clients());
    fields.contractualStopLeft(clients());
    EXPECT_EQ(clients().fieldValue(u"Start_Dte").toDate(), QDate(2024, 4, 1));
    EXPECT_EQ(clients().fieldValue(u"Stop_Dte").toDate(), QDate(2024, 9, 30));
    EXPECT_TRUE(fields.isStopReasonEnabled(clients()));
    clients().setFieldValue(u"ZIP", QStringLiteral("06033-1234"));
    EXPECT_TRUE(fields.zipLeft(clients()));
    EXPECT_EQ(clients().fieldValue(u"City").toString(), "Glastonbury");
    EXPECT_EQ(clients().fieldValue(u"State").toString(), "CT");
    EXPECT_EQ(clients().fieldValue(u"County").toString(), "Hartford");
    EXPECT_TRUE(fields.GetBagCode(clients()));
    EXPECT_EQ(clients().fieldValue(u"Cold_Bag_ID").toInt(), 2);
    EXPECT_TRUE(fields.checkEntry(QStringLiteral("ZIP"), QStringLiteral("06033-1234")));
    EXPECT_FALSE(fields.checkEntry(QStringLiteral("PHONE"), QStringLiteral("555-01")));
    EXPECT_TRUE(fields.checkCardNumber(QStringLiteral("4111 1111 1111 1111")).result ==
                CardNumberCheck::Result::Valid);
    EXPECT_TRUE(fields.checkCardNumber(QStringLiteral("4111 1111")).marked());
    clients().post();

    ASSERT_TRUE(clients().locate(QStringLiteral("PERSON_ID"), 2));
    EXPECT_FALSE(fields.isDayEnabled(clients(), 0)) << "only an active client has delivery days";
    EXPECT_FALSE(fields.latestServiceDate(clients()).isValid());
    EXPECT_FALSE(fields.GetBagCode(clients()));
    EXPECT_EQ(ui().texts(ScriptedUserInterface::Kind::Warning),
              (QStringList{"No more than 2 modifications may be selected.", "Invalid input for field PHONE",
                           "The Credit Card input does not\r\ncontain the correct number of digits.",
                           "There is no Bag Code on file for this combination of diet \r\nrestrictions!"}));

    setConfig(QStringLiteral("ALLOW_BYPASSING_CONTRACT_DATES"), true);
    setConfig(QStringLiteral("MAXDIETMOD"), 0);
    ClientFieldRules bypassing(db(), ui());
    ASSERT_TRUE(clients().locate(QStringLiteral("PERSON_ID"), 1));
    EXPECT_FALSE(bypassing.latestServiceDate(clients()).isValid());
    EXPECT_FALSE(bypassing.isDietListEnabled());
}

INSTANTIATE_TEST_SUITE_P(Stores, ClientFields, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         storeParamName);

} // namespace
