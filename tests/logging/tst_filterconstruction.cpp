#include <logging/FilterConstruction.h>

#include <QLoggingCategory>
#include <QTest>

using namespace Qt::StringLiterals;
using Level = utility::Optional<QtMsgType>;

Q_DECLARE_METATYPE(Level)

class FilterConstructionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void cleanup() { QLoggingCategory::setFilterRules({}); }

    void rule_data()
    {
        QTest::addColumn<QString>("category");
        QTest::addColumn<Level>("type");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("disabledLevels");
        const QString category = u"net"_s;
        QTest::newRow("all") << category << Level() << u"net=false"_s << u"diwc"_s;
        QTest::newRow("debug") << category << Level(QtDebugMsg) << u"net.debug=false"_s << u"d"_s;
        QTest::newRow("info") << category << Level(QtMsgType(4)) << u"net.info=false"_s << u"i"_s;
        QTest::newRow("warning") << category << Level(QtWarningMsg) << u"net.warning=false"_s << u"w"_s;
        QTest::newRow("critical") << category << Level(QtCriticalMsg) << u"net.critical=false"_s << u"c"_s;
        QTest::newRow("fatal") << category << Level(QtFatalMsg) << u"net.fatal=false"_s << QString();
        QTest::newRow("no level") << category << Level(QtMsgType(5)) << u"net=false"_s << u"diwc"_s;
        QTest::newRow("wildcard") << u"*"_s << Level(QtDebugMsg) << logging::getDefaultApplicationFilter() << u"d"_s;
        QTest::newRow("empty") << QString() << Level(QtInfoMsg) << u".info=false"_s << QString();
        QTest::newRow("as it stands") << u" a b\n"_s << Level() << u" a b\n=false"_s << QString();
    }

    void rule()
    {
        QFETCH(QString, category);
        QFETCH(Level, type);
        QFETCH(QString, expected);
        QFETCH(QString, disabledLevels);
        const QString disabling = logging::getFilterConstructionSubstring(category, false, type);
        const QString enabling = logging::getFilterConstructionSubstring(category, true, type);
        QCOMPARE(disabling, expected);
        QCOMPARE(enabling, expected.chopped(5) + u"true"_s);

        const QLoggingCategory net("net");
        QLoggingCategory::setFilterRules(u"*=true\n"_s + disabling);
        QCOMPARE(getLevels(net, false), disabledLevels);
        QLoggingCategory::setFilterRules(u"*=false\n"_s + enabling);
        QCOMPARE(getLevels(net, true), disabledLevels);
    }

private:
    static QString getLevels(const QLoggingCategory &category, bool enabled)
    {
        QString result;
        result += category.isDebugEnabled() == enabled ? u"d"_s : QString();
        result += category.isInfoEnabled() == enabled ? u"i"_s : QString();
        result += category.isWarningEnabled() == enabled ? u"w"_s : QString();
        result += category.isCriticalEnabled() == enabled ? u"c"_s : QString();
        return result;
    }
};

QTEST_GUILESS_MAIN(FilterConstructionTest)
#include "tst_filterconstruction.moc"
