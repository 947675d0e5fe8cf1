#include <strings/StringUtility.h>

#include <QTest>

using namespace Qt::StringLiterals;
using S = StringUtility;
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
        const auto addRow = [](Change change, const QString &text, const QString &expected) {
            QTest::addRow("%s", qPrintable(text.simplified())) << change << text << expected;
        };
        const QString reserved =
            u"com1 com2 com3 com4 com5 com6 com7 com8 com9 LPT1 LPT2 LPT3 LPT4 LPT5 LPT6 LPT7 LPT8 "
            "LPT9 Con nUL prn aux"_s;
        for (const QString &name : reserved.split(u' ')) {
            addRow(&S::stringToSafeFileName, u"\t "_s + name + u"\n"_s, u"invalid_name"_s);
        }
        for (const QString &name : u"COM1.txt com0 com10 con. lpt .. .a. a(1)[2]{3},;~-_Größe"_s.split(u' ')) {
            addRow(&S::stringToSafeFileName, name, name);
        }
        addRow(&S::stringToSafeFileName, u"/\\:?%$#&<>*!'\"@+`|=^"_s, QString(20, u'_'));
        addRow(&S::removeInvalidCharacters, u"^a__b|c\\d^e~\t\n|_"_s, u"a b c d e~"_s);
        addRow(&S::stripNonAlphanumeric, u"Ab-1 _ü"_s + QChar(0xd800) + u'z', u"Ab1z"_s);
        addRow(&S::removeCurlyBrackets, u"}{1}{2}[]{"_s, u"12[]"_s);
        addRow(&S::fromHtmlEscapedToPlainText, u"&quot;a&quot; &lt; b &amp;&amp; &gt;"_s, u"\"a\" < b && >"_s);
        addRow(&S::fromHtmlEscapedToPlainText, u"&amp;lt;&amp;gt;&amp;quot;&amp;amp;lt;"_s, u"<>\"&amp;lt;"_s);
        addRow(&S::makeFirstCharacterUpperLowerTheRest, u"McDONALD"_s, u"Mcdonald"_s);
        addRow(&S::makeFirstCharacterUpperLowerTheRest, u"\U00010428A"_s, u"\U00010428a"_s);
        addRow(&S::capitalizeFirstCharacterOfLastName, u" VAN   DER\tberg-o'NEIL"_s, u"Van Der Berg-o'neil"_s);
    }

    void change()
    {
        QFETCH(Change, change);
        QFETCH(QString, text);
        QTEST(change(text), "expected");
    }

    void nullAndEmpty_data()
    {
        QTest::addColumn<QString>("result");
        QTest::addColumn<bool>("isNull");
        QTest::newRow("safe name of null") << S::stringToSafeFileName(QString()) << true;
        QTest::newRow("safe name of empty") << S::stringToSafeFileName(u""_s) << false;
        QTest::newRow("cleaning of null") << S::removeInvalidCharacters(QString()) << true;
        QTest::newRow("cleaning of empty") << S::removeInvalidCharacters(u""_s) << false;
        QTest::newRow("split of null") << S::splitOnWhiteSpaces(QString()).constFirst() << false;
        QTest::newRow("split of a blank") << S::splitOnWhiteSpaces(u" "_s).constLast() << false;
        QTest::newRow("capitals of no parts") << S::makeFirstCharacterOfPartsUpperCase({}) << false;
        QTest::newRow("capitals of a null part") << S::makeFirstCharacterOfPartsUpperCase({QString()}) << false;
    }

    void nullAndEmpty()
    {
        QFETCH(QString, result);
        QVERIFY(result.isEmpty());
        QTEST(result.isNull(), "isNull");
    }

    void initials()
    {
        QCOMPARE(S::getPatientInitials(u"e\u0301\u0323ve"_s, u"John"_s), u"Je\u0301\u0323"_s);
        QCOMPARE(S::makeFirstCharacterOfPartsUpperCase({u""_s, u"john"_s, u""_s, u"DOE"_s, u""_s}), u"John  Doe"_s);
    }
};

QTEST_GUILESS_MAIN(StringUtilityTest)
#include "tst_stringutility.moc"
