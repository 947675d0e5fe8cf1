#include <strings/QEnumToString.h>

#include <QTest>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

/** Asks for a name while this program's static objects are made, and again while they are destroyed. */
struct EarlyAndLateClient
{
    ~EarlyAndLateClient()
    {
        if (QEnumToString::qFileDeviceError(QFileDevice::CopyError) != early) {
            std::_Exit(EXIT_FAILURE);
        }
    }

    const QString early = QEnumToString::qFileDeviceError(QFileDevice::CopyError);
};

const EarlyAndLateClient client;

} // namespace

class QEnumToStringTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void usableBeforeMain() { QCOMPARE(client.early, u"QFileDevice::CopyError"_s); }

    void fileDeviceError_data()
    {
        QTest::addColumn<QFileDevice::FileError>("error");
#define ROW(name) QTest::newRow(#name) << QFileDevice::name
        ROW(NoError);
        ROW(ReadError);
        ROW(WriteError);
        ROW(FatalError);
        ROW(ResourceError);
        ROW(OpenError);
        ROW(AbortError);
        ROW(TimeOutError);
        ROW(UnspecifiedError);
        ROW(RemoveError);
        ROW(RenameError);
        ROW(PositionError);
        ROW(ResizeError);
        ROW(PermissionsError);
        ROW(CopyError);
#undef ROW
    }

    void fileDeviceError()
    {
        QFETCH(QFileDevice::FileError, error);
        QCOMPARE(
            QEnumToString::qFileDeviceError(error), u"QFileDevice::"_s + QString::fromLatin1(QTest::currentDataTag()));
    }

    void unknownErrorsHaveNoName()
    {
        QVERIFY(QEnumToString::qFileDeviceError(QFileDevice::FileError(15)).isNull());
        QVERIFY(QEnumToString::qFileDeviceError(QFileDevice::FileError(-1)).isNull());
    }
};

QTEST_GUILESS_MAIN(QEnumToStringTest)
#include "tst_qenumtostring.moc"
