#include <logging/FilterConstruction.h>

#include <QTest>

using namespace Qt::StringLiterals;
using Level = utility::Optional<QtMsgType>;

class FilterConstructionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rules_data()
    {
        QTest::addColumn<QString>("category");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<Level>("level");
        QTest::addColumn<QString>("expected");
        QTest::newRow("enabled") << u"net"_s << true << Level() << u"net=true"_s;
        QTest::newRow("disabled") << u"net"_s << false << Level() << u"net=false"_s;
        QTest::newRow("debug") << u"net"_s << true << Level(QtDebugMsg) << u"net.debug=true"_s;
        QTest::newRow("info") << u"net"_s << false << Level(QtInfoMsg) << u"net.info=false"_s;
        QTest::newRow("warning") << u"net"_s << false << Level(QtWarningMsg) << u"net.warning=false"_s;
        QTest::newRow("critical") << u"net"_s << true << Level(QtCriticalMsg) << u"net.critical=true"_s;
        QTest::newRow("fatal") << u"net"_s << false << Level(QtFatalMsg) << u"net.fatal=false"_s;
        QTest::newRow("unknown level") << u"net"_s << true << Level(QtMsgType(5)) << u"net=true"_s;
        QTest::newRow("nothing trimmed") << u" *a b\n"_s << false << Level() << u" *a b\n=false"_s;
        QTest::newRow("no category") << u""_s << true << Level(QtDebugMsg) << u".debug=true"_s;
    }
    void rules()
    {
        QFETCH(QString, category);
        QFETCH(bool, enabled);
        QFETCH(Level, level);
        QTEST(logging::getFilterConstructionSubstring(category, enabled, level), "expected");
    }

    void defaultFilter() { QCOMPARE(logging::getDefaultApplicationFilter(), u"*.debug=false"_s); }
};

QTEST_GUILESS_MAIN(FilterConstructionTest)
#include "tst_filterconstruction.moc"
