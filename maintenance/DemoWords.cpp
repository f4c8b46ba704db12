#include "DemoWords.h"

namespace kb::demo {

const QStringList& femaleFirstNames()
{
    static const QStringList names = {
        QStringLiteral("Mary"),      QStringLiteral("Dorothy"),   QStringLiteral("Helen"),
        QStringLiteral("Margaret"),  QStringLiteral("Ruth"),      QStringLiteral("Betty"),
        QStringLiteral("Virginia"),  QStringLiteral("Doris"),     QStringLiteral("Mildred"),
        QStringLiteral("Frances"),   QStringLiteral("Elizabeth"), QStringLiteral("Evelyn"),
        QStringLiteral("Anna"),      QStringLiteral("Marie"),     QStringLiteral("Alice"),
        QStringLiteral("Jean"),      QStringLiteral("Shirley"),   QStringLiteral("Barbara"),
        QStringLiteral("Irene"),     QStringLiteral("Marjorie"),  QStringLiteral("Florence"),
        QStringLiteral("Lois"),      QStringLiteral("Martha"),    QStringLiteral("Rose"),
        QStringLiteral("Lillian"),   QStringLiteral("Louise"),    QStringLiteral("Catherine"),
        QStringLiteral("Ruby"),      QStringLiteral("Eleanor"),   QStringLiteral("Patricia"),
        QStringLiteral("Gladys"),    QStringLiteral("Josephine"), QStringLiteral("Thelma"),
        QStringLiteral("Edna"),      QStringLiteral("Joan"),      QStringLiteral("Lucille"),
        QStringLiteral("Gloria"),    QStringLiteral("Hazel"),     QStringLiteral("Phyllis"),
        QStringLiteral("Norma"),     QStringLiteral("Carol"),     QStringLiteral("Wilma"),
        QStringLiteral("Pauline"),   QStringLiteral("Joyce"),     QStringLiteral("Bernice"),
        QStringLiteral("Geraldine"), QStringLiteral("Judith"),    QStringLiteral("Nancy"),
        QStringLiteral("Carmen"),    QStringLiteral("Rosa"),      QStringLiteral("Maria"),
        QStringLiteral("Mae"),       QStringLiteral("Yolanda"),   QStringLiteral("Esther"),
        QStringLiteral("Vivian"),    QStringLiteral("Sylvia"),    QStringLiteral("Lorraine"),
        QStringLiteral("Ann"),       QStringLiteral("Grace"),     QStringLiteral("Hattie"),
    };
    return names;
}

const QStringList& maleFirstNames()
{
    static const QStringList names = {
        QStringLiteral("Robert"),  QStringLiteral("John"),    QStringLiteral("James"),
        QStringLiteral("William"), QStringLiteral("Charles"), QStringLiteral("George"),
        QStringLiteral("Joseph"),  QStringLiteral("Richard"), QStringLiteral("Edward"),
        QStringLiteral("Donald"),  QStringLiteral("Thomas"),  QStringLiteral("Frank"),
        QStringLiteral("Harold"),  QStringLiteral("Paul"),    QStringLiteral("Raymond"),
        QStringLiteral("Walter"),  QStringLiteral("Jack"),    QStringLiteral("Henry"),
        QStringLiteral("Kenneth"), QStringLiteral("Arthur"),  QStringLiteral("Albert"),
        QStringLiteral("David"),   QStringLiteral("Harry"),   QStringLiteral("Eugene"),
        QStringLiteral("Ralph"),   QStringLiteral("Howard"),  QStringLiteral("Carl"),
        QStringLiteral("Willie"),  QStringLiteral("Louis"),   QStringLiteral("Clarence"),
        QStringLiteral("Earl"),    QStringLiteral("Roy"),     QStringLiteral("Fred"),
        QStringLiteral("Joe"),     QStringLiteral("Francis"), QStringLiteral("Lawrence"),
        QStringLiteral("Herbert"), QStringLiteral("Leonard"), QStringLiteral("Ernest"),
        QStringLiteral("Alfred"),  QStringLiteral("Anthony"), QStringLiteral("Stanley"),
        QStringLiteral("Norman"),  QStringLiteral("Gerald"),  QStringLiteral("Melvin"),
        QStringLiteral("Leroy"),   QStringLiteral("Manuel"),  QStringLiteral("Jose"),
        QStringLiteral("Samuel"),  QStringLiteral("Vernon"),  QStringLiteral("Wayne"),
        QStringLiteral("Chester"),
    };
    return names;
}

const QStringList& lastNames()
{
    static const QStringList names = {
        QStringLiteral("Smith"),     QStringLiteral("Johnson"),    QStringLiteral("Williams"),
        QStringLiteral("Brown"),     QStringLiteral("Jones"),      QStringLiteral("Miller"),
        QStringLiteral("Davis"),     QStringLiteral("Garcia"),     QStringLiteral("Rodriguez"),
        QStringLiteral("Wilson"),    QStringLiteral("Martinez"),   QStringLiteral("Anderson"),
        QStringLiteral("Taylor"),    QStringLiteral("Thomas"),     QStringLiteral("Hernandez"),
        QStringLiteral("Moore"),     QStringLiteral("Martin"),     QStringLiteral("Jackson"),
        QStringLiteral("Thompson"),  QStringLiteral("White"),      QStringLiteral("Lopez"),
        QStringLiteral("Lee"),       QStringLiteral("Gonzalez"),   QStringLiteral("Harris"),
        QStringLiteral("Clark"),     QStringLiteral("Lewis"),      QStringLiteral("Robinson"),
        QStringLiteral("Walker"),    QStringLiteral("Perez"),      QStringLiteral("Hall"),
        QStringLiteral("Young"),     QStringLiteral("Allen"),      QStringLiteral("Sanchez"),
        QStringLiteral("Wright"),    QStringLiteral("King"),       QStringLiteral("Scott"),
        QStringLiteral("Green"),     QStringLiteral("Baker"),      QStringLiteral("Adams"),
        QStringLiteral("Nelson"),    QStringLiteral("Hill"),       QStringLiteral("Ramirez"),
        QStringLiteral("Campbell"),  QStringLiteral("Mitchell"),   QStringLiteral("Roberts"),
        QStringLiteral("Carter"),    QStringLiteral("Phillips"),   QStringLiteral("Evans"),
        QStringLiteral("Turner"),    QStringLiteral("Torres"),     QStringLiteral("Parker"),
        QStringLiteral("Collins"),   QStringLiteral("Edwards"),    QStringLiteral("Stewart"),
        QStringLiteral("Flores"),    QStringLiteral("Morris"),     QStringLiteral("Nguyen"),
        QStringLiteral("Murphy"),    QStringLiteral("Rivera"),     QStringLiteral("Cook"),
        QStringLiteral("Rogers"),    QStringLiteral("Morgan"),     QStringLiteral("Peterson"),
        QStringLiteral("Cooper"),    QStringLiteral("Reed"),       QStringLiteral("Bailey"),
        QStringLiteral("Bell"),      QStringLiteral("Gomez"),      QStringLiteral("Kelly"),
        QStringLiteral("Howard"),    QStringLiteral("Ward"),       QStringLiteral("Cox"),
        QStringLiteral("Diaz"),      QStringLiteral("Richardson"), QStringLiteral("Wood"),
        QStringLiteral("Watson"),    QStringLiteral("Brooks"),     QStringLiteral("Bennett"),
        QStringLiteral("Gray"),      QStringLiteral("James"),      QStringLiteral("Reyes"),
        QStringLiteral("Cruz"),      QStringLiteral("Hughes"),     QStringLiteral("Price"),
        QStringLiteral("Myers"),     QStringLiteral("Long"),       QStringLiteral("Foster"),
        QStringLiteral("Sanders"),   QStringLiteral("Ross"),       QStringLiteral("Morales"),
        QStringLiteral("Powell"),    QStringLiteral("Sullivan"),   QStringLiteral("Russell"),
        QStringLiteral("Ortiz"),     QStringLiteral("Jenkins"),    QStringLiteral("Gutierrez"),
        QStringLiteral("Perry"),     QStringLiteral("Butler"),     QStringLiteral("Barnes"),
        QStringLiteral("Fisher"),    QStringLiteral("Henderson"),  QStringLiteral("Coleman"),
        QStringLiteral("Simmons"),   QStringLiteral("Patterson"),  QStringLiteral("Jordan"),
        QStringLiteral("Reynolds"),  QStringLiteral("Hamilton"),   QStringLiteral("Graham"),
        QStringLiteral("Kim"),       QStringLiteral("Gonzales"),   QStringLiteral("Alexander"),
        QStringLiteral("Ramos"),     QStringLiteral("Wallace"),    QStringLiteral("Griffin"),
        QStringLiteral("West"),      QStringLiteral("Cole"),       QStringLiteral("Hayes"),
        QStringLiteral("Chavez"),    QStringLiteral("Gibson"),     QStringLiteral("Bryant"),
        QStringLiteral("Ellis"),     QStringLiteral("Stevens"),    QStringLiteral("Murray"),
        QStringLiteral("Ford"),      QStringLiteral("Marshall"),   QStringLiteral("Owens"),
        QStringLiteral("McDonald"),  QStringLiteral("Harrison"),   QStringLiteral("Ruiz"),
        QStringLiteral("Kennedy"),   QStringLiteral("Wells"),      QStringLiteral("Alvarez"),
        QStringLiteral("Woods"),     QStringLiteral("Mendoza"),    QStringLiteral("Castillo"),
        QStringLiteral("Olson"),     QStringLiteral("Webb"),       QStringLiteral("Washington"),
        QStringLiteral("Tucker"),    QStringLiteral("Freeman"),    QStringLiteral("Burns"),
        QStringLiteral("Henry"),     QStringLiteral("Vasquez"),    QStringLiteral("Snyder"),
        QStringLiteral("Simpson"),   QStringLiteral("Crawford"),   QStringLiteral("Jimenez"),
        QStringLiteral("Porter"),    QStringLiteral("Mason"),      QStringLiteral("Shaw"),
        QStringLiteral("Gordon"),    QStringLiteral("Wagner"),     QStringLiteral("Hunter"),
        QStringLiteral("Romero"),    QStringLiteral("Hicks"),      QStringLiteral("Dixon"),
        QStringLiteral("Hunt"),      QStringLiteral("Palmer"),     QStringLiteral("Robertson"),
        QStringLiteral("Black"),     QStringLiteral("Holmes"),     QStringLiteral("Stone"),
        QStringLiteral("Meyer"),     QStringLiteral("Boyd"),       QStringLiteral("Mills"),
        QStringLiteral("Warren"),    QStringLiteral("Fox"),        QStringLiteral("Rose"),
        QStringLiteral("Rice"),      QStringLiteral("Moreno"),     QStringLiteral("Schmidt"),
        QStringLiteral("Patel"),     QStringLiteral("Ferguson"),   QStringLiteral("Nichols"),
        QStringLiteral("Herrera"),   QStringLiteral("Medina"),     QStringLiteral("Ryan"),
        QStringLiteral("Fernandez"), QStringLiteral("Weaver"),     QStringLiteral("Daniels"),
        QStringLiteral("Stephens"),  QStringLiteral("Gardner"),    QStringLiteral("Payne"),
        QStringLiteral("Kowalski"),  QStringLiteral("O'Brien"),    QStringLiteral("Novak"),
        QStringLiteral("Lindqvist"), QStringLiteral("Costa"),
    };
    return names;
}

const QStringList& streetNames()
{
    static const QStringList names = {
        QStringLiteral("Main"),     QStringLiteral("Oak"),       QStringLiteral("Maple"),
        QStringLiteral("Elm"),      QStringLiteral("Pine"),      QStringLiteral("Cedar"),
        QStringLiteral("Walnut"),   QStringLiteral("Chestnut"),  QStringLiteral("Washington"),
        QStringLiteral("Lincoln"),  QStringLiteral("Jefferson"), QStringLiteral("Madison"),
        QStringLiteral("Park"),     QStringLiteral("Lake"),      QStringLiteral("Hill"),
        QStringLiteral("River"),    QStringLiteral("Church"),    QStringLiteral("Mill"),
        QStringLiteral("Spring"),   QStringLiteral("Center"),    QStringLiteral("High"),
        QStringLiteral("School"),   QStringLiteral("Market"),    QStringLiteral("Union"),
        QStringLiteral("Franklin"), QStringLiteral("Highland"),  QStringLiteral("Forest"),
        QStringLiteral("Meadow"),   QStringLiteral("Sunset"),    QStringLiteral("Ridge"),
        QStringLiteral("Willow"),   QStringLiteral("Birch"),     QStringLiteral("Poplar"),
        QStringLiteral("Hickory"),  QStringLiteral("Orchard"),   QStringLiteral("Brookside"),
        QStringLiteral("Fairview"), QStringLiteral("Prospect"),  QStringLiteral("Grove"),
        QStringLiteral("Railroad"), QStringLiteral("Water"),     QStringLiteral("Front"),
        QStringLiteral("Second"),   QStringLiteral("Third"),     QStringLiteral("Fourth"),
        QStringLiteral("Fifth"),    QStringLiteral("Sixth"),     QStringLiteral("Seventh"),
        QStringLiteral("Liberty"),  QStringLiteral("Academy"),   QStringLiteral("Summit"),
        QStringLiteral("Valley"),   QStringLiteral("Cherry"),    QStringLiteral("Dogwood"),
        QStringLiteral("Magnolia"), QStringLiteral("Laurel"),
    };
    return names;
}

const QStringList& streetSuffixes()
{
    static const QStringList names = {
        QStringLiteral("St"),  QStringLiteral("Ave"), QStringLiteral("Rd"), QStringLiteral("Dr"),
        QStringLiteral("Ln"),  QStringLiteral("Ct"),  QStringLiteral("Pl"), QStringLiteral("Blvd"),
        QStringLiteral("Way"), QStringLiteral("Ter"),
    };
    return names;
}

const QStringList& organisationNames()
{
    static const QStringList names = {
        QStringLiteral("Maple Court Apartments"),  QStringLiteral("Riverside Adult Day Ctr"),
        QStringLiteral("Hillcrest Group Home"),    QStringLiteral("Oak Terrace Senior Apts"),
        QStringLiteral("Grace Chapel Fellowship"), QStringLiteral("Lakeview Residences"),
        QStringLiteral("Cedar House Shelter"),     QStringLiteral("Northside Community Ctr"),
    };
    return names;
}

} // namespace kb::demo
