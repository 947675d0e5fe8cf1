#include <strings/Translation.h>

#include <QCoreApplication>
#include <QTest>
#include <QTranslator>

using namespace Qt::StringLiterals;

class TranslationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void translates_data()
    {
        QTest::addColumn<QString>("context");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("expected");
        QTest::newRow("context outside ASCII") << u"Überblick"_s << u"Open"_s << u"Offen"_s;
        QTest::newRow("no such context") << u"Nowhere"_s << u"Open"_s << u"Open"_s;
        QTest::newRow("key outside ASCII") << u"Window"_s << u"Größe ≥ 2 m"_s << u"Height ≥ 2 m"_s;
        QTest::newRow("no such key") << u"Window"_s << u"木 😀"_s << u"木 😀"_s;
        QTest::newRow("no disambiguation") << u"Window"_s << u"Close"_s << u"Zu"_s;
        QTest::newRow("null key") << u"Window"_s << QString() << u""_s;
        QTest::newRow("no plural") << u"Window"_s << u"%n of %1"_s << u"%n von %1"_s;
    }

    void translates()
    {
        QFETCH(QString, context);
        QFETCH(QString, key);
        QFETCH(QString, expected);
        const QByteArray utf8 = context.toUtf8();
        QCOMPARE(strings::tr(context, key), key);

        QTranslator translator; // uninstalls itself
        QVERIFY(translator.load(QStringLiteral(TRANSLATION_FILE)) && QCoreApplication::installTranslator(&translator));
        QCOMPARE(strings::tr(utf8.constData(), key), expected);
        QCOMPARE(strings::tr(context, key), expected);
        QVERIFY(!strings::tr(context, key).isNull());
        const QList<QString> keys = {key, u"?"_s, u""_s, key};
        const QList<QString> expectedList = {expected, u"?"_s, u""_s, expected};
        QCOMPARE(strings::tr(utf8.constData(), keys), expectedList);
        QCOMPARE(strings::tr(context, keys), expectedList);
    }
};

QTEST_GUILESS_MAIN(TranslationTest)
#include "tst_translation.moc"
