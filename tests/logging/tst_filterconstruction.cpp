#include <logging/FilterConstruction.h>

#include <QTest>

using namespace Qt::StringLiterals;

class FilterConstructionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rules()
    {
        const auto rule = &logging::getFilterConstructionSubstring;
        QCOMPARE(rule(u"net"_s, true, {}), u"net=true"_s);
        QCOMPARE(rule(u"net"_s, false, {}), u"net=false"_s);
        QCOMPARE(rule(u"net"_s, true, QtDebugMsg), u"net.debug=true"_s);
        QCOMPARE(rule(u"net"_s, false, QtInfoMsg), u"net.info=false"_s);
        QCOMPARE(rule(u"net"_s, false, QtWarningMsg), u"net.warning=false"_s);
        QCOMPARE(rule(u"net"_s, true, QtCriticalMsg), u"net.critical=true"_s);
        QCOMPARE(rule(u"net"_s, false, QtFatalMsg), u"net.fatal=false"_s);
        QCOMPARE(rule(u"net"_s, true, QtMsgType(5)), u"net=true"_s); // an unknown level
        QCOMPARE(rule(u" *a b\n"_s, false, {}), u" *a b\n=false"_s);
        QCOMPARE(rule(u""_s, true, QtDebugMsg), u".debug=true"_s);
    }

    void defaultFilter() { QCOMPARE(logging::getDefaultApplicationFilter(), u"*.debug=false"_s); }
};

QTEST_GUILESS_MAIN(FilterConstructionTest)
#include "tst_filterconstruction.moc"
