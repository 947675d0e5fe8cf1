#include <strings/QEnumToString.h>

#include <QTest>

#include <cstdlib>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

// Made before main(), where the table has to be filled.
const QString early = QEnumToString::qFileDeviceError(QFileDevice::CopyError);

#ifdef __GLIBC__
void checkName(int, void *)
{
    for (std::size_t size = 16; size < 1024; size += 8) {
        std::memset(std::malloc(size), 0x55, size); // overwrites what has been freed
    }
    if (QEnumToString::qFileDeviceError(QFileDevice::CopyError) != u"QFileDevice::CopyError") {
        std::_Exit(EXIT_FAILURE);
    }
}

/** Runs before the library is initialised, so that the handler runs after the library's own exit handlers. */
void registerLastExitHandler()
{
    on_exit(&checkName, nullptr); // atexit() would tie the handler to this program, which ends before the library
}

[[gnu::section(".preinit_array"), gnu::used]] void (*const beforeInitialisation)() = &registerLastExitHandler;
#endif

} // namespace

class QEnumToStringTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void qFileDeviceError_data()
    {
        QTest::addColumn<int>("error");
        QTest::addColumn<QString>("expected");
        QTest::newRow("0") << 0 << u"QFileDevice::NoError"_s;
        QTest::newRow("1") << 1 << u"QFileDevice::ReadError"_s;
        QTest::newRow("2") << 2 << u"QFileDevice::WriteError"_s;
        QTest::newRow("3") << 3 << u"QFileDevice::FatalError"_s;
        QTest::newRow("4") << 4 << u"QFileDevice::ResourceError"_s;
        QTest::newRow("5") << 5 << u"QFileDevice::OpenError"_s;
        QTest::newRow("6") << 6 << u"QFileDevice::AbortError"_s;
        QTest::newRow("7") << 7 << u"QFileDevice::TimeOutError"_s;
        QTest::newRow("8") << 8 << u"QFileDevice::UnspecifiedError"_s;
        QTest::newRow("9") << 9 << u"QFileDevice::RemoveError"_s;
        QTest::newRow("10") << 10 << u"QFileDevice::RenameError"_s;
        QTest::newRow("11") << 11 << u"QFileDevice::PositionError"_s;
        QTest::newRow("12") << 12 << u"QFileDevice::ResizeError"_s;
        QTest::newRow("13") << 13 << u"QFileDevice::PermissionsError"_s;
        QTest::newRow("14") << 14 << u"QFileDevice::CopyError"_s;
        QTest::newRow("too large") << 15 << QString();
        QTest::newRow("negative") << -1 << QString();
    }
    void qFileDeviceError()
    {
        QFETCH(int, error);
        QFETCH(QString, expected);
        const QString actual = QEnumToString::qFileDeviceError(QFileDevice::FileError(error));
        QCOMPARE(actual, expected);
        QCOMPARE(actual.isNull(), expected.isNull());
        QCOMPARE(early, u"QFileDevice::CopyError"_s);
    }
};

QTEST_GUILESS_MAIN(QEnumToStringTest)
#include "tst_qenumtostring.moc"
