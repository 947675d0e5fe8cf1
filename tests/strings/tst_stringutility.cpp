#include "../support/LogRecorder.h"

#include <conversions/StringConversions.h>
#include <strings/StringUtility.h>

#include <QTest>

#include <utility>

using namespace Qt::StringLiterals;
using S = StringUtility;
using Texts = QList<QString>;

namespace {

void add(const char *row, const QString &actual, const QString &expected)
{
    QTest::newRow(row) << actual << expected;
}

// Returns the map that was read, or "refused", and the log lines.
QString readMap(const QString &text)
{
    const LogRecorder log;
    const auto map = S::saveableUIStringToMap(text);
    return (map.hasValue() ? StringConversions::mapToString(map.getValue()) : u"refused: "_s)
        + log.getLines().join(u'|');
}

} // namespace

class StringUtilityTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // In Turkish, the lower case of I is not i.
    void initTestCase() { QLocale::setDefault(QLocale::Turkish); }

    void texts_data()
    {
        QTest::addColumn<QString>("actual");
        QTest::addColumn<QString>("expected");
        add("safe name, null", S::stringToSafeFileName({}), {});
        add("safe name, each", S::stringToSafeFileName(u"/\\:?%$#&<>*!'\"@+`|=^"_s), u"____________________"_s);
        add("safe name, white space", S::stringToSafeFileName(u"\t a  / b:c\n"_s), u"a  _ b_c"_s);
        add("safe name, reserved after trimming", S::stringToSafeFileName(u"\t nul \n"_s), u"invalid_name"_s);
        for (const char *name :
            {"com1", "COM2", "Com3", "coM4", "com5", "com6", "com7", "com8", "com9", "con", "nUL"}) {
            add(name, S::stringToSafeFileName(QString::fromUtf8(name)), u"invalid_name"_s);
        }
        for (const char *name :
            {"lpt1", "LPT2", "Lpt3", "lpT4", "lpt5", "lpt6", "lpt7", "lpt8", "lpt9", "Prn", "AUX"}) {
            add(name, S::stringToSafeFileName(QString::fromUtf8(name)), u"invalid_name"_s);
        }
        for (const char *name : {"COM1.txt", "con.", "com0", "com10", "lpt", "..a.", ".,;~-_(1)[2]{3}ß", "com¹"}) {
            add(name, S::stringToSafeFileName(QString::fromUtf8(name)), QString::fromUtf8(name));
        }

        add("cleaning, null", S::removeInvalidCharacters({}), {});
        add("cleaning, each", S::removeInvalidCharacters(u"a^b_c|d\\e~/"_s), u"a b c d e~/"_s);
        add("cleaning, runs", S::removeInvalidCharacters(u"_a__b \t^c\n"_s), u"a b c"_s);

        add("stripping, ends of ranges", S::stripNonAlphanumeric(u"/09:@AZ[`az{"_s), u"09AZaz"_s);
        add("stripping, no ASCII", S::stripNonAlphanumeric(u"Ab-1 _üß١Ω"_s), u"Ab1"_s);
        add("stripping, surrogate", S::stripNonAlphanumeric(u'a' + QString(QChar(0xd800)) + u'z'), u"az"_s);

        add("curly brackets", S::removeCurlyBrackets(u"}{1}{[a](b){"_s), u"1[a](b)"_s);
        add("square brackets", S::removeSquareBrackets(u"][1][{a}(b)["_s), u"1{a}(b)"_s);

        const auto unescape = &S::fromHtmlEscapedToPlainText;
        add("HTML, each", unescape(u"&quot;a&quot; &lt; b &amp;&amp; &gt;"_s), u"\"a\" < b && >"_s);
        add("HTML, escaped twice", unescape(u"&amp;lt; &amp;gt; &amp;quot;"_s), u"< > \""_s);
        add("HTML, three times", unescape(u"&amp;amp;lt;"_s), u"&amp;lt;"_s);
        for (const char *text : {"&lt", "lt;", "&AMP;", "&LT;", "&apos;", "&nbsp;", "&#39;", "&#x3C;"}) {
            add(text, unescape(QString::fromUtf8(text)), QString::fromUtf8(text));
        }

        const auto capitalize = &S::makeFirstCharacterUpperLowerTheRest;
        add("capital, words", capitalize(u"mcDONALD & CO"_s), u"Mcdonald & co"_s);
        add("capital, no letter", capitalize(u" aB"_s), u" ab"_s);
        add("capital, empty", capitalize(u""_s), u""_s);
        add("capital, surrogate pair", capitalize(u"𐐨A"_s), u"𐐨a"_s);
        add("capital, one to two", capitalize(u"ßA"_s), u"SSa"_s);
        add("capital, no title case", capitalize(u"ǆ"_s), u"Ǆ"_s);

        const auto capitalizeAll = &S::capitalizeFirstCharacterOfLastName;
        add("last name", capitalizeAll(u"SMITH"_s), u"Smith"_s);
        add("last name, words", capitalizeAll(u" van \t DER o'NEIL-berg "_s), u"Van Der O'neil-berg"_s);
        add("last name, empty", capitalizeAll(u""_s), u""_s);
        add("last name, blank", capitalizeAll(u" "_s), u""_s);

        add("parts, none", S::makeFirstCharacterOfPartsUpperCase({}), u""_s);
        add("parts, two", S::makeFirstCharacterOfPartsUpperCase({u"john"_s, u"DOE"_s}), u"John Doe"_s);
        add("parts, empty one inside", S::makeFirstCharacterOfPartsUpperCase({u"a"_s, {}, u"b"_s}), u"A  B"_s);
        add("parts, empty ones at the ends", S::makeFirstCharacterOfPartsUpperCase({{}, u"x"_s, {}}), u"X"_s);

        add("initials, second part first", S::getPatientInitials(u"Doe"_s, u"John"_s), u"JD"_s);
        add("initials, blank", S::getPatientInitials(u" Doe"_s, u"John"_s), u"J "_s);
        add("initials, combining marks", S::getPatientInitials(u"e\u0301\u0323ve"_s, {}), u"e\u0301\u0323"_s);
        add("initials, surrogate pair", S::getPatientInitials(u"😀x"_s, u"𐐨y"_s), u"𐐨😀"_s);

        add("map, bare bar", readMap(u"ui 2.0|core 1.2"_s), u"core 1.2 | ui 2.0"_s);
        add("map, white space around", readMap(u"\t core 1.2 \n"_s), u"core 1.2"_s);
        add("map, last of a key wins", readMap(u"core 3.0 | core 1.2"_s), u"core 1.2"_s);
        add("map, no number", readMap(u"core abc"_s), u"core "_s);
        add("map, tab beside the blank", readMap(u"core\t 1.2"_s), u"core\t 1.2"_s);
        const QString refusal = u"refused: 1 default Corrupt string for stringToMap: stringMap ( \"%1\" )"_s;
        for (const char *row : {"", "core", "core 1 2", "core  1.2", "core 1.2 | ", "| core 1.2", "core 1 || ui 2"}) {
            add(row, readMap(QString::fromUtf8(row)), refusal.arg(QString::fromUtf8(row)));
        }
        add("map, quoted", readMap(u"core\t\"1\""_s), refusal.arg(uR"(core\t\"1\")"_s));
    }
    void texts()
    {
        QFETCH(QString, actual);
        QFETCH(QString, expected);
        QCOMPARE(actual, expected);
        QCOMPARE(actual.isNull(), expected.isNull());
    }

    void splitOnWhiteSpaces()
    {
        const QString surrogate = QChar(0xdc00);
        const QString otherSpaces = u"a\u00a0b\u0085c\u2003d\be\x0e"_s;
        QCOMPARE(S::splitOnWhiteSpaces(u"ab"_s), Texts({u"ab"_s}));
        QCOMPARE(S::splitOnWhiteSpaces(u" "_s), Texts({u""_s, u""_s}));
        QCOMPARE(S::splitOnWhiteSpaces(u"\na \t\nb\v\f\rc "_s), Texts({u""_s, u"a"_s, u"b"_s, u"c"_s, u""_s}));
        QCOMPARE(S::splitOnWhiteSpaces(otherSpaces), Texts({otherSpaces}));
        QCOMPARE(S::splitOnWhiteSpaces(surrogate + u" b"_s), Texts({surrogate, u"b"_s}));
        QCOMPARE(S::splitOnWhiteSpaces({}), Texts({u""_s}));
        QCOMPARE(S::splitOnWhiteSpaces({}).first().isNull(), false);
        QCOMPARE(S::splitOnWhiteSpaces(u"a "_s).last().isNull(), false);
    }

    void patientNameToFirstLastName()
    {
        const auto split = [](QString name) {
            QString last = u"earlier"_s;
            S::patientNameToFirstLastName(name, name, last); // into the name itself
            return Texts{name, last};
        };
        QCOMPARE(split(u"John"_s), Texts({u"John"_s, u""_s}));
        QCOMPARE(split(u"John  R Doe "_s), Texts({u"John"_s, u" R Doe "_s}));
        QCOMPARE(split(u"John "_s), Texts({u"John"_s, u""_s}));
        QCOMPARE(split(u""_s), Texts({u""_s, u""_s}));
        QCOMPARE(split(u"John\tDoe"_s), Texts({u"John\tDoe"_s, u""_s}));
    }

    void versionStringTo2Numbers()
    {
        const auto read = [](const QString &text) {
            std::pair numbers(7, 7);
            S::versionStringTo2Numbers(text, numbers.first, numbers.second);
            return numbers;
        };
        QCOMPARE(read(u"1.2.3"_s), std::pair(1, 2));
        QCOMPARE(read(u"12"_s), std::pair(-1, -1));
        QCOMPARE(read(u"1."_s), std::pair(1, 0));
        QCOMPARE(read(u".5"_s), std::pair(0, 5));
        QCOMPARE(read(u"1.2-beta"_s), std::pair(1, 0));
        QCOMPARE(read(u"010. -2"_s), std::pair(10, -2));
        QCOMPARE(read(u"0x10.2"_s), std::pair(0, 2));
        QCOMPARE(read(u"99999999999.1"_s), std::pair(0, 1));
    }
};

QTEST_GUILESS_MAIN(StringUtilityTest)
#include "tst_stringutility.moc"
