#include "../support/LogRecorder.h"

#include <conversions/StringConversions.h>
#include <strings/StringUtility.h>

#include <QTest>

using namespace Qt::StringLiterals;
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
        QTest::newRow("cleaning, each") << clean << u"a^b_c|d\\e~/"_s << u"a b c d e~/"_s;
        QTest::newRow("cleaning, runs") << clean << u"_a__b \t^c\n"_s << u"a b c"_s;

        const Operation strip = &StringUtility::stripNonAlphanumeric;
        QTest::newRow("stripping, ends of ranges") << strip << u"/09:@AZ[`az{"_s << u"09AZaz"_s;
        QTest::newRow("stripping, no ASCII") << strip << u"Ab-1 _üß١Ω"_s << u"Ab1"_s;
        QTest::newRow("stripping, surrogate") << strip << u'a' + QString(QChar(0xd800)) + u'z' << "az";

        QTest::newRow("curly brackets") << Operation(&StringUtility::removeCurlyBrackets) << "}{1}{[a](b){"
                                        << "1[a](b)";
        QTest::newRow("square brackets") << Operation(&StringUtility::removeSquareBrackets) << "][1][{a}(b)["
                                         << "1{a}(b)";

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

        const Operation split = [](const QString &text) { return StringUtility::splitOnWhiteSpaces(text).join(u'|'); };
        QTest::newRow("splitting, one word") << split << "ab"
                                             << "ab";
        QTest::newRow("splitting, blank") << split << " "
                                          << "|";
        QTest::newRow("splitting, at the ends") << split << " a\n"
                                                << "|a|";
        QTest::newRow("splitting, runs") << split << "a \t\nb\v\f\rc"
                                         << "a|b|c";
        QTest::newRow("splitting, not outside ASCII") << split << "a\u00a0b\u0085c\u2003d"
                                                      << "a\u00a0b\u0085c\u2003d";
        QTest::newRow("splitting, not other controls") << split << "a\bb\x0e"
                                                       << "a\bb\x0e";
        const QString surrogate = QChar(0xdc00);
        QTest::newRow("splitting, lone surrogate") << split << surrogate + u" b"_s << surrogate + u"|b"_s;

        const Operation splitName = [](const QString &text) {
            QString name = text;
            QString last = u"earlier"_s;
            StringUtility::patientNameToFirstLastName(name, name, last); // into the name itself
            return name + u'|' + last;
        };
        QTest::newRow("first and last name") << splitName << "John Doe"
                                             << "John|Doe";
        QTest::newRow("first and last name, one word") << splitName << "John"
                                                       << "John|";
        QTest::newRow("first and last name, more words") << splitName << "John  R Doe "
                                                         << "John| R Doe ";
        QTest::newRow("first and last name, trailing blank") << splitName << "John "
                                                             << "John|";
        QTest::newRow("first and last name, empty") << splitName << ""
                                                    << "|";
        QTest::newRow("first and last name, tab") << splitName << "John\tDoe"
                                                  << "John\tDoe|";

        const Operation initials = [](const QString &text) {
            return StringUtility::getPatientInitials(text.section(u'|', 0, 0), text.section(u'|', 1));
        };
        QTest::newRow("initials, second part first") << initials << "Doe|John"
                                                     << "JD";
        QTest::newRow("initials, no second part") << initials << "Doe|"
                                                  << "D";
        QTest::newRow("initials, blank") << initials << " Doe|John"
                                         << "J ";
        QTest::newRow("initials, combining marks") << initials << u"e\u0301\u0323ve|John"_s << u"Je\u0301\u0323"_s;
        QTest::newRow("initials, surrogate pair") << initials << u"😀x|𐐨y"_s << u"𐐨😀"_s;

        const Operation capitalizeParts = [](const QString &text) {
            return StringUtility::makeFirstCharacterOfPartsUpperCase(text.split(u'|'));
        };
        QTest::newRow("parts, empty") << capitalizeParts << ""
                                      << "";
        QTest::newRow("parts, two") << capitalizeParts << "john|DOE"
                                    << "John Doe";
        QTest::newRow("parts, empty one inside") << capitalizeParts << "a||b"
                                                 << "A  B";
        QTest::newRow("parts, empty ones at the ends") << capitalizeParts << "|x|"
                                                       << "X";

        const Operation splitVersion = [](const QString &text) {
            int majorNumber = 7;
            int minorNumber = 7;
            StringUtility::versionStringTo2Numbers(text, majorNumber, minorNumber);
            return u"%1 %2"_s.arg(majorNumber).arg(minorNumber);
        };
        QTest::newRow("version, two numbers") << splitVersion << "1.2"
                                              << "1 2";
        QTest::newRow("version, no dot") << splitVersion << "12"
                                         << "-1 -1";
        QTest::newRow("version, nothing behind the dot") << splitVersion << "1."
                                                         << "1 0";
        QTest::newRow("version, nothing before the dot") << splitVersion << ".5"
                                                         << "0 5";
        QTest::newRow("version, suffix") << splitVersion << "1.2-beta"
                                         << "1 0";
        QTest::newRow("version, leading zero, white space, sign") << splitVersion << "010. -2"
                                                                  << "10 -2";
        QTest::newRow("version, prefix") << splitVersion << "0x10.2"
                                         << "0 2";
        QTest::newRow("version, too large") << splitVersion << "99999999999.1"
                                            << "0 1";

        const Operation readMap = [](const QString &text) {
            const LogRecorder log;
            const auto map = StringUtility::saveableUIStringToMap(text);
            const QString shown = map.hasValue() ? StringConversions::mapToString(map.getValue()) : u"refused: "_s;
            return shown + log.getLines().join(u'|');
        };
        QTest::newRow("map, two") << readMap << "core 1.2 | ui 2.0"
                                  << "core 1.2 | ui 2.0";
        QTest::newRow("map, bare bar") << readMap << "ui 2.0|core 1.2"
                                       << "core 1.2 | ui 2.0";
        QTest::newRow("map, white space around") << readMap << "\t core 1.2 \n"
                                                 << "core 1.2";
        QTest::newRow("map, last of a key wins") << readMap << "core 3.0 | core 1.2"
                                                 << "core 1.2";
        QTest::newRow("map, keys by case") << readMap << "core 1.2 | Core 2.0"
                                           << "Core 2.0 | core 1.2";
        QTest::newRow("map, more behind the number") << readMap << "core 1.2abc"
                                                     << "core 1.2";
        QTest::newRow("map, no number") << readMap << "core abc"
                                        << "core ";
        QTest::newRow("map, tab beside the blank") << readMap << "core\t 1.2"
                                                   << "core\t 1.2";
        const QString refusal = u"refused: 1 default Corrupt string for stringToMap: stringMap ( %1 )"_s;
        for (const char *text : {"", "core", "core 1 2", "my app 1.0", "core  1.2", "core\t1.0", "\"core\""}) {
            QTest::newRow(text) << readMap << text << refusal.arg(QDebug::toString(QString::fromUtf8(text)));
        }
        for (const char *text : {"core 1.2 | ", "| core 1.2", "core 1.2 || ui 2", "core 1.2 | ui"}) {
            QTest::newRow(text) << readMap << text << refusal.arg(QDebug::toString(QString::fromUtf8(text)));
        }
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

    void nullParts()
    {
        QCOMPARE(StringUtility::splitOnWhiteSpaces({}), QList<QString>{u""_s});
        QCOMPARE(StringUtility::splitOnWhiteSpaces({}).first().isNull(), false);
        QCOMPARE(StringUtility::splitOnWhiteSpaces(u" a "_s).last().isNull(), false);
        QCOMPARE(StringUtility::makeFirstCharacterOfPartsUpperCase({}).isNull(), false);
        QCOMPARE(StringUtility::makeFirstCharacterOfPartsUpperCase({}), u""_s);
    }
};

QTEST_GUILESS_MAIN(StringUtilityTest)
#include "tst_stringutility.moc"
