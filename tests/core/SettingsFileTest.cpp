// Kettbrk.ini: texts kept as they stand, damaged files survived and
// rewritten whole, and the shared copy merged with what another workstation
// saved meanwhile.

#include "settings/SettingsFile.h"
#include "settings/IniFile.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;

namespace {

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeAll(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

TEST(IniFile, KeepsCommasQuotesBlanksAndCase)
{
    IniFile ini;
    ini.setValue(QStringLiteral("Housing"), QStringLiteral("Item 0"), QStringLiteral("House, with yard"));
    ini.setValue(QStringLiteral("Housing"), QStringLiteral("Item 1"), QStringLiteral("Apt \"B\"; rear"));
    ini.setValue(QStringLiteral("Housing"), QStringLiteral("Item 2"), QStringLiteral("  padded  "));
    ini.setValue(QStringLiteral("Housing"), QStringLiteral("Item 3"), QStringLiteral("\"quoted\""));
    ini.setValue(QStringLiteral("ClientEdit"), QStringLiteral("Show Inactive"), QStringLiteral("Checked"));
    ini.setValue(QStringLiteral("Form_Positions"), QStringLiteral("TFormEditConfig"),
                 QStringLiteral("10,20,800,600"));
    const QByteArray text = ini.serialize();
    EXPECT_TRUE(text.contains("Item 0=House, with yard\n"));
    EXPECT_TRUE(text.contains("Show Inactive=Checked\n"));
    EXPECT_TRUE(text.contains("[Form_Positions]\nTFormEditConfig=10,20,800,600\n"));

    const IniFile back = IniFile::parse(text);
    EXPECT_EQ(back.value(QStringLiteral("housing"), QStringLiteral("ITEM 0")), "House, with yard");
    EXPECT_EQ(back.value(QStringLiteral("Housing"), QStringLiteral("Item 1")), "Apt \"B\"; rear");
    EXPECT_EQ(back.value(QStringLiteral("Housing"), QStringLiteral("Item 2")), "  padded  ");
    EXPECT_EQ(back.value(QStringLiteral("Housing"), QStringLiteral("Item 3")), "\"quoted\"");
    EXPECT_EQ(back.sections(), (QStringList{"Housing", "ClientEdit", "Form_Positions"}));
    EXPECT_EQ(back.keys(QStringLiteral("Housing")).size(), 4);
    EXPECT_EQ(back.serialize(), text);
    // Files written elsewhere: line ends of either kind, a byte order mark, comments.
    const IniFile windows = IniFile::parse("\xEF\xBB\xBF; comment\r\n[A]\r\nK = v \r\nK=second\r\n");
    EXPECT_EQ(windows.value(QStringLiteral("A"), QStringLiteral("k")), "v"); // the first of two keys counts
}

TEST(IniFile, DamagedInputReadsAsWhatCanBeRead)
{
    int skipped = 0;
    // A section header cut in half takes its keys with it.
    const IniFile cut =
        IniFile::parse("[Good]\nA=1\n[Form_Pos\nB=2\n[Next]\nC=3\n", IniFile::Limits(), skipped);
    EXPECT_EQ(cut.sections(), (QStringList{"Good", "Next"}));
    EXPECT_FALSE(cut.hasKey(QStringLiteral("Good"), QStringLiteral("B")));
    EXPECT_EQ(skipped, 2);
    // Binary garbage in the middle of a file.
    QByteArray garbage("[S]\nA=1\n");
    garbage.append(QByteArray("\x00\x01\xff\xfe=\x02[\x7f\n", 9));
    garbage.append("B=2\n");
    const IniFile mixed = IniFile::parse(garbage);
    EXPECT_EQ(mixed.value(QStringLiteral("S"), QStringLiteral("A")), "1");
    EXPECT_EQ(mixed.value(QStringLiteral("S"), QStringLiteral("B")), "2");
    // Keys before any section, lines without "=", over-long lines.
    IniFile::Limits small;
    small.maxLineLength = 20;
    const QByteArray oddText =
        QByteArray("orphan=1\n[S]\nno equals\n=novalue\nK=") + QByteArray(40, 'x') + "\nL=ok\n";
    const IniFile odd = IniFile::parse(oddText, small);
    EXPECT_EQ(odd.keys(QStringLiteral("S")), QStringList{"L"});
    // A file over the size limit is not read at all.
    small.maxBytes = 10;
    EXPECT_TRUE(IniFile::parse("[S]\nA=1\nB=2\n", small).isEmpty());
    // Many sections and keys stop at the limits.
    QByteArray many;
    for (int i = 0; i < 5000; ++i)
        many += QByteArray("[S") + QByteArray::number(i) + "]\nK=" + QByteArray::number(i) + "\n";
    EXPECT_EQ(IniFile::parse(many).sections().size(), IniFile::Limits().maxSections);
    // Random bytes never break the reader.
    QRandomGenerator random(7);
    for (int round = 0; round < 200; ++round) {
        QByteArray bytes(int(random.bounded(2000)), '\0');
        for (char& c : bytes)
            c = char(random.bounded(256));
        if (round % 2) bytes.replace('\x05', '\n').replace('\x06', '[').replace('\x07', '=');
        const IniFile ini = IniFile::parse(bytes);
        EXPECT_EQ(IniFile::parse(ini.serialize()).serialize(), ini.serialize());
    }
}

TEST(SettingsFile, MissingEmptyOrDamagedFilesGiveDefaultsAndAreRewrittenWhole)
{
    QTemporaryDir dir;
    {
        SettingsFile missing(dir.path());
        EXPECT_EQ(missing.readString(QStringLiteral("S"), QStringLiteral("K"), QStringLiteral("default")),
                  "default");
        EXPECT_FALSE(missing.formPosition(QStringLiteral("TFormEditConfig")));
    }
    const QString path = dir.filePath(SettingsFile::fileName());
    writeAll(path, QByteArray());
    EXPECT_EQ(SettingsFile(dir.path()).readInteger(QStringLiteral("S"), QStringLiteral("K"), 5), 5);

    QByteArray damaged(
        "[Form_Positions]\nTFormEditConfig=Default\nTFormDisplayLogins=10,x,300,200\n"
        "FormA=1,2,3\n[FormClientBills]\nIndex=three\nShow=Checked\nHide=Unchecked\nBad=maybe\n[Cut");
    damaged.append(QByteArray("\x00\x9f\x13garbage", 10));
    writeAll(path, damaged);
    SettingsFile settings(dir.path());
    EXPECT_FALSE(settings.formPosition(QStringLiteral("TFormEditConfig")));    // "Default"
    EXPECT_FALSE(settings.formPosition(QStringLiteral("TFormDisplayLogins"))); // not numbers
    EXPECT_FALSE(settings.formPosition(QStringLiteral("FormA")));              // three numbers
    EXPECT_EQ(settings.readInteger(QStringLiteral("FormClientBills"), QStringLiteral("Index"), 2), 2);
    EXPECT_TRUE(settings.readBool(QStringLiteral("FormClientBills"), QStringLiteral("Show"), false));
    EXPECT_FALSE(settings.readBool(QStringLiteral("FormClientBills"), QStringLiteral("Hide"), true));
    EXPECT_TRUE(settings.readBool(QStringLiteral("FormClientBills"), QStringLiteral("Bad"), true));

    settings.setFormPosition(QStringLiteral("TFormEditConfig"), QRect(15, 25, 900, 640));
    settings.writeChecked(QStringLiteral("FormClientBills"), QStringLiteral("Show"), false);
    settings.save();
    const QByteArray written = readAll(path);
    EXPECT_FALSE(written.contains("garbage"));
    EXPECT_FALSE(written.contains("[Cut"));
    EXPECT_TRUE(written.contains("TFormEditConfig=15,25,900,640\n"));
    EXPECT_TRUE(written.contains("Show=Unchecked\n"));
    EXPECT_EQ(SettingsFile(dir.path()).formPosition(QStringLiteral("TFormEditConfig")),
              QRect(15, 25, 900, 640));
}

TEST(SettingsFile, SavingKeepsWhatAnotherWorkstationSavedMeanwhile)
{
    QTemporaryDir dir;
    SettingsFile first(dir.path());
    SettingsFile second(dir.path());
    first.writeString(QStringLiteral("Housing"), QStringLiteral("Item0"), QStringLiteral("House"));
    first.save();
    second.writeString(QStringLiteral("Insurance"), QStringLiteral("Item0"), QStringLiteral("Plan A, B"));
    second.save();
    SettingsFile third(dir.path());
    EXPECT_EQ(third.readString(QStringLiteral("Housing"), QStringLiteral("Item0")), "House");
    EXPECT_EQ(third.readString(QStringLiteral("Insurance"), QStringLiteral("Item0")), "Plan A, B");
    third.eraseSection(QStringLiteral("Housing"));
    third.deleteKey(QStringLiteral("Insurance"), QStringLiteral("Item0"));
    third.save();
    EXPECT_EQ(SettingsFile(dir.path()).contents().keys(QStringLiteral("Insurance")), QStringList());
    EXPECT_FALSE(SettingsFile(dir.path()).contents().hasSection(QStringLiteral("Housing")));
    // A folder that cannot be written to is told, not ignored.
    SettingsFile nowhere(dir.filePath(QStringLiteral("missing/folder")));
    nowhere.writeString(QStringLiteral("S"), QStringLiteral("K"), QStringLiteral("V"));
    EXPECT_THROW(nowhere.save(), std::exception);
}

} // namespace
