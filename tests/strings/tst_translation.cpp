#include <strings/Translation.h>

#include <QCoreApplication>
#include <QTest>
#include <QTranslator>

using namespace Qt::StringLiterals;

class TranslationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void translates()
    {
        QCOMPARE(strings::tr(u"Window"_s, u"Close"_s), u"Close"_s);
        QTranslator translator; // uninstalls itself
        QVERIFY(translator.load(QStringLiteral(TRANSLATION_FILE)));
        QVERIFY(QCoreApplication::installTranslator(&translator));
        QCOMPARE(strings::tr(u"Window"_s, u"Close"_s), u"Zu"_s); // no disambiguation
        QCOMPARE(strings::tr(u"Window"_s, u"Größe ≥ 2 m"_s), u"Height ≥ 2 m"_s);
        QCOMPARE(strings::tr(u"Window"_s, u"木 😀"_s), u"木 😀"_s);
        QCOMPARE(strings::tr(u"Window"_s, u"%n of %1"_s), u"%n von %1"_s); // no plural
        QCOMPARE(strings::tr(u"Nowhere"_s, u"Open"_s), u"Open"_s);
        QCOMPARE(strings::tr(u"Überblick"_s, u"Open"_s), u"Offen"_s);
        QCOMPARE(strings::tr("Überblick", u"Open"_s), u"Offen"_s);
        const QList<QString> keys = {u"Open"_s, u"?"_s, u""_s, u"Open"_s};
        const QList<QString> expected = {u"Offen"_s, u"?"_s, u""_s, u"Offen"_s};
        QCOMPARE(strings::tr(u"Überblick"_s, keys), expected);
        QCOMPARE(strings::tr("Überblick", keys), expected);
        QCOMPARE(strings::tr(u"Window"_s, QString()), u""_s);
        QCOMPARE(strings::tr(u"Window"_s, QString()).isNull(), false);
    }
};

QTEST_GUILESS_MAIN(TranslationTest)
#include "tst_translation.moc"
