#include <strings/Translation.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTest>
#include <QTranslator>

#include <atomic>
#include <thread>

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
        const QList<QString> keys = {key, u"?"_s, QString(), key};
        const QList<QString> expectedList = {expected, u"?"_s, QString(), expected};
        QCOMPARE(strings::tr(utf8.constData(), keys), expectedList);
        QCOMPARE(strings::tr(context, keys), expectedList);
    }

    void translatorsComeAndGoMeanwhile()
    {
        QTranslator translator;
        QVERIFY(translator.load(QStringLiteral(TRANSLATION_FILE)));
        std::atomic<bool> done = false;
        std::atomic<int> plain = 0;
        std::atomic<int> translated = 0;
        std::atomic<int> other = 0;
        std::thread reader([&] {
            while (!done) {
                const QString text = strings::tr("Window", u"Close"_s);
                ++(text == u"Close" ? plain : text == u"Zu" ? translated : other);
            }
        });
        const QDeadlineTimer deadline(20000);
        for (int round = 0; (round < 10000 || !plain || !translated) && !deadline.hasExpired(); ++round) {
            QCoreApplication::installTranslator(&translator);
            QCoreApplication::removeTranslator(&translator);
        }
        done = true;
        reader.join();
        QVERIFY(plain && translated && !other);
    }
};

QTEST_GUILESS_MAIN(TranslationTest)
#include "tst_translation.moc"
