#include <logging/FilterConstruction.h>

#include <QLoggingCategory>
#include <QTest>

#include <tuple>

using namespace Qt::StringLiterals;
using Level = utility::Optional<QtMsgType>;

class FilterConstructionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rules()
    {
        const std::tuple<Level, QString, QString> rows[] = {{Level(), u"net"_s, u"diwc"_s},
            {QtDebugMsg, u"net.debug"_s, u"d"_s},
            {QtMsgType(4), u"net.info"_s, u"i"_s},
            {QtWarningMsg, u"net.warning"_s, u"w"_s},
            {QtCriticalMsg, u"net.critical"_s, u"c"_s},
            {QtFatalMsg, u"net.fatal"_s, QString()},
            {QtMsgType(5), u"net"_s, u"diwc"_s}};
        for (const auto &[type, selector, expected] : rows) {
            const QString disabling = logging::getFilterConstructionSubstring(u"net"_s, false, type);
            QCOMPARE(disabling, selector + u"=false"_s);
            QCOMPARE(logging::getFilterConstructionSubstring(u"net"_s, true, type), selector + u"=true"_s);

            const QLoggingCategory net("net");
            QLoggingCategory::setFilterRules(u"*=true\n"_s + disabling);
            QString disabled;
            for (const auto &[letter, level] :
                {std::pair(u'd', QtDebugMsg), {u'i', QtInfoMsg}, {u'w', QtWarningMsg}, {u'c', QtCriticalMsg}}) {
                disabled += net.isEnabled(level) ? QString() : QString(QChar(letter));
            }
            QCOMPARE(disabled, expected);
        }
        QCOMPARE(logging::getFilterConstructionSubstring(u" a b\n"_s, false, Level()), u" a b\n=false"_s);
        QCOMPARE(logging::getDefaultApplicationFilter(), u"*.debug=false"_s);
    }
};

QTEST_GUILESS_MAIN(FilterConstructionTest)
#include "tst_filterconstruction.moc"
