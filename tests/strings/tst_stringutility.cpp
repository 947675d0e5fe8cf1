#include "../LogRecorder.h"

#include <strings/StringUtility.h>

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using Change = QString (*)(const QString &);

class StringUtilityTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void change_data()
    {
        QTest::addColumn<Change>("change");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        const auto addRows = [](const char *name, Change change, const QList<std::pair<QString, QString>> &rows) {
            for (const auto &[text, expected] : rows) {
                QTest::addRow("%s: %s", name, qPrintable(text)) << change << text << expected;
            }
        };
        addRows("safe file name",
            &StringUtility::stringToSafeFileName,
            {{u""_s, u""_s},
                {u" \t\u2003"_s, u""_s},
                {u"con"_s, u"invalid_name"_s},
                {u"lPt9"_s, u"invalid_name"_s},
                {u"  nul\n"_s, u"invalid_name"_s},
                {u"COM1.txt"_s, u"COM1.txt"_s},
                {u"con."_s, u"con."_s},
                {u"com0"_s, u"com0"_s},
                {u"com10"_s, u"com10"_s},
                {u"co/n"_s, u"co_n"_s},
                {u".."_s, u".."_s},
                {u"/\\:?%$#&<>*!'\"@+`|=^"_s, QString(20, u'_')},
                {u"  a / b  "_s, u"a _ b"_s},
                {u"Größe (2).txt"_s, u"Größe (2).txt"_s},
                {QString(1000, u'x'), QString(1000, u'x')}});
        for (const char *device : {"com", "lpt"}) {
            for (char digit = '1'; digit <= '9'; ++digit) {
                addRows("device",
                    &StringUtility::stringToSafeFileName,
                    {{QString::fromLatin1(device).toUpper() + QLatin1Char(digit), u"invalid_name"_s}});
            }
        }
        addRows("invalid characters",
            &StringUtility::removeInvalidCharacters,
            {{u"Doe^John"_s, u"Doe John"_s},
                {u"a_b|c\\d"_s, u"a b c d"_s},
                {u" _x\t\n|y^ "_s, u"x y"_s},
                {u"^_|\\"_s, u""_s}});
        addRows("alphanumeric",
            &StringUtility::stripNonAlphanumeric,
            {{u"Ab-1 _ü"_s, u"Ab1"_s}, {u"a"_s + QChar(0xd800) + u'b', u"ab"_s}, {u"é"_s, u""_s}});
        addRows("curly", &StringUtility::removeCurlyBrackets, {{u"{1}{2}[]"_s, u"12[]"_s}, {u"}a{"_s, u"a"_s}});
        addRows("square", &StringUtility::removeSquareBrackets, {{u"[a]{}"_s, u"a{}"_s}, {u"]a["_s, u"a"_s}});
        addRows("HTML",
            &StringUtility::fromHtmlEscapedToPlainText,
            {{u"a &lt; b &amp;&amp; c &gt; &quot;d&quot;"_s, u"a < b && c > \"d\""_s},
                {u"&amp;lt;"_s, u"<"_s},
                {u"&amp;quot;"_s, u"\""_s},
                {u"&amp;amp;"_s, u"&amp;"_s},
                {u"&amp;amp;lt;"_s, u"&amp;lt;"_s},
                {u"&lt &AMP; &#39; &nbsp;"_s, u"&lt &AMP; &#39; &nbsp;"_s}});
        addRows("first upper",
            &StringUtility::makeFirstCharacterUpperLowerTheRest,
            {{u"McDONALD"_s, u"Mcdonald"_s},
                {u"a"_s, u"A"_s},
                {u"1ABC"_s, u"1abc"_s},
                {u""_s, u""_s},
                {u"ßE"_s, u"SSe"_s},
                {u"\U00010428A"_s, u"\U00010428a"_s}});
        addRows("last name",
            &StringUtility::capitalizeFirstCharacterOfLastName,
            {{u"sMITH"_s, u"Smith"_s},
                {u"VAN   DER\tberg"_s, u"Van Der Berg"_s},
                {u"  smith  "_s, u"Smith"_s},
                {u"o'neil-JONES"_s, u"O'neil-jones"_s},
                {u""_s, u""_s},
                {u" "_s, u""_s},
                {u"van\u00a0DER"_s, u"Van\u00a0der"_s}});
    }

    void change()
    {
        QFETCH(Change, change);
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(change(text), expected);
    }

    void everyCharacter()
    {
        const QRegularExpression notAlphanumeric(u"[^a-zA-Z0-9]"_s);
        const QRegularExpression whiteSpaces(u"\\s+"_s);
        int illegal = 0;
        for (char32_t unit = 0; unit <= 0xffff; ++unit) {
            const QChar character = QChar(unit);
            QString text = u'x' + QString(2, character) + u"y "_s + character;
            illegal += StringUtility::stringToSafeFileName(text).startsWith(u"x__y"_s) && character != u'_';
            if (!character.isSurrogate()) {
                QCOMPARE(StringUtility::splitOnWhiteSpaces(text), text.split(whiteSpaces));
                QCOMPARE(StringUtility::stripNonAlphanumeric(text), text.remove(notAlphanumeric));
            }
        }
        QCOMPARE(illegal, 20);
        const QString withSurrogate = QString(QChar(0xdc00)) + u" \t"_s;
        QCOMPARE(StringUtility::splitOnWhiteSpaces(withSurrogate), QList<QString>({QChar(0xdc00), QString()}));
        QCOMPARE(StringUtility::splitOnWhiteSpaces({}), QList<QString>({QString()}));
    }

    void patientName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("last");
        QTest::newRow("two words") << u"John Doe"_s << u"John"_s << u"Doe"_s;
        QTest::newRow("one word") << u"John"_s << u"John"_s << u""_s;
        QTest::newRow("more blanks") << u"John  Ronald Doe"_s << u"John"_s << u" Ronald Doe"_s;
        QTest::newRow("blank ahead") << u" John"_s << u""_s << u"John"_s;
        QTest::newRow("blank behind") << u"John "_s << u"John"_s << u""_s;
        QTest::newRow("tab") << u"John\tDoe"_s << u"John\tDoe"_s << u""_s;
        QTest::newRow("empty") << u""_s << u""_s << u""_s;
    }

    void patientName()
    {
        QFETCH(QString, name);
        QFETCH(QString, first);
        QFETCH(QString, last);
        QString firstName = u"old"_s;
        QString lastName = u"old"_s;
        StringUtility::patientNameToFirstLastName(name, firstName, lastName);
        QCOMPARE(firstName, first);
        QCOMPARE(lastName, last);
        firstName = lastName = name;
        StringUtility::patientNameToFirstLastName(firstName, firstName, lastName);
        QCOMPARE(firstName + u'|' + lastName, first + u'|' + last);
        lastName = name;
        StringUtility::patientNameToFirstLastName(lastName, firstName, lastName);
        QCOMPARE(firstName + u'|' + lastName, first + u'|' + last);
    }

    void initials_data()
    {
        QTest::addColumn<QString>("initial");
        QTest::addColumn<QString>("rest");
        QTest::newRow("letter") << u"d"_s << u"oe"_s;
        QTest::newRow("nothing") << u""_s << u""_s;
        QTest::newRow("blank") << u" "_s << u"Doe"_s;
        QTest::newRow("combining marks") << u"e\u0301\u0323"_s << u"ve"_s;
        QTest::newRow("surrogate pair") << u"\U00010400"_s << u"\U00010401"_s;
        QTest::newRow("Devanagari vowel sign") << u"\u0928\u093f"_s << u"\u0924"_s;
        QTest::newRow("Hangul syllable") << u"\u1100\u1161\u11a8"_s << u"\u1100"_s;
        QTest::newRow("joined emoji") << u"\U0001f469\u200d\U0001f52c"_s << u"\U0001f469"_s;
        QTest::newRow("skin tone") << u"\U0001f44d\U0001f3fd"_s << u"a"_s;
        QTest::newRow("flags") << u"\U0001f1e9\U0001f1ea"_s << u"\U0001f1eb\U0001f1f7"_s;
    }

    void initials()
    {
        QFETCH(QString, initial);
        QFETCH(QString, rest);
        QCOMPARE(StringUtility::getPatientInitials(initial + rest, u"John"_s), u'J' + initial);
        QCOMPARE(StringUtility::getPatientInitials(u"Doe"_s, initial + rest), initial + u'D');
    }

    void partsUpperCase()
    {
        const auto join = &StringUtility::makeFirstCharacterOfPartsUpperCase;
        QCOMPARE(join({u"john"_s, u"DOE"_s}), u"John Doe"_s);
        QCOMPARE(join({}), QString());
        QCOMPARE(join({u""_s, u"a"_s, u""_s, u"b"_s, u""_s}), u"A  B"_s);
    }

    void savedMap_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected"); // null where the text is refused
        QTest::newRow("as written") << u"core 1.2.3 | ui 2.0"_s << u"core=1.2.3 ui=2.0 "_s;
        QTest::newRow("no blanks, order of keys") << u"ui 2|core 1.2"_s << u"core=1.2 ui=2 "_s;
        QTest::newRow("trimmed") << u" \tcore 1.2\u00a0 "_s << u"core=1.2 "_s;
        QTest::newRow("last one holds") << u"core 1.0 | core 2.0"_s << u"core=2.0 "_s;
        QTest::newRow("no number") << u"core abc|a\tb 1.2abc"_s << u"a\tb=1.2 core= "_s;
        for (const char *refused : {"",
                 "core",
                 "core 1 2",
                 "core  1.2",
                 "core 1.2 | ",
                 "| core 1.2",
                 "core 1.2 || ui 2",
                 "core\t1.0",
                 "a 1|\"\n\\"}) {
            QTest::addRow("refused: %s", refused) << QString::fromLatin1(refused) << QString();
        }
    }

    void savedMap()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        const LogRecorder log;
        const auto map = StringUtility::saveableUIStringToMap(text);
        QCOMPARE(map.hasValue(), !expected.isNull());
        if (!map.hasValue()) {
            QString quoted = text;
            quoted.replace(u"\\"_s, u"\\\\"_s).replace(u"\""_s, u"\\\""_s).replace(u"\n"_s, u"\\n"_s);
            quoted.replace(u"\t"_s, u"\\t"_s);
            QCOMPARE(log.getLines(),
                QStringList(u"1 default Corrupt string for stringToMap: stringMap ( \""_s + quoted + u"\" )"_s));
            return;
        }
        QVERIFY(log.getLines().isEmpty());
        QString written;
        for (auto it = map.getValue().cbegin(); it != map.getValue().cend(); ++it) {
            written += it.key() + u'=' + it.value().toString() + u' ';
        }
        QCOMPARE(written, expected);
    }

    void versionNumbers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("major");
        QTest::addColumn<int>("minor");
        QTest::newRow("two fields") << u"1.2"_s << 1 << 2;
        QTest::newRow("no dot") << u"12"_s << -1 << -1;
        QTest::newRow("empty") << u""_s << -1 << -1;
        QTest::newRow("more fields, blanks") << u" 10 .-2.x"_s << 10 << -2;
        QTest::newRow("empty minor") << u"1."_s << 1 << 0;
        QTest::newRow("empty major") << u".5"_s << 0 << 5;
        QTest::newRow("no number behind") << u"1.2-beta"_s << 1 << 0;
        QTest::newRow("decimal") << u"010.0x1"_s << 10 << 0;
        QTest::newRow("out of range") << u"99999999999.1"_s << 0 << 1;
    }

    void versionNumbers()
    {
        QFETCH(QString, text);
        int majorNumber = 7;
        int minorNumber = 7;
        StringUtility::versionStringTo2Numbers(text, majorNumber, minorNumber);
        QTEST(majorNumber, "major");
        QTEST(minorNumber, "minor");
    }
};

QTEST_GUILESS_MAIN(StringUtilityTest)
#include "tst_stringutility.moc"
