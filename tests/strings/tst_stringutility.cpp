#include "../support/LogRecorder.h"

#include <strings/StringUtility.h>

#include <QTest>

using namespace Qt::StringLiterals;
using Versions = QMap<QString, QVersionNumber>;
using Operation = QString (*)(const QString &);

class StringUtilityTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        const Operation safe = &StringUtility::stringToSafeFileName;
        QTest::newRow("safe name, null") << safe << QString() << QString();
        QTest::newRow("safe name, empty") << safe << u""_s << u""_s;
        QTest::newRow("safe name, each") << safe << u"/\\:?%$#&<>*!'\"@+`|=^"_s << u"____________________"_s;
        QTest::newRow("safe name, white space") << safe << u"\t a  / b:c\n"_s << u"a  _ b_c"_s;
        QTest::newRow("safe name, reserved after trimming") << safe << u"\t nul \n"_s << u"invalid_name"_s;
        QTest::newRow("safe name, reserved before replacing") << safe << u"co/n"_s << u"co_n"_s;
        for (const char *name :
            {"com1", "COM2", "Com3", "coM4", "com5", "com6", "com7", "com8", "com9", "con", "nUL"}) {
            QTest::newRow(name) << safe << name << "invalid_name";
        }
        for (const char *name :
            {"lpt1", "LPT2", "Lpt3", "lpT4", "lpt5", "lpt6", "lpt7", "lpt8", "lpt9", "Prn", "AUX"}) {
            QTest::newRow(name) << safe << name << "invalid_name";
        }
        for (const char *name : {"COM1.txt", "con.", "com0", "com10", "lpt", "..a.", ".,;~-_(1)[2]{3}ß", "com¹"}) {
            QTest::newRow(name) << safe << name << name;
        }

        const Operation clean = &StringUtility::removeInvalidCharacters;
        QTest::newRow("cleaning, null") << clean << QString() << QString();
        QTest::newRow("cleaning, empty") << clean << u""_s << u""_s;
        QTest::newRow("cleaning, each") << clean << u"a^b_c|d\\e~/"_s << u"a b c d e~/"_s;
        QTest::newRow("cleaning, runs") << clean << u"_a__b \t^c\n"_s << u"a b c"_s;

        const Operation strip = &StringUtility::stripNonAlphanumeric;
        QTest::newRow("stripping, ends of ranges") << strip << u"/09:@AZ[`az{"_s << u"09AZaz"_s;
        QTest::newRow("stripping, no ASCII") << strip << u"Ab-1 _üß١Ω"_s << u"Ab1"_s;
        QTest::newRow("stripping, surrogate") << strip << u'a' + QString(QChar(0xd800)) + u'z' << "az";

        const Operation removeCurly = &StringUtility::removeCurlyBrackets;
        QTest::newRow("curly brackets") << removeCurly << u"}{1}{[a](b){"_s << u"1[a](b)"_s;
        const Operation removeSquare = &StringUtility::removeSquareBrackets;
        QTest::newRow("square brackets") << removeSquare << u"][1][{a}(b)["_s << u"1{a}(b)"_s;

        const Operation unescape = &StringUtility::fromHtmlEscapedToPlainText;
        QTest::newRow("HTML, each") << unescape << u"&quot;a&quot; &lt; b &amp;&amp; &gt;"_s << u"\"a\" < b && >"_s;
        QTest::newRow("HTML, escaped twice") << unescape << u"&amp;lt; &amp;gt; &amp;quot;"_s << u"< > \""_s;
        QTest::newRow("HTML, three times") << unescape << u"&amp;amp;lt;"_s << u"&amp;lt;"_s;
        for (const char *text : {"&lt", "lt;", "&AMP;", "&LT;", "&apos;", "&nbsp;", "&#39;", "&#x3C;"}) {
            QTest::newRow(text) << unescape << text << text;
        }

        const Operation capitalize = &StringUtility::makeFirstCharacterUpperLowerTheRest;
        QTest::newRow("capital, words") << capitalize << u"mcDONALD & CO"_s << u"Mcdonald & co"_s;
        QTest::newRow("capital, no letter") << capitalize << u" aB"_s << u" ab"_s;
        QTest::newRow("capital, empty") << capitalize << u""_s << u""_s;
        QTest::newRow("capital, surrogate pair") << capitalize << u"𐐨A"_s << u"𐐨a"_s;
        QTest::newRow("capital, one to two") << capitalize << u"ßA"_s << u"SSa"_s;
        QTest::newRow("capital, no title case") << capitalize << u"ǆ"_s << u"Ǆ"_s;

        const Operation capitalizeAll = &StringUtility::capitalizeFirstCharacterOfLastName;
        QTest::newRow("last name") << capitalizeAll << u"SMITH"_s << u"Smith"_s;
        QTest::newRow("last name, words") << capitalizeAll << u" van \t DER o'NEIL-berg "_s << u"Van Der O'neil-berg"_s;
        QTest::newRow("last name, empty") << capitalizeAll << u""_s << u""_s;
        QTest::newRow("last name, blank") << capitalizeAll << u" "_s << u""_s;
    }
    void texts()
    {
        QFETCH(Operation, operation);
        QFETCH(QString, text);
        QFETCH(QString, expected);
        const QString actual = operation(text);
        QCOMPARE(actual, expected);
        QCOMPARE(actual.isNull(), expected.isNull());
    }

    void splitOnWhiteSpaces_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QList<QString>>("expected");
        QTest::newRow("null") << QString() << QList<QString>{u""_s};
        QTest::newRow("empty") << "" << QList<QString>{u""_s};
        QTest::newRow("one word") << "ab" << QList<QString>{u"ab"_s};
        QTest::newRow("blank") << " " << QList<QString>{u""_s, u""_s};
        QTest::newRow("at the ends") << " a\n" << QList<QString>{u""_s, u"a"_s, u""_s};
        QTest::newRow("runs") << "a \t\nb\v\f\rc" << QList<QString>{u"a"_s, u"b"_s, u"c"_s};
        QTest::newRow("not outside ASCII") << "a\u00a0b\u0085c\u2003d" << QList<QString>{u"a\u00a0b\u0085c\u2003d"_s};
        QTest::newRow("not other controls") << "a\bb\x0e" << QList<QString>{u"a\bb\x0e"_s};
        const QString surrogates = u"a"_s + QChar(0xdc00);
        QTest::newRow("lone surrogate") << surrogates + u" b"_s << QList<QString>{surrogates, u"b"_s};
    }
    void splitOnWhiteSpaces()
    {
        QFETCH(QString, text);
        const QList<QString> parts = StringUtility::splitOnWhiteSpaces(text);
        QTEST(parts, "expected");
        QVERIFY(!parts.first().isNull() && !parts.last().isNull());
    }

    void patientNameToFirstLastName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expectedFirst");
        QTest::addColumn<QString>("expectedLast");
        QTest::newRow("two words") << u"John Doe"_s << u"John"_s << u"Doe"_s;
        QTest::newRow("one word") << u"John"_s << u"John"_s << u""_s;
        QTest::newRow("more words") << u"John  R Doe "_s << u"John"_s << u" R Doe "_s;
        QTest::newRow("trailing blank") << u"John "_s << u"John"_s << u""_s;
        QTest::newRow("empty") << u""_s << u""_s << u""_s;
        QTest::newRow("tab") << u"John\tDoe"_s << u"John\tDoe"_s << u""_s;
    }
    void patientNameToFirstLastName()
    {
        QFETCH(QString, name);
        QString last = u"earlier"_s;
        StringUtility::patientNameToFirstLastName(name, name, last); // into the name itself
        QTEST(name, "expectedFirst");
        QTEST(last, "expectedLast");
    }

    void getPatientInitials_data()
    {
        QTest::addColumn<QString>("firstPart");
        QTest::addColumn<QString>("secondPart");
        QTest::addColumn<QString>("expected");
        QTest::newRow("second part first") << u"Doe"_s << u"John"_s << u"JD"_s;
        QTest::newRow("no second part") << u"Doe"_s << u""_s << u"D"_s;
        QTest::newRow("blank") << u" Doe"_s << u"John"_s << u"J "_s;
        QTest::newRow("combining marks") << u"e\u0301\u0323ve"_s << u"John"_s << u"Je\u0301\u0323"_s;
        QTest::newRow("surrogate pair") << u"😀x"_s << u"𐐨y"_s << u"𐐨😀"_s;
    }
    void getPatientInitials()
    {
        QFETCH(QString, firstPart);
        QFETCH(QString, secondPart);
        QTEST(StringUtility::getPatientInitials(firstPart, secondPart), "expected");
    }

    void makeFirstCharacterOfPartsUpperCase_data()
    {
        QTest::addColumn<QList<QString>>("parts");
        QTest::addColumn<QString>("expected");
        QTest::newRow("none") << QList<QString>() << "";
        QTest::newRow("null") << QList<QString>{QString()} << "";
        QTest::newRow("two") << QList<QString>{u"john"_s, u"DOE"_s} << "John Doe";
        QTest::newRow("empty one inside") << QList<QString>{u"a"_s, u""_s, u"b"_s} << "A  B";
        QTest::newRow("empty ones at the ends") << QList<QString>{u""_s, u"x"_s, u""_s} << "X";
    }
    void makeFirstCharacterOfPartsUpperCase()
    {
        QFETCH(QList<QString>, parts);
        const QString actual = StringUtility::makeFirstCharacterOfPartsUpperCase(parts);
        QTEST(actual, "expected");
        QVERIFY(!actual.isNull());
    }

    void saveableUIStringToMap_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<Versions>("expected"); // empty if the text is refused
        const Versions core = {{u"core"_s, QVersionNumber(1, 2)}};
        QTest::newRow("two") << "core 1.2 | ui 2.0" << Versions{{u"core"_s, {1, 2}}, {u"ui"_s, {2, 0}}};
        QTest::newRow("bare bar") << "ui 2.0|core 1.2" << Versions{{u"core"_s, {1, 2}}, {u"ui"_s, {2, 0}}};
        QTest::newRow("white space around") << "\t core 1.2 \n" << core;
        QTest::newRow("last of a key wins") << "core 3.0 | core 1.2" << core;
        QTest::newRow("keys by case") << "core 1.2 | Core 2.0" << Versions{{u"core"_s, {1, 2}}, {u"Core"_s, {2, 0}}};
        QTest::newRow("more behind the number") << "core 1.2abc" << core;
        QTest::newRow("no number") << "core abc" << Versions{{u"core"_s, {}}};
        QTest::newRow("tab beside the blank") << "core\t 1.2" << Versions{{u"core\t"_s, {1, 2}}};
        for (const char *text : {"", "core", "core 1 2", "my app 1.0", "core  1.2", "core\t1.0", "\"core\""}) {
            QTest::newRow(text) << text << Versions();
        }
        for (const char *text : {"core 1.2 | ", "| core 1.2", "core 1.2 || ui 2", "core 1.2 | ui"}) {
            QTest::newRow(text) << text << Versions();
        }
    }
    void saveableUIStringToMap()
    {
        QFETCH(QString, text);
        QFETCH(Versions, expected);
        const QString warning =
            u"1 default Corrupt string for stringToMap: stringMap ( %1 )"_s.arg(QDebug::toString(text));
        const LogRecorder log;
        const auto map = StringUtility::saveableUIStringToMap(text);
        QCOMPARE(log.getLines(), expected.isEmpty() ? QStringList(warning) : QStringList());
        QCOMPARE(map.hasValue(), !expected.isEmpty());
        QCOMPARE(map.hasValue() ? map.getValue() : Versions(), expected);
    }

    void versionStringTo2Numbers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("expectedMajor");
        QTest::addColumn<int>("expectedMinor");
        QTest::newRow("two numbers") << "1.2" << 1 << 2;
        QTest::newRow("no dot") << "12" << -1 << -1;
        QTest::newRow("empty") << "" << -1 << -1;
        QTest::newRow("nothing behind the dot") << "1." << 1 << 0;
        QTest::newRow("nothing before the dot") << ".5" << 0 << 5;
        QTest::newRow("letters") << "a.b" << 0 << 0;
        QTest::newRow("suffix") << "1.2-beta" << 1 << 0;
        QTest::newRow("leading zero, white space, sign") << "010. -2" << 10 << -2;
        QTest::newRow("prefix") << "0x10.2" << 0 << 2;
        QTest::newRow("too large") << "99999999999.1" << 0 << 1;
    }
    void versionStringTo2Numbers()
    {
        QFETCH(QString, text);
        int majorNumber = 7;
        int minorNumber = 7;
        StringUtility::versionStringTo2Numbers(text, majorNumber, minorNumber);
        QTEST(majorNumber, "expectedMajor");
        QTEST(minorNumber, "expectedMinor");
    }
};

QTEST_GUILESS_MAIN(StringUtilityTest)
#include "tst_stringutility.moc"
