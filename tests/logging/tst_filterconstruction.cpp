#include <logging/FilterConstruction.h>

#include <QLoggingCategory>
#include <QTest>

using namespace Qt::StringLiterals;
using Level = utility::Optional<QtMsgType>;

class FilterConstructionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rule_data()
    {
        QTest::addColumn<QString>("category");
        QTest::addColumn<Level>("type");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("disabledLevels");
        const QString net = u"net"_s;
        QTest::newRow("all") << net << Level() << u"net=false"_s << u"diwc"_s;
        QTest::newRow("debug") << net << Level(QtDebugMsg) << u"net.debug=false"_s << u"d"_s;
        QTest::newRow("info") << net << Level(QtMsgType(4)) << u"net.info=false"_s << u"i"_s;
        QTest::newRow("warning") << net << Level(QtWarningMsg) << u"net.warning=false"_s << u"w"_s;
        QTest::newRow("critical") << net << Level(QtCriticalMsg) << u"net.critical=false"_s << u"c"_s;
        QTest::newRow("fatal") << net << Level(QtFatalMsg) << u"net.fatal=false"_s << QString();
        QTest::newRow("no level") << net << Level(QtMsgType(5)) << u"net=false"_s << u"diwc"_s;
        QTest::newRow("wildcard") << u"*"_s << Level(QtDebugMsg) << logging::getDefaultApplicationFilter() << u"d"_s;
        QTest::newRow("as it stands") << u" a b\n"_s << Level() << u" a b\n=false"_s << QString();
    }

    void rule()
    {
        QFETCH(QString, category);
        QFETCH(Level, type);
        QFETCH(QString, expected);
        const QString disabling = logging::getFilterConstructionSubstring(category, false, type);
        QCOMPARE(disabling, expected);
        QCOMPARE(logging::getFilterConstructionSubstring(category, true, type), expected.chopped(5) + u"true"_s);

        const QLoggingCategory net("net");
        QLoggingCategory::setFilterRules(u"*=true\n"_s + disabling);
        QString disabledLevels;
        for (const auto &[letter, level] :
            {std::pair('d', QtDebugMsg), {'i', QtInfoMsg}, {'w', QtWarningMsg}, {'c', QtCriticalMsg}}) {
            disabledLevels += net.isEnabled(level) ? QString() : QString(QLatin1Char(letter));
        }
        QTEST(disabledLevels, "disabledLevels");
    }
};

QTEST_GUILESS_MAIN(FilterConstructionTest)
#include "tst_filterconstruction.moc"
